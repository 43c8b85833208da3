// What a pane shows, read through its window as a host could.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace kx::test {

HWND Item(HWND pane, std::uint32_t id);
// Windows-1252.
std::string ItemText(HWND pane, std::uint32_t id);
bool IsItemChecked(HWND pane, std::uint32_t id);

// The pane's answer to a control that asks for its colours.
struct ControlColours {
    bool answered;  // false: the pane leaves the control to the system
    COLORREF text;
    COLORREF background;  // behind the characters
    COLORREF brush;       // behind the control
};
ControlColours AskColours(HWND pane, std::uint32_t id);

}  // namespace kx::test
