// The message boxes of the suite.
#pragma once

#include <windows.h>

namespace kx::sys {

// A modal box with a text in Windows-1252 over the owner (null: none); style: the MB_ flags. The button's id.
int ShowBox(HWND owner, const char* text, const wchar_t* title, UINT style);

}  // namespace kx::sys
