#include "dialogs/dictionary/entry_button.h"

#include <cstring>

#include "dialogs/statements/statement_library.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/subclassed_control.h"

namespace kx {
namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
constexpr DWORD kGroupStyle = WS_GROUP | WS_TABSTOP;

constexpr COLORREF kSelectedColor = RGB(255, 255, 225);
constexpr COLORREF kTextColor = RGB(0, 0, 0);
constexpr COLORREF kHiddenColor = RGB(240, 0, 0);
constexpr int kTextMargin = 5;   // pixels between the edges of button and text
constexpr int kFocusMargin = 2;  // the width of a raised edge

bool IsEnterKey(const MSG* key) {
    return key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
}

RECT Inside(RECT area, int margin) {
    InflateRect(&area, -margin, 0);
    return area;
}

}  // namespace

EntryButton::EntryButton(const ModuleInstance& module, Window* dialog, std::uint32_t id, const RECT& area,
                         bool startsGroup, HFONT font)
    : Window(nullptr, dialog, id), normalColor_(GetSysColor(COLOR_BTNFACE)) {
    if (CreateControl("BUTTON", "", module.Handle(), kStyle | (startsGroup ? kGroupStyle : 0), 0, area.left,
                      area.top, area.right - area.left, area.bottom - area.top)) {
        SetFont(font, false);
        Subclass(this, &SubclassedControlProc<EntryButton>);
    }
}

EntryButton::~EntryButton() {
    if (IsValid()) {
        Unsubclass();
        Destroy();
    }
}

void EntryButton::Select(bool selected) {
    selected_ = selected;
    Invalidate();
}

void EntryButton::Draw(const DRAWITEMSTRUCT& item, HFONT font) const {
    char caption[StatementLibrary::kTextSize];
    GetText(caption, sizeof caption);
    RECT area = item.rcItem;
    SetDCBrushColor(item.hDC, selected_ ? kSelectedColor : normalColor_);
    ::FillRect(item.hDC, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    DrawEdge(item.hDC, &area, EDGE_RAISED, BF_RECT);

    const GdiSelection selection(item.hDC, font);
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, std::strcmp(caption, kHiddenText) == 0 ? kHiddenColor : kTextColor);
    RECT text = Inside(area, kTextMargin);
    DrawTextA(item.hDC, caption, -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if ((item.itemState & ODS_FOCUS) != 0) {
        InflateRect(&area, -kFocusMargin, -kFocusMargin);
        DrawFocusRect(item.hDC, &area);
    }
}

std::optional<LRESULT> EntryButton::OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && wParam == VK_RETURN) {
        PostMessageA(GetParent(Handle()), WM_COMMAND, MAKEWPARAM(Id(), BN_CLICKED),
                     reinterpret_cast<LPARAM>(Handle()));
        return 0;
    }
    if (message == WM_GETDLGCODE && IsEnterKey(reinterpret_cast<const MSG*>(lParam))) {
        return CallReplacedProc(message, wParam, lParam) | DLGC_WANTMESSAGE;
    }
    return std::nullopt;
}

}  // namespace kx
