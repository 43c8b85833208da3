// A dialog template without items, built in memory.
#pragma once

#include <windows.h>

#include <cstddef>

namespace kx {

// A DLGTEMPLATE and what follows it for a dialog without menu, class and title but with DS_SETFONT. The font
// is the one of the library's template resources, so that a dialog unit is the same everywhere.
struct alignas(DWORD) InMemoryTemplate {
    DWORD style;
    DWORD extendedStyle;
    WORD itemCount;
    short x;
    short y;
    short width;
    short height;
    WORD menu;
    WORD windowClass;
    WORD title;
    WORD pointSize;
    WCHAR face[13];

    LPCDLGTEMPLATEA Header() const { return reinterpret_cast<LPCDLGTEMPLATEA>(this); }
};
static_assert(offsetof(InMemoryTemplate, menu) == sizeof(DLGTEMPLATE) &&
              offsetof(InMemoryTemplate, face) == sizeof(DLGTEMPLATE) + 8);

// width and height in dialog units.
constexpr InMemoryTemplate MakeTemplate(DWORD style, DWORD extendedStyle, short width, short height) {
    return {style, extendedStyle, 0, 0, 0, width, height, 0, 0, 0, 8, L"MS Shell Dlg"};
}

}  // namespace kx
