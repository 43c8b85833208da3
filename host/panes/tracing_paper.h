// The paper of the tracing pane: painting, scrolling, zoom, calipers.
#pragma once

#include <functional>
#include <string>

#include "host/frame/host_window.h"
#include "host/tracing/tracing_painter.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

class TracingPaper final : public HostWindow {
  public:
    static constexpr const wchar_t* kClassName = L"KxTracingPaper";
    using Teller = std::function<void(const std::wstring&)>;

    // The signal outlives the paper. `tell` is called with what the calipers or a click say.
    TracingPaper(HWND parent, const UiMetrics& metrics, const TracingSignal& signal,
                 std::vector<TracedBeat> beats, Teller tell);

    void SetArrangement(Arrangement arrangement);
    void SetSpeed(double mmPerSecond);
    void SetGain(double mmPerMv);
    // Of the recording, where the view begins.
    double StartMs() const { return startMs_; }
    // The traces are drawn anew with the next painting.
    void RedrawContent();

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint();
    void OnHScroll(int request);
    void OnVScroll(int request);
    void OnWheel(int delta, bool scroll, POINT screen);
    void OnButtonDown(POINT at);
    void OnMouseMove(POINT at);
    void OnButtonUp(POINT at);
    bool OnKey(WPARAM key);

    void Rebuild();
    void ScrollTo(double startMs);
    void ShowCalipers();
    void TellBeatAt(double ms);
    void SetBars();
    void MakeSurface();
    double LastStartMs() const;
    double ZoomedPixelsPerMm() const { return devicePixelsPerMm_ * zoom_; }

    const UiMetrics& metrics_;
    const TracingSignal& signal_;
    TracingPainter painter_;
    Teller tell_;
    TracingScale scale_;
    TracingLayout layout_;
    Arrangement arrangement_ = Arrangement::k3x4;
    Calipers calipers_;
    double devicePixelsPerMm_ = 96 / 25.4;
    double zoom_ = 1;
    double startMs_ = 0;
    int scrolledRows_ = 0;  // pixels of the content above the window
    // Paper and traces as they are painted, the size of the content; only the calipers are drawn on the
    // window.
    UniqueMemoryDc surfaceDc_;
    UniqueBitmap surface_;
    UniqueMemoryDc paperDc_;  // the empty paper, drawn once for each size and zoom
    UniqueBitmap paper_;
    SIZE surfaceSize_{};
    bool stale_ = true;
    bool dragging_ = false;
    POINT pressed_{};
};

}  // namespace kxhost
