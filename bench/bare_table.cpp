#include "bench/bare_table.h"

#include <cstdint>

#include "dialogs/resources/picture_ids.h"
#include "lib/windows/dialog_template.h"

namespace kx::bench {
namespace {

constexpr std::uint32_t kIcons[] = {IDI_LEAD_I,   IDI_LEAD_II,  IDI_LEAD_III, IDI_LEAD_AVR,
                                    IDI_LEAD_AVL, IDI_LEAD_AVF, IDI_LEAD_V1,  IDI_LEAD_V2,
                                    IDI_LEAD_V3,  IDI_LEAD_V4,  IDI_LEAD_V5,  IDI_LEAD_V6};
constexpr int kLeads = sizeof kIcons / sizeof kIcons[0];
constexpr int kColumnWidth = 70;
const char* const kTitles[] = {"Deriv",   "aP1 (uV)", "aP2 (uV)", "aQ (uV)",  "aR (uV)",
                               "aS (uV)", "aR1 (uV)", "aS1 (uV)", "aT1 (uV)", "aT2 (uV)"};
constexpr int kColumns = 10;
constexpr int kMargin = 7;
constexpr int kWidth = 690;
constexpr int kHeight = 238;
constexpr DWORD kListStyle = 0x5001000D | LVS_SHAREIMAGELISTS;

void AddColumns(HWND list) {
    for (int i = 0; i < kColumns; ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.cx = kColumnWidth;
        column.pszText = const_cast<char*>(kTitles[i]);
        column.iSubItem = i;
        SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

void AddRows(HWND list) {
    for (int lead = 0; lead < kLeads; ++lead) {
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
        item.iItem = lead;
        item.iImage = lead;
        item.pszText = LPSTR_TEXTCALLBACKA;
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        for (item.iSubItem = 1; item.iSubItem < kColumns; ++item.iSubItem) {
            SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(lead), reinterpret_cast<LPARAM>(&item));
        }
    }
}

}  // namespace

void BareTable::Fill(HWND pane) {
    const HWND list = CreateWindowExA(0, WC_LISTVIEWA, "", kListStyle, kMargin, kMargin, kWidth - 2 * kMargin,
                                      kHeight - 2 * kMargin, pane, reinterpret_cast<HMENU>(UINT_PTR{1}),
                                      module_.Handle(), nullptr);
    constexpr DWORD kExtended = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP;
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    small_ = LoadIconImages(module_, 16, kLeads, kIcons);
    normal_ = LoadIconImages(module_, 32, kLeads, kIcons);
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(small_.get()));
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(normal_.get()));
    AddColumns(list);
    AddRows(list);
    SetWindowPos(pane, nullptr, 0, 0, kWidth, kHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(pane, SW_SHOW);
}

INT_PTR CALLBACK BareTable::PaneProcedure(HWND pane, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<BareTable*>(lParam)->Fill(pane);
    }
    return message == WM_INITDIALOG;
}

HWND BareTable::Open(HWND parent) {
    static constexpr InMemoryTemplate kPane = MakeTemplate(
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | DS_CONTROL | DS_SETFONT | DS_FIXEDSYS | DS_3DLOOK,
        WS_EX_CONTROLPARENT, 1000, 100);
    return CreateDialogIndirectParamA(module_.Handle(), kPane.Header(), parent, PaneProcedure,
                                      reinterpret_cast<LPARAM>(this));
}

void BareTable::FreeImages() {
    small_.reset();
    normal_.reset();
}

}  // namespace kx::bench
