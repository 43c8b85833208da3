// Texts for other programs.
#pragma once

#include <windows.h>

#include <string_view>

namespace kxhost {

// Puts the text in the place of what the clipboard holds. False when another program keeps it open or memory
// is short; what it held may then be gone.
bool CopyToClipboard(HWND owner, std::wstring_view text);

}  // namespace kxhost
