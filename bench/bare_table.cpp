#include "bench/bare_table.h"

#include "dialogs/resources/picture_ids.h"
#include "lib/windows/dialog_template.h"

namespace kx::bench {
namespace {

constexpr int kLeads = 12;
constexpr int kColumnWidth = 70;
const char* const kTitles[] = {"Deriv",   "aP1 (uV)", "aP2 (uV)", "aQ (uV)",  "aR (uV)",
                               "aS (uV)", "aR1 (uV)", "aS1 (uV)", "aT1 (uV)", "aT2 (uV)"};
constexpr int kColumns = 10;
constexpr int kMargin = 7;
constexpr int kWidth = 690;
constexpr int kHeight = 238;
constexpr DWORD kListStyle = 0x5001000D;

template <class Function>
Function Find(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

BareTable::BareTable(HMODULE module) : module_(module) {
    const HMODULE controls = LoadLibraryA("comctl32.dll");
    create_ = Find<decltype(create_)>(controls, "ImageList_Create");
    replaceIcon_ = Find<decltype(replaceIcon_)>(controls, "ImageList_ReplaceIcon");
}

HIMAGELIST BareTable::LoadIcons(int side) const {
    const HIMAGELIST images = create_(side, side, ILC_COLOR32 | ILC_MASK, kLeads, 0);
    for (int lead = 0; lead < kLeads; ++lead) {
        const auto icon = static_cast<HICON>(
            LoadImageA(module_, MAKEINTRESOURCEA(IDI_LEAD_I + lead), IMAGE_ICON, side, side, 0));
        replaceIcon_(images, -1, icon);
        DestroyIcon(icon);
    }
    return images;
}

void BareTable::AddColumns(HWND list) const {
    for (int i = 0; i < kColumns; ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.cx = kColumnWidth;
        column.pszText = const_cast<char*>(kTitles[i]);
        column.iSubItem = i;
        SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

void BareTable::AddRows(HWND list) const {
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

void BareTable::Fill(HWND pane) const {
    const HWND list =
        CreateWindowExA(0, WC_LISTVIEWA, "", kListStyle, kMargin, kMargin, kWidth - 2 * kMargin,
                        kHeight - 2 * kMargin, pane, reinterpret_cast<HMENU>(UINT_PTR{1}), module_, nullptr);
    constexpr DWORD kExtended = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP;
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    // The list destroys its images with itself.
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(LoadIcons(16)));
    SendMessageA(list, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(LoadIcons(32)));
    AddColumns(list);
    AddRows(list);
    SetWindowPos(pane, nullptr, 0, 0, kWidth, kHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(pane, SW_SHOW);
}

INT_PTR CALLBACK BareTable::PaneProcedure(HWND pane, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<const BareTable*>(lParam)->Fill(pane);
    }
    return message == WM_INITDIALOG;
}

HWND BareTable::Open(HWND parent) const {
    static constexpr InMemoryTemplate kPane = MakeTemplate(
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | DS_CONTROL | DS_SETFONT | DS_FIXEDSYS | DS_3DLOOK,
        WS_EX_CONTROLPARENT, 1000, 100);
    return CreateDialogIndirectParamA(module_, kPane.Header(), parent, PaneProcedure,
                                      reinterpret_cast<LPARAM>(this));
}

}  // namespace kx::bench
