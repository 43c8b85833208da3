// The table of the wave amplitudes as bare calls of the system: the same pane, list, columns, images and
// rows, and nobody who has a text for a cell.
#pragma once

#include <windows.h>

#include <commctrl.h>

namespace kx::bench {

class BareTable {
  public:
    // module: the library, whose icons are used. The library's controls must be active.
    explicit BareTable(HMODULE module);

    // The pane, shown in the parent's window; the caller destroys it.
    HWND Open(HWND parent) const;

  private:
    static INT_PTR CALLBACK PaneProcedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam);
    void Fill(HWND pane) const;
    HIMAGELIST LoadIcons(int side) const;
    void AddColumns(HWND list) const;
    void AddRows(HWND list) const;

    HMODULE module_;
    // Of the controls' own version, which this program is not linked with.
    decltype(&::ImageList_Create) create_;
    decltype(&::ImageList_ReplaceIcon) replaceIcon_;
};

}  // namespace kx::bench
