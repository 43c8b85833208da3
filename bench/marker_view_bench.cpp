// What a marker view costs beyond the GDI calls that its picture needs, in a view of 800 x 500 pixels on a
// beat of 1200 samples at 1000 samples a second.
#include <cstddef>

#include "bench/bare_picture.h"
#include "bench/import_watch.h"
#include "bench/marker_view_window.h"
#include "bench/ratio.h"
#include "dialogs/marker_view/marker_view_messages.h"

namespace {

using kx::bench::BarePicture;
using kx::bench::MarkerViewWindow;

// The last marker is dragged to and fro where no other one stands.
constexpr std::size_t kDragged = 4;
constexpr int kDragRow = 100;
constexpr int kDragWidth = 100;

// To and fro by one column a step.
class Columns {
  public:
    explicit Columns(int first) : first_(first) {}
    int Next() {
        step_ = (step_ + 1) % (2 * kDragWidth);
        return first_ + (step_ <= kDragWidth ? step_ : 2 * kDragWidth - step_);
    }

  private:
    int first_;
    int step_ = 0;
};

void MeasureDrag(const MarkerViewWindow& window, BarePicture& bare) {
    const int column = bare.ColumnOf(kDragged);
    const auto mouse = [&](UINT message, int x) {
        window.Send(message, MK_LBUTTON, MAKELPARAM(x, kDragRow));
    };
    Columns bareColumns(column);
    Columns columns(column);
    mouse(WM_LBUTTONDOWN, column);
    MarkerViewWindow::Drain();
    if (GetFocus() == window.View()) {
        bare.SetFocus(kDragged);
    }
    kx::bench::PrintCount("picture_differs_with_focus", bare.IsShown() ? 0 : 1, 0);
    const auto step = [&] {
        mouse(WM_MOUSEMOVE, columns.Next());
        GdiFlush();
    };
    const kx::bench::Measured measured = kx::bench::Measure([&] { bare.Step(kDragged, bareColumns.Next()); },
                                                            step, [] { MarkerViewWindow::Drain(); });
    kx::bench::PrintLine("drag_step", measured, 1.2);

    // A run of the filters begins with a copy of the lead: where nothing is allocated, none has run.
    kx::bench::SystemCalls& calls = kx::bench::ImportWatch::Calls();
    calls = {};
    for (int i = 0; i < 2 * kDragWidth; ++i) {
        step();
    }
    const kx::bench::SystemCalls dragged = calls;
    kx::bench::PrintCount("allocations_of_200_drag_steps", static_cast<double>(dragged.allocations), 0);
    kx::bench::PrintCount("file_accesses_of_200_drag_steps", static_cast<double>(dragged.files), 0);
    mouse(WM_MOUSEMOVE, column);
    bare.Step(kDragged, column);
    kx::bench::PrintCount("picture_differs_after_drag", bare.IsShown() ? 0 : 1, 0);
    window.Send(WM_LBUTTONUP, 0, MAKELPARAM(column, kDragRow));
    MarkerViewWindow::Drain();
}

void MeasurePicture(const MarkerViewWindow& window, BarePicture& bare) {
    kx::bench::Run(
        "marker_only_repaint", 1.2, [&] { bare.Repaint(); },
        [&] {
            RedrawWindow(window.View(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            GdiFlush();
        });
    kx::bench::Run(
        "back_buffer_rebuild", 1.1,
        [&] {
            bare.Rebuild();
            bare.Repaint();
        },
        [&] {
            // As every other setter: the picture is made anew.
            window.Send(kx::MV_SETBANDPASS, 0, 1);
            GdiFlush();
        });
}

// Whether the watch sees what the view allocates when it filters the beat anew.
bool WatchSees(const MarkerViewWindow& window) {
    const long before = kx::bench::ImportWatch::Calls().allocations;
    window.Send(kx::MV_SETBANDPASS, 0, 1);
    return kx::bench::ImportWatch::Calls().allocations >= before + 2;
}

}  // namespace

int main() {
    MarkerViewWindow window;
    SetFocus(window.View());  // from the first line on, as a press on a marker gives it
    MarkerViewWindow::Drain();
    kx::bench::ImportWatch::Watch(GetModuleHandleA(nullptr));
    if (!window.IsReady() || !WatchSees(window)) {
        return 1;
    }
    BarePicture bare(window);
    if (GetFocus() == window.View()) {
        bare.SetFocus(0);
    }
    kx::bench::PrintCount("picture_differs", bare.IsShown() ? 0 : 1, 0);
    MeasureDrag(window, bare);
    MeasurePicture(window, bare);
    return 0;
}
