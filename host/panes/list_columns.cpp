#include "host/panes/list_columns.h"

#include <commctrl.h>

#include <algorithm>

namespace kxhost {

void AddColumn(HWND list, int column, const wchar_t* title, int width) {
    LVCOLUMNW made{};
    made.mask = LVCF_TEXT | LVCF_WIDTH;
    made.pszText = const_cast<wchar_t*>(title);
    made.cx = width;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&made));
}

void FillWithColumn(HWND list, int column, int least) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const int count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    RECT area;
    GetClientRect(list, &area);
    int rest = static_cast<int>(area.right);
    for (int other = 0; other < count; ++other) {
        if (other != column) {
            rest -= static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(other), 0));
        }
    }
    const int width = std::max(rest, least);
    if (width != SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0)) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0));
    }
}

}  // namespace kxhost
