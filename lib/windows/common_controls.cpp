#include "lib/windows/common_controls.h"

#include <windows.h>

#include <commctrl.h>

namespace kx {

bool UseCommonControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES;
    return InitCommonControlsEx(&controls) != FALSE;
}

}  // namespace kx
