// A menu as an object.
#pragma once

#include <windows.h>

namespace kx {

// Refers to a menu that a window or a caller owns; it destroys nothing. With a null handle every operation
// fails.
class Menu {
  public:
    explicit Menu(HMENU handle) noexcept : handle_(handle) {}

    HMENU Handle() const { return handle_; }

    // The command id of the item at a position counted from 0; 0 for a separator and for a submenu. False:
    // there is no item at that position.
    bool ItemId(UINT position, UINT& id) const;
    // By command id, also in submenus. False: there is no such item.
    bool EnableItem(UINT id, bool enabled) const;
    bool CheckItem(UINT id, bool checked) const;

  private:
    HMENU handle_;
};

}  // namespace kx
