#include "suite/kxsys/message_box.h"

#include <iterator>

#include "suite/kxsys/kxsys.h"

namespace kx::sys {

int ShowBox(HWND owner, const char* text, const wchar_t* title, UINT style) {
    constexpr UINT kWindows1252 = 1252;
    wchar_t wide[KXSYS_LONGEST_TEXT + 1];
    if (MultiByteToWideChar(kWindows1252, 0, text, -1, wide, static_cast<int>(std::size(wide))) == 0) {
        wide[0] = L'\0';
    }
    // Without an owner nothing else keeps the box above the program's windows.
    return MessageBoxW(owner, wide, title, style | (owner == nullptr ? MB_TASKMODAL | MB_SETFOREGROUND : 0));
}

}  // namespace kx::sys
