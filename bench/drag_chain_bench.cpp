// A step of a drag in a morphology pane as a user makes it: the mouse message, the notification, the rules,
// the re-measurement by the engine, the figures and the view, until everything is on the screen.
#include <cstdint>

#include "bench/import_watch.h"
#include "bench/loaded_library.h"
#include "bench/ratio.h"
#include "dialogs/marker_view/trace/view_geometry.h"
#include "dialogs/resources/morphology_ids.h"

namespace {

using kx::bench::LoadedLibrary;

// A step must be done before the next frame of the screen is due, and its engine in a third of that.
constexpr double kFrameNs = 16e6;
constexpr double kEngineNs = 5e6;

constexpr int kMovements = 5;

// The right-hand markers have the most that follows them. Found where the view says so.
int ColumnOfMarker(HWND view) {
    RECT client{};
    GetClientRect(view, &client);
    for (int x = static_cast<int>(client.right) - 1; x >= 0; --x) {
        POINT point{x, client.bottom / 2};
        ClientToScreen(view, &point);
        if (SendMessageA(view, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTCLIENT) {
            return x - kx::kMarkerHalfWidth;
        }
    }
    return -1;
}

class Drag {
  public:
    static constexpr int kReach = 20;  // columns to the right of where the drag begins, and back
    static constexpr int kSteps = 2 * kReach;

    Drag(HWND view, int column) : view_(view), column_(column) {
        SendMessageA(view_, WM_LBUTTONDOWN, MK_LBUTTON, Place(column_));
        kx::bench::DrainQueue();
    }
    ~Drag() {
        SendMessageA(view_, WM_LBUTTONUP, 0, Place(column_));
        kx::bench::DrainQueue();
    }
    Drag(const Drag&) = delete;
    Drag& operator=(const Drag&) = delete;

    // Each step is on the screen before the next begins.
    void ToAndFro() {
        for (int step = 1; step <= kSteps; ++step) {
            const int offset = step <= kReach ? step : kSteps - step;
            PostMessageA(view_, WM_MOUSEMOVE, MK_LBUTTON, Place(column_ + offset));
            kx::bench::DrainQueue();
        }
    }

  private:
    LPARAM Place(int x) const { return MAKELPARAM(x, 100); }

    HWND view_;
    int column_;
};

void MeasureEngine(LoadedLibrary& library) {
    using Export = std::uint32_t(__stdcall*)(KxEpisodeRecord*);
    const auto update = reinterpret_cast<Export>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kxanalyze.dll"), "UPDATEDETECTION")));
    const double callNs = kx::bench::MeasureAlone([&] { update(library.Beat().Get()); });
    kx::bench::PrintLine("engine_of_a_step_of_5_ms", {kEngineNs, callNs}, 1);
}

struct PaneRow {
    const char* exportName;
    const char* step;
    const char* allocations;
    const char* files;
};
constexpr PaneRow kPanes[] = {
    {"GENERALMORPHDIALOG", "whole_step_general_of_16_ms", "allocations_of_200_steps_general",
     "file_accesses_of_200_steps_general"},
    {"QRSMORPHDIALOG", "whole_step_qrs_of_16_ms", "allocations_of_200_steps_qrs",
     "file_accesses_of_200_steps_qrs"},
};

bool MeasurePane(LoadedLibrary& library, const PaneRow& row) {
    const HWND pane = library.Open(library.Find(row.exportName));
    kx::bench::DrainQueue();
    const HWND view = GetDlgItem(pane, IDC_MORPH_VIEW);
    const int column = ColumnOfMarker(view);
    if (column < 0) {
        return false;
    }
    {
        Drag drag(view, column);
        // Some steps cost more than others: all of one movement to and fro.
        const double movementNs = kx::bench::MeasureAlone([&] { drag.ToAndFro(); });
        kx::bench::PrintLine(row.step, {kFrameNs, movementNs / Drag::kSteps}, 1);

        const kx::bench::SystemCalls before = kx::bench::ImportWatch::Calls();
        for (int i = 0; i < kMovements; ++i) {
            drag.ToAndFro();
        }
        const kx::bench::SystemCalls& after = kx::bench::ImportWatch::Calls();
        kx::bench::PrintCount(row.allocations, static_cast<double>(after.allocations - before.allocations),
                              0);
        kx::bench::PrintCount(row.files, static_cast<double>(after.files - before.files), 0);
    }
    LoadedLibrary::Close(pane);
    return true;
}

}  // namespace

int main() {
    LoadedLibrary library;
    // Loaded for the whole run, so that what is watched stays.
    const HMODULE engine = LoadLibraryA("kxanalyze.dll");
    if (!library.IsReady() || kx::bench::ImportWatch::Watch(library.Module()) == 0 ||
        kx::bench::ImportWatch::Watch(engine) == 0) {
        return 1;
    }
    for (const PaneRow& row : kPanes) {
        if (!MeasurePane(library, row)) {
            return 1;
        }
    }
    MeasureEngine(library);
    // Opening the panes has allocated, and the watch must have seen it.
    return kx::bench::ImportWatch::Calls().allocations > 0 ? 0 : 1;
}
