// The procedure of every dialog of the library.
#pragma once

#include <windows.h>

namespace kx {

// The item height that owner-drawn controls get that ask before their dialog has its object.
inline constexpr UINT kItemHeightBeforeInit = 150;

// Brings the window and its Dialog (the creation parameter) together at WM_INITDIALOG and calls the object's
// DialogProc afterwards. No exception leaves it.
INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

}  // namespace kx
