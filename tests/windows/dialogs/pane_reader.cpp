#include "tests/windows/dialogs/pane_reader.h"

namespace kx::test {

HWND Item(HWND pane, std::uint32_t id) {
    return GetDlgItem(pane, static_cast<int>(id));
}

std::string ItemText(HWND pane, std::uint32_t id) {
    char text[1024] = {};
    GetWindowTextA(Item(pane, id), text, sizeof text);
    return text;
}

bool IsItemChecked(HWND pane, std::uint32_t id) {
    return SendMessageA(Item(pane, id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

ControlColours AskColours(HWND pane, std::uint32_t id) {
    const HWND control = Item(pane, id);
    const HDC dc = GetDC(control);
    const LRESULT answer = SendMessageA(pane, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                        reinterpret_cast<LPARAM>(control));
    LOGBRUSH brush{};
    GetObjectA(reinterpret_cast<HBRUSH>(answer), sizeof brush, &brush);
    const ControlColours colours{GetObjectType(reinterpret_cast<HBRUSH>(answer)) == OBJ_BRUSH,
                                 GetTextColor(dc), GetBkColor(dc), brush.lbColor};
    ReleaseDC(control, dc);
    return colours;
}

}  // namespace kx::test
