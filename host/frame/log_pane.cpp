#include "host/frame/log_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <stdexcept>

#include "host/panes/list_columns.h"
#include "host/resource_ids.h"

namespace kxhost {
namespace {

constexpr int kMostLines = 1000;
constexpr int kTimeColumn = 0;
constexpr int kKindColumn = 1;
constexpr int kTextColumn = 2;
// Lengths at 96 dots per inch.
constexpr int kTimeWidth = 76;
constexpr int kKindWidth = 110;

void SetCell(HWND list, int row, int column, const std::wstring& text) {
    LVITEMW cell{};
    cell.iSubItem = column;
    cell.pszText = const_cast<wchar_t*>(text.c_str());
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
}

}  // namespace

LogPane::LogPane(HWND parent, const UiMetrics& metrics) : metrics_(metrics) {
    list_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Messaggi della libreria",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | LVS_REPORT |
                                LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                            0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_LOG)),
                            GetModuleHandleW(nullptr), nullptr);
    if (list_ == nullptr) {
        throw std::runtime_error("the message list could not be created");
    }
    SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_.Message()), FALSE);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    AddColumn(list_, kTimeColumn, L"Ora", metrics_.Scale(kTimeWidth));
    AddColumn(list_, kKindColumn, L"Tipo", metrics_.Scale(kKindWidth));
    AddColumn(list_, kTextColumn, L"Messaggio", metrics_.Scale(kKindWidth));
}

void LogPane::Append(const std::wstring& kind, const std::wstring& text) {
    int count = static_cast<int>(SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0));
    if (count >= kMostLines) {
        SendMessageW(list_, LVM_DELETEITEM, 0, 0);
        --count;
    }
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t time[16];
    std::swprintf(time, std::size(time), L"%02u:%02u:%02u", unsigned{now.wHour}, unsigned{now.wMinute},
                  unsigned{now.wSecond});
    LVITEMW row{};
    row.mask = LVIF_TEXT;
    row.iItem = count;
    row.pszText = time;
    SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row));
    SetCell(list_, count, kKindColumn, kind);
    // A report of several lines stays one row.
    std::wstring line = text;
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c == L'\r' || c == L'\n' || c == L'\t'; }, L' ');
    SetCell(list_, count, kTextColumn, line);
    FitColumns();
    SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(count), FALSE);
}

int LogPane::PreferredHeight() const {
    constexpr int kRows = 5;
    return kRows * (metrics_.LineHeight(metrics_.Message()) + metrics_.Scale(3)) + metrics_.Scale(12);
}

void LogPane::FitColumns() const {
    FillWithColumn(list_, kTextColumn, metrics_.Scale(kKindWidth));
}

}  // namespace kxhost
