// What the tracing costs beyond the polylines of its traces, in a view of 1920 x 1080, and a frame of its
// scrolling against the screen's 16 ms; ten minutes of twelve leads at 500 samples a second.
#include <windows.h>

#include <cmath>
#include <vector>

#include "bench/ratio.h"
#include "host/panes/tracing_paper.h"
#include "host/windows/win32_handles.h"

namespace {

using namespace kxhost;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr double kRate = 500;
constexpr double kFrameNs = 16e6;

// A beat every 0.8 s, with noise: no two columns alike.
std::vector<std::int16_t> MakeLead() {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(600 * kRate));
    unsigned noise = 1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        noise = noise * 1664525 + 1013904223;
        const double phase = std::fmod(double(i) / kRate, 0.8);
        samples[i] =
            static_cast<std::int16_t>(1200 * std::exp(-std::pow((phase - 0.3) / 0.015, 2)) +
                                      250 * std::exp(-std::pow((phase - 0.6) / 0.05, 2)) + noise % 40);
    }
    return samples;
}

// The same traces by bare calls in the same window, which is painted by the same message: empty paper,
// polylines of ready points, onto the window.
class BareTracing {
  public:
    BareTracing(HWND window, TracingPainter& painter, const TracingLayout& layout, const TracingScale& scale)
        : window_(window), paper_(CreateCompatibleDC(nullptr)), surface_(CreateCompatibleDC(nullptr)) {
        const WindowDc dc(window);
        for (const auto& [memory, bitmap] :
             {std::pair{&paper_, &paperBitmap_}, {&surface_, &surfaceBitmap_}}) {
            bitmap->reset(CreateCompatibleBitmap(dc.Get(), kWidth, kHeight));
            SelectObject(memory->get(), bitmap->get());
        }
        DrawPaper(paper_.get(), {0, 0, kWidth, kHeight}, scale.pixelsPerMm);
        for (const TracingCell& cell : layout.cells) {
            traces_.push_back(painter.PointsOf(cell, scale));
        }
    }

    // Its own procedure is the window's for the time.
    void Paint() const {
        const LONG_PTR before =
            SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure));
        painting_ = this;
        InvalidateRect(window_, nullptr, FALSE);
        UpdateWindow(window_);
        GdiFlush();
        SetWindowLongPtrW(window_, GWLP_WNDPROC, before);
    }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_PAINT) {
            return DefWindowProcW(window, message, wParam, lParam);
        }
        const PaintScope paint(window);
        painting_->Draw(paint.Dc());
        return 0;
    }

    void Draw(HDC dc) const {
        BitBlt(surface_.get(), 0, 0, kWidth, kHeight, paper_.get(), 0, 0, SRCCOPY);
        const Selection pen(surface_.get(), GetStockObject(BLACK_PEN));
        for (const std::vector<POINT>& trace : traces_) {
            Polyline(surface_.get(), trace.data(), static_cast<int>(trace.size()));
        }
        BitBlt(dc, 0, 0, kWidth, kHeight, surface_.get(), 0, 0, SRCCOPY);
    }

    static inline const BareTracing* painting_ = nullptr;
    HWND window_;
    UniqueMemoryDc paper_;
    UniqueMemoryDc surface_;
    UniqueBitmap paperBitmap_;
    UniqueBitmap surfaceBitmap_;
    std::vector<std::vector<POINT>> traces_;
};

}  // namespace

int main() {
    const std::vector<std::int16_t> lead = MakeLead();
    TracingSignal signal;
    signal.leads.assign(12, lead);
    signal.sampleRate = kRate;
    signal.unitMv.assign(12, 0.001);
    std::vector<TracedBeat> beats;
    for (int ms = 300; ms < signal.DurationMs(); ms += 800) {
        beats.push_back({static_cast<double>(ms), 1, true});
    }

    const HWND parent = CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP, 0, 0, kWidth + 40,
                                        kHeight + 40, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowWindow(parent, SW_SHOWNOACTIVATE);
    {
        const UiMetrics metrics;
        TracingPaper paper(parent, metrics, signal, beats, [](const std::wstring&) {});
        SetWindowPos(paper.Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        const TracingScale scale;
        const TracingLayout layout =
            LayOutTracing(Arrangement::k3x4, kWidth, kHeight, scale, 0, signal.DurationMs());
        TracingPainter painter(signal, beats);
        const BareTracing bare(paper.Window(), painter, layout, scale);
        kx::bench::Run(
            "tracing_paint_1920x1080", 1.3, [&] { bare.Paint(); },
            [&] {
                paper.RedrawContent();
                UpdateWindow(paper.Window());
                GdiFlush();
            });
        WPARAM direction = SB_LINERIGHT;
        int steps = 0;
        const double frame = kx::bench::MeasureAlone([&] {
            if (++steps % 400 == 0) {
                direction = direction == SB_LINERIGHT ? SB_LINELEFT : SB_LINERIGHT;
            }
            SendMessageW(paper.Window(), WM_HSCROLL, direction, 0);
            UpdateWindow(paper.Window());
            GdiFlush();
        });
        kx::bench::PrintLine("tracing_scroll_of_16_ms", {kFrameNs, frame}, 1);
    }
    DestroyWindow(parent);
}
