#include "lib/windows/menu.h"

namespace kx {

bool Menu::ItemId(UINT position, UINT& id) const {
    MENUITEMINFOA item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID | MIIM_SUBMENU;
    if (GetMenuItemInfoA(handle_, position, TRUE, &item) == FALSE) {
        return false;
    }
    // The system keeps a submenu's handle where a command has its id.
    id = item.hSubMenu == nullptr ? item.wID : 0;
    return true;
}

bool Menu::EnableItem(UINT id, bool enabled) const {
    return EnableMenuItem(handle_, id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED)) != -1;
}

bool Menu::CheckItem(UINT id, bool checked) const {
    return CheckMenuItem(handle_, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED)) !=
           static_cast<DWORD>(-1);
}

}  // namespace kx
