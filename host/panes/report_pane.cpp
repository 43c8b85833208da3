#include "host/panes/report_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

#include "host/panes/list_columns.h"
#include "host/resource_ids.h"
#include "host/windows/clipboard.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

enum { kCodeColumn, kNameColumn, kTextColumn };

// Lengths at 96 dots per inch.
constexpr int kNaturalWidth = 690;
constexpr int kNaturalHeight = 420;
constexpr int kMargin = 10;
constexpr int kGap = 6;
constexpr int kSearchWidth = 240;
constexpr int kCodeWidth = 60;
constexpr int kNameWidth = 300;
constexpr int kLeastTextWidth = 200;

HWND MakeChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, DWORD extendedStyle,
               int id, HFONT font) {
    const HWND child = CreateWindowExW(extendedStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                                       0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                       GetModuleHandleW(nullptr), nullptr);
    if (child == nullptr) {
        throw std::runtime_error("a control of the report could not be created");
    }
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

}  // namespace

ReportPane::ReportPane(HWND parent, const UiMetrics& metrics, const std::vector<ReportRow>& rows)
    : metrics_(metrics) {
    for (const ReportRow& row : rows) {
        const std::wstring text = FromRecordText(row.text);
        lines_.push_back({std::to_wstring(row.code), row.name, OneLine(std::wstring_view(text))});
    }
    const SIZE size = NaturalSize(metrics);
    Create({L"KxReport", nullptr, WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent,
            static_cast<int>(size.cx), static_cast<int>(size.cy), nullptr});
    CreateChildren();
    Filter();
    Layout();
}

SIZE ReportPane::NaturalSize(const UiMetrics& metrics) {
    return {metrics.Scale(kNaturalWidth), metrics.Scale(kNaturalHeight)};
}

void ReportPane::CreateChildren() {
    const HFONT font = metrics_.Message();
    label_ = MakeChild(Window(), L"STATIC", L"&Cerca:", SS_CENTERIMAGE, 0, -1, font);
    search_ = MakeChild(Window(), L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE,
                        IDC_REPORT_SEARCH, font);
    count_ = MakeChild(Window(), L"STATIC", L"", SS_CENTERIMAGE | SS_NOPREFIX, 0, IDC_REPORT_COUNT, font);
    list_ = MakeChild(Window(), WC_LISTVIEWW, L"Campi del report",
                      WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                      WS_EX_CLIENTEDGE, IDC_REPORT_LIST, font);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    AddColumn(list_, kCodeColumn, L"Codice", metrics_.Scale(kCodeWidth));
    AddColumn(list_, kNameColumn, L"Campo", metrics_.Scale(kNameWidth));
    AddColumn(list_, kTextColumn, L"Testo", metrics_.Scale(kLeastTextWidth));
}

void ReportPane::Layout() const {
    if (list_ == nullptr) {
        return;
    }
    RECT area;
    GetClientRect(Window(), &area);
    const int margin = metrics_.Scale(kMargin);
    const int gap = metrics_.Scale(kGap);
    const int height = metrics_.LineHeight(metrics_.Message()) + metrics_.Scale(8);
    const int labelWidth = metrics_.Scale(46);
    const int width = std::max(static_cast<int>(area.right) - 2 * margin, 0);
    const int searchLeft = margin + labelWidth;
    const int countLeft = searchLeft + metrics_.Scale(kSearchWidth) + 2 * gap;
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPos(label_, nullptr, margin, margin, labelWidth, height, flags);
    SetWindowPos(search_, nullptr, searchLeft, margin, metrics_.Scale(kSearchWidth), height, flags);
    SetWindowPos(count_, nullptr, countLeft, margin, std::max(margin + width - countLeft, 0), height, flags);
    const int listTop = margin + height + gap;
    SetWindowPos(list_, nullptr, margin, listTop, width,
                 std::max(static_cast<int>(area.bottom) - listTop - margin, 0), flags);
    FillWithColumn(list_, kTextColumn, metrics_.Scale(kLeastTextWidth));
}

void ReportPane::Filter() {
    const std::wstring filter = WindowText(search_);
    shown_.clear();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (Matches(lines_[i].code + L'\t' + lines_[i].name + L'\t' + lines_[i].text, filter)) {
            shown_.push_back(i);
        }
    }
    // What was chosen among other rows is chosen no longer.
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    SendMessageW(list_, LVM_SETITEMCOUNT, shown_.size(), 0);
    FillWithColumn(list_, kTextColumn, metrics_.Scale(kLeastTextWidth));
    const std::wstring all = std::to_wstring(lines_.size());
    const std::wstring text = shown_.size() == lines_.size()
                                  ? all + L" campi"
                                  : std::to_wstring(shown_.size()) + L" di " + all + L" campi";
    SetWindowTextW(count_, text.c_str());
}

const std::wstring& ReportPane::Cell(std::size_t row, int column) const {
    const Line& line = lines_[shown_[row]];
    return column == kCodeColumn ? line.code : column == kNameColumn ? line.name : line.text;
}

void ReportPane::CopyChosen() const {
    std::wstring text;
    for (LRESULT row = -1;
         (row = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;) {
        for (const int column : {kCodeColumn, kNameColumn, kTextColumn}) {
            text += Cell(static_cast<std::size_t>(row), column) + (column == kTextColumn ? L"\r\n" : L"\t");
        }
    }
    if (!text.empty() && !CopyToClipboard(Window(), text)) {
        MessageBeep(MB_ICONWARNING);
    }
}

void ReportPane::OnListKey(WORD key) const {
    if (GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0) {
        return;
    }
    if (key == 'C') {
        CopyChosen();
    } else if (key == 'A') {
        LVITEMW state{};
        state.state = state.stateMask = LVIS_SELECTED;
        SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    }
}

LRESULT ReportPane::OnNotify(const NMHDR& header) {
    if (header.hwndFrom != list_) {
        return 0;
    }
    if (header.code == static_cast<UINT>(LVN_GETDISPINFOW)) {
        LVITEMW& item = const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(header)).item;
        const auto row = static_cast<std::size_t>(item.iItem);
        if ((item.mask & LVIF_TEXT) != 0 && row < shown_.size()) {
            item.pszText = const_cast<wchar_t*>(Cell(row, item.iSubItem).c_str());
        }
    } else if (header.code == static_cast<UINT>(LVN_KEYDOWN)) {
        OnListKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
    }
    return 0;
}

LRESULT ReportPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_COMMAND:
            if (reinterpret_cast<HWND>(lParam) == search_ && HIWORD(wParam) == EN_CHANGE) {
                Filter();
            }
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
