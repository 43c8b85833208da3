// Opening panes through the exports, against making the same windows with nobody behind them.
#include "bench/bare_table.h"
#include "bench/loaded_library.h"
#include "bench/ratio.h"
#include "dialogs/resources/morphology_ids.h"
// After <windows.h>.
#include <commctrl.h>

namespace {

using kx::bench::LoadedLibrary;

INT_PTR CALLBACK EmptyProcedure(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

// Until the user sees it.
void Paint(HWND pane) {
    RedrawWindow(pane, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
}

struct MorphRow {
    const char* name;
    const char* exportName;
    WORD templateId;
};
constexpr MorphRow kMorphRows[] = {
    {"open_general_morphology", "GENERALMORPHDIALOG", IDD_GENERAL_MORPH},
    {"open_qrs_morphology", "QRSMORPHDIALOG", IDD_QRS_MORPH},
    {"open_p_morphology", "PMORPHDIALOG", IDD_P_MORPH},
    {"open_t_morphology", "TMORPHDIALOG", IDD_T_MORPH},
};

// The template's windows, the view among them, with a procedure that does nothing.
bool MeasureMorphology(LoadedLibrary& library) {
    const kx::bench::LibraryControls controls(library.Module());
    bool opened = true;
    for (const MorphRow& row : kMorphRows) {
        const auto open = library.Find(row.exportName);
        HWND bare = nullptr;
        HWND pane = nullptr;
        const kx::bench::Measured measured = kx::bench::MeasureUndone(
            [&] {
                bare = CreateDialogParamA(library.Module(), MAKEINTRESOURCEA(row.templateId),
                                          library.Parent(), EmptyProcedure, 0);
                ShowWindow(bare, SW_SHOW);
                Paint(bare);
            },
            [&] { LoadedLibrary::Close(bare); },
            [&] {
                pane = library.Open(open);
                Paint(pane);
            },
            [&] {
                opened = opened && bare != nullptr && IsWindowVisible(pane);
                LoadedLibrary::Close(pane);
            });
        kx::bench::PrintLine(row.name, measured, 1.2);
    }
    return opened;
}

bool MeasureTable(LoadedLibrary& library) {
    const kx::bench::LibraryControls controls(library.Module());
    kx::bench::BareTable bareTable(library.Module());
    const auto open = library.Find("TABLEDIALOG");
    bool opened = true;
    HWND bare = nullptr;
    HWND pane = nullptr;
    const auto rows = [](HWND table) { return SendMessageA(GetDlgItem(table, 1), LVM_GETITEMCOUNT, 0, 0); };
    const kx::bench::Measured measured = kx::bench::MeasureUndone(
        [&] {
            bare = bareTable.Open(library.Parent());
            Paint(bare);
        },
        [&] {
            opened = opened && rows(bare) == KX_STANDARD_LEADS;
            LoadedLibrary::Close(bare);
        },
        [&] {
            pane = library.Open(open);
            Paint(pane);
        },
        [&] {
            opened = opened && rows(pane) == KX_STANDARD_LEADS;
            LoadedLibrary::Close(pane);
        });
    kx::bench::PrintLine("open_table", measured, 1.5);
    return opened;
}

}  // namespace

int main() {
    LoadedLibrary library;
    return library.IsReady() && MeasureMorphology(library) && MeasureTable(library) ? 0 : 1;
}
