// A marker view in a window of its owner, as a dialog template makes it.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/resources/picture_ids.h"
#include "lib/dbclient/episode_record.h"
#include "lib/modules/library_module.h"
#include "lib/windows/device_context.h"
#include "lib/windows/window.h"
#include "lib/windows/window_class.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {

struct Notification {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;

    bool operator==(const Notification&) const = default;
};

// Takes down what the view tells it.
class OwnerWindow final : public Window {
  public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::vector<Notification> posted;
    std::string readout;
};

class ViewRig : public testing::Test {
  protected:
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 300;
    static constexpr std::uint32_t kRate = 500;
    static constexpr std::uint32_t kSamples = 600;

    ViewRig();
    ~ViewRig() override;

    // Makes the view in a client area of this size (without its scroll bars), attaches the owner and adds the
    // markers.
    void MakeView(int markers = 5, int width = kWidth, int height = kHeight);
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const { return SendMessageA(view_, message, wParam, lParam); }
    // MV_SETBEAT and MV_SETLEAD with these positions in ms.
    void Show(const std::vector<std::int32_t>& positionsMs, std::uint32_t lead = KX_LEAD_II);
    void SetLead(const std::vector<std::int32_t>& positionsMs, std::uint32_t lead = KX_LEAD_II);

    // The posted notifications since the last call.
    std::vector<Notification> TakePosted();
    static void PumpMessages();
    void Mouse(UINT message, int x, int y, WPARAM keys = MK_LBUTTON) const { Send(message, keys, MAKELPARAM(x, y)); }
    void Drag(int fromX, int fromY, int toX);
    LRESULT HitTest(int x, int y) const;
    // A key, with Ctrl or Shift held (VK_CONTROL, VK_SHIFT; 0: alone).
    void Key(UINT virtualKey, int modifier = 0) const;

    COLORREF Pixel(int x, int y) const;
    // The column of a marker on the screen: the lines black, white, what is beneath, white, black. -1: none
    // at x.
    bool MarkerStandsAt(int x) const;
    std::vector<COLORREF> Picture() const;
    int ColumnOfMs(std::int32_t ms) const;
    SIZE Client() const;

    LibraryModule library_;
    RecordedReports reports_;
    std::unique_ptr<WindowClass> ownerClass_;
    std::unique_ptr<WindowClass> viewClass_;
    OwnerWindow owner_;
    HWND view_ = nullptr;
    EpisodeRecord beat_;
};

// A beat with a wave of 1 mV in every lead, higher in the later ones.
void FillBeat(EpisodeRecord& beat);

}  // namespace kx::test
