// The table of the wave amplitudes as bare calls of the system: the same pane, list, columns, images and
// rows, and nobody who has a text for a cell.
#pragma once

#include <windows.h>

#include "lib/modules/module_instance.h"
#include "lib/windows/image_list.h"

namespace kx::bench {

class BareTable {
  public:
    // module: the library, whose icons are used. The program needs the library's version of the controls.
    explicit BareTable(HMODULE module) : module_(module) {}

    // The pane, shown in the parent's window; the caller destroys it.
    HWND Open(HWND parent);
    // Frees the images of a pane that is gone.
    void FreeImages();

  private:
    static INT_PTR CALLBACK PaneProcedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam);
    void Fill(HWND pane);

    ModuleInstance module_;
    UniqueImageList small_;
    UniqueImageList normal_;
};

}  // namespace kx::bench
