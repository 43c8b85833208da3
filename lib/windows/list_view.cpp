#include "lib/windows/list_view.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "lib/number_text.h"
#include "lib/pick_list.h"
#include "lib/windows/common_controls.h"
#include "lib/windows/device_context.h"

namespace kx {
namespace {

// WS_CHILD, WS_VISIBLE and WS_TABSTOP, LVS_REPORT, LVS_SHOWSELALWAYS, and as the form has it LVS_SINGLESEL
// and LVS_OWNERDRAWFIXED.
constexpr DWORD kReportStyle = 0x5001000D;
constexpr DWORD kTitledStyle = 0x50010009;
constexpr DWORD kOwnerDrawnStyle = 0x5001040D;

constexpr std::size_t kColumnsSize = 256;
constexpr std::size_t kTitleSize = 65;
constexpr int kSmallSide = 16;
constexpr int kNormalSide = 32;
constexpr int kLastSortBit = 16;

DWORD StyleOf(ListForm form) {
    switch (form) {
        case ListForm::kTitled:
            return kTitledStyle;
        case ListForm::kOwnerDrawn:
            return kOwnerDrawnStyle;
        default:
            return kReportStyle;
    }
}

}  // namespace

ListView::ListView(const LibraryModule& library, Window* dialog, std::uint32_t id)
    : Window(dialog, id), library_(&library) {}

ListView::ListView(const LibraryModule& library, Window* parent, std::uint32_t id, ListForm form,
                   const RECT& area, const char* title)
    : Window(nullptr, parent, id), library_(&library) {
    UseCommonControls();
    const bool ownerDrawn = form == ListForm::kOwnerDrawn;
    const RECT place = ownerDrawn ? RECT{0, 0, 100, 100} : area;
    CreateControl(WC_LISTVIEWA, form == ListForm::kTitled ? title : "", library.instance.Handle(),
                  StyleOf(form), 0, place.left, place.top, place.right - place.left,
                  place.bottom - place.top);
}

ListView::~ListView() {
    // The control would destroy the lists that it still has.
    SendMsg(LVM_SETIMAGELIST, LVSIL_SMALL, 0);
    SendMsg(LVM_SETIMAGELIST, LVSIL_NORMAL, 0);
    Destroy();
}

const char* ListView::CellText(LPARAM, int) {
    return "";
}

COLORREF ListView::CellTextColor(LPARAM, int) {
    return RGB(0, 0, 0);
}

COLORREF ListView::CellBackColor(LPARAM, int) {
    return RGB(255, 255, 255);
}

HFONT ListView::CellFont(LPARAM, int) {
    return nullptr;
}

int ListView::CompareRows(LPARAM, LPARAM, int) {
    return 0;
}

void ListView::DrawRow(DeviceContext&, const RECT&, LPARAM, bool) {}

void ListView::OnListKey(UINT) {}

void ListView::AddStyle(DWORD bits) {
    SetWindowLongA(Handle(), GWL_STYLE, GetWindowLongA(Handle(), GWL_STYLE) | static_cast<LONG>(bits));
}

void ListView::AddExtendedStyle(DWORD bits) {
    SendMsg(LVM_SETEXTENDEDLISTVIEWSTYLE, bits, static_cast<LPARAM>(bits));
}

bool ListView::SetImages(int count, const std::uint32_t* iconIds) {
    UniqueImageList smallImages = LoadIconImages(library_->instance, kSmallSide, count, iconIds);
    UniqueImageList normalImages = LoadIconImages(library_->instance, kNormalSide, count, iconIds);
    const bool complete = smallImages != nullptr && normalImages != nullptr;
    if (!complete) {
        smallImages.reset();
        normalImages.reset();
    }
    SendMsg(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(smallImages.get()));
    SendMsg(LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(normalImages.get()));
    smallImages_ = std::move(smallImages);
    normalImages_ = std::move(normalImages);
    return complete;
}

bool ListView::SetColumnsFromResource(std::uint32_t stringId) {
    char text[kColumnsSize];
    library_->instance.LoadText(stringId, text, sizeof text);
    return SetColumns(text);
}

bool ListView::SetColumns(const char* text) {
    ListPieces pieces(text);
    for (std::string_view width; pieces.Next(width);) {
        std::string_view title;
        if (!pieces.Next(title) || Handle() == nullptr) {
            return false;
        }
        char titleText[kTitleSize] = {};
        std::memcpy(titleText, title.data(), std::min(title.size(), kTitleSize - 1));
        LVCOLUMNA column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = LVCFMT_LEFT;
        column.cx = ParseNumber(width);
        column.pszText = titleText;
        column.iSubItem = columnCount_;
        if (SendMsg(LVM_INSERTCOLUMNA, static_cast<WPARAM>(columnCount_),
                    reinterpret_cast<LPARAM>(&column)) != columnCount_) {
            return false;
        }
        ++columnCount_;
    }
    AddExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
    return true;
}

int ListView::AppendRow(LPARAM rowData, int image) {
    if (Handle() == nullptr) {
        return -1;
    }
    LVITEMA item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = ItemCount();
    item.pszText = LPSTR_TEXTCALLBACKA;
    item.iImage = image;
    item.lParam = rowData;
    const auto row = static_cast<int>(SendMsg(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
    for (item.iSubItem = 1; row >= 0 && item.iSubItem < columnCount_; ++item.iSubItem) {
        SendMsg(LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    return row;
}

void ListView::SelectRow(int row) {
    LVITEMA item{};
    item.state = item.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    SendMsg(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    SendMsg(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

int ListView::SelectedRow() const {
    return Handle() == nullptr
               ? -1
               : static_cast<int>(SendMsg(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

int ListView::ItemCount() const {
    return static_cast<int>(SendMsg(LVM_GETITEMCOUNT));
}

LPARAM ListView::RowData(int row) const {
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    return SendMsg(LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) != FALSE ? item.lParam : 0;
}

void ListView::DeleteAllRows() {
    SendMsg(LVM_DELETEALLITEMS);
}

bool ListView::Notify(UINT_PTR id, NMHDR* header, LRESULT& result) {
    if (header == nullptr || id != Id() || header->hwndFrom != Handle()) {
        return false;
    }
    lastCode_ = header->code;
    result = 0;
    switch (header->code) {
        case LVN_GETDISPINFOA: {
            LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(header)->item;
            if ((item.mask & LVIF_TEXT) != 0) {
                item.pszText = const_cast<char*>(CellText(item.lParam, item.iSubItem));  // read only
            }
            return true;
        }
        case NM_CUSTOMDRAW:
            result = OnCustomDraw(*reinterpret_cast<NMLVCUSTOMDRAW*>(header));
            return true;
        case LVN_COLUMNCLICK:
            SortBy(reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem);
            return true;
        case LVN_KEYDOWN:
            lastKey_ = reinterpret_cast<const NMLVKEYDOWN*>(header)->wVKey;
            OnListKey(lastKey_);
            return true;
        case LVN_ENDLABELEDITA:
            lastItem_ = reinterpret_cast<const NMLVDISPINFOA*>(header)->item.iItem;
            return true;
        case NM_CLICK:
            return true;
        default:
            return false;
    }
}

LRESULT ListView::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:  // NOLINT(bugprone-branch-clone): the two answers are names of one value
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return CDRF_NOTIFYSUBITEMDRAW;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
            const LPARAM rowData = draw.nmcd.lItemlParam;
            draw.clrText = CellTextColor(rowData, draw.iSubItem);
            draw.clrTextBk = CellBackColor(rowData, draw.iSubItem);
            const HFONT font = CellFont(rowData, draw.iSubItem);
            if (font == nullptr) {
                return CDRF_DODEFAULT;
            }
            SelectObject(draw.nmcd.hdc, font);
            return CDRF_NEWFONT;
        }
        default:
            return CDRF_DODEFAULT;
    }
}

void ListView::SortBy(int column) {
    const std::uint32_t bit = 1u << std::clamp(column, 0, kLastSortBit);
    struct Order {
        ListView* list;
        int column;
        int sign;
        static int CALLBACK Compare(LPARAM first, LPARAM second, LPARAM context) noexcept {
            const Order& order = *reinterpret_cast<const Order*>(context);
            try {
                return order.sign * order.list->CompareRows(first, second, order.column);
            } catch (...) {
                return 0;  // the system's sorting lies between: the rows count as equal
            }
        }
    } order{this, column, (descending_ & bit) != 0 ? -1 : 1};
    descending_ ^= bit;
    SendMsg(LVM_SORTITEMS, reinterpret_cast<WPARAM>(&order), reinterpret_cast<LPARAM>(&Order::Compare));
}

bool ListView::DrawItem(UINT id, const DRAWITEMSTRUCT* item) {
    if (item == nullptr || id != Id() || item->hwndItem != Handle() || item->itemData == 0 ||
        (item->itemAction & ODA_DRAWENTIRE) == 0) {
        return false;
    }
    DeviceContext surface(item->hDC);
    DrawRow(surface, item->rcItem, static_cast<LPARAM>(item->itemData),
            (item->itemState & ODS_SELECTED) != 0);
    return true;
}

const char* ListView::NumberText(int value) {
    static char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    return text;
}

}  // namespace kx
