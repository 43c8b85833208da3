#include "tests/rig/gui_objects.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kx::test {
namespace {

// More than what can ever stand empty in the table: then the highest slot counts the objects in use, however they lie.
constexpr std::size_t kBatch = 1024;

unsigned long Slot(const void* handle) { return reinterpret_cast<std::uintptr_t>(handle) & 0xFFFF; }

unsigned long HighestGdiSlot() {
    std::array<HBRUSH, kBatch> brushes{};
    unsigned long highest = 0;
    for (std::size_t i = 0; i < kBatch; ++i) {
        brushes[i] = CreateSolidBrush(static_cast<COLORREF>(i));
        highest = std::max(highest, Slot(brushes[i]));
    }
    std::for_each(brushes.rbegin(), brushes.rend(), [](HBRUSH brush) { DeleteObject(brush); });
    return highest;
}

unsigned long HighestUserSlot() {
    std::array<HMENU, kBatch> menus{};
    unsigned long highest = 0;
    for (HMENU& menu : menus) {
        menu = CreateMenu();
        highest = std::max(highest, Slot(menu));
    }
    std::for_each(menus.rbegin(), menus.rend(), [](HMENU menu) { DestroyMenu(menu); });
    return highest;
}

}  // namespace

GuiObjects CountGuiObjects() {
    const HANDLE process = GetCurrentProcess();
    GuiObjects counted{GetGuiResources(process, GR_GDIOBJECTS), GetGuiResources(process, GR_USEROBJECTS)};
    if (counted.gdi == 0) {
        counted.gdi = HighestGdiSlot();
    }
    if (counted.user == 0) {
        counted.user = HighestUserSlot();
    }
    return counted;
}

}  // namespace kx::test
