// The HTML Help viewer, found when it is first needed: a host without it can still use the library.
#pragma once

#include <windows.h>

namespace kx {

// Its commands, as its own header numbers them.
inline constexpr UINT kHelpDisplayContents = 1;  // HH_DISPLAY_TOC
inline constexpr UINT kHelpContext = 15;         // HH_HELP_CONTEXT

// Calls HtmlHelpA. Null when no help window opened or there is no viewer.
HWND OpenHtmlHelp(HWND caller, const char* helpFile, UINT command, DWORD_PTR data);

}  // namespace kx
