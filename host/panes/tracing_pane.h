// The workstation's pane: the whole recording on millimetre paper, with calipers.
#pragma once

#include <optional>
#include <string>

#include "host/frame/host_window.h"
#include "host/panes/tracing_paper.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

// A bar with arrangement, speed, gain and what the picture is, above the paper. On the paper: dragging opens
// the calipers or moves one of their legs, a click on a beat says what and where it is. Arrows move the last
// leg by a sample or by 0.01 mV (with Ctrl by ten of them), the space bar takes the other leg, Esc puts the
// calipers away; without calipers left and right scroll. The wheel zooms about the pointer, with Shift it
// scrolls; Home and End go to the ends of the recording.
class TracingPane final : public HostWindow {
  public:
    // The record outlives the pane.
    TracingPane(HWND parent, const UiMetrics& metrics, const KxTestRecord& test);
    ~TracingPane() override;

    // Of the recording, where the paper begins; 0 without a recording.
    double StartMs() const { return paper_ ? paper_->StartMs() : 0; }

    // What it is made at, before it is given the room there is.
    static SIZE NaturalSize(const UiMetrics& metrics);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void CreateBar();
    void Layout() const;
    void OnChoice(HWND combo);
    void ShowInfo(const std::wstring& text) const;

    const UiMetrics& metrics_;
    std::optional<TracingSignal> signal_;
    std::unique_ptr<TracingPaper> paper_;
    HWND arrangement_ = nullptr;
    HWND speed_ = nullptr;
    HWND gain_ = nullptr;
    HWND what_ = nullptr;  // recording, length, rate, filters
    HWND info_ = nullptr;  // the calipers or the beat under them
};

}  // namespace kxhost
