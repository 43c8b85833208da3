// A marker view in a window of its owner, and the picture it shows, for drawing the same with bare GDI calls.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "dialogs/marker_view/marker_view_class.h"
#include "dialogs/marker_view/trace/view_geometry.h"
#include "lib/modules/library_module.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/window.h"
#include "lib/windows/window_class.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::bench {

inline constexpr int kViewWidth = 800;  // of the client area
inline constexpr int kViewHeight = 500;

// The general morphology dialog's view on a beat of 1200 samples at 1000 samples a second.
class MarkerViewWindow {
  public:
    static constexpr std::int32_t kGain = 50;
    static constexpr std::int32_t kSpeed = 100;
    static constexpr std::uint32_t kLead = KX_LEAD_V6;
    static constexpr std::int32_t kLowEdge = 500;  // thousandths of a Hz
    static constexpr std::int32_t kHighEdge = 40000;
    static constexpr std::int32_t kMainsHz = 50;
    // Where the owner has room for a picture of the same size below the view.
    static constexpr int kBareTop = 560;

    MarkerViewWindow();
    ~MarkerViewWindow();

    // Whether the view is there, of the size wanted and with all its markers.
    bool IsReady() const { return ready_; }
    HWND View() const { return view_; }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageA(view_, message, wParam, lParam);
    }
    // Takes what has been posted and painted meanwhile.
    static void Drain();

    const std::vector<std::int32_t>& PositionsMs() const { return positionsMs_; }
    const std::vector<WORD>& Labels() const { return labels_; }
    analysis::Episode& Beat() { return beat_; }
    // The view's own geometry, computed from the same device.
    ViewGeometry Geometry() const;

  private:
    class Owner final : public Window {};
    class OwnerClass final : public WindowClass {
      public:
        explicit OwnerClass(const LibraryModule& library)
            : WindowClass(&library, "BenchOwner", 0, 0, nullptr) {}
    };

    LibraryModule library_;
    OwnerClass ownerClass_;
    MarkerViewClass viewClass_;
    Owner owner_;
    HWND view_ = nullptr;
    bool ready_ = false;
    analysis::Episode beat_;
    std::vector<std::int32_t> positionsMs_;
    std::vector<WORD> labels_;
};

}  // namespace kx::bench
