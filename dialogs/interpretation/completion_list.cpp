#include "dialogs/interpretation/completion_list.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "dialogs/statements/case_fold.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"

namespace kx {
namespace {

constexpr std::uint32_t kListId = 1;
constexpr char kColumns[] = "230^c1^-1^c2";

constexpr COLORREF kPlain = RGB(255, 255, 255);
constexpr COLORREF kSelectedFocused = RGB(225, 225, 175);
constexpr COLORREF kSelected = RGB(255, 255, 150);
constexpr COLORREF kTyped = RGB(0, 0, 0);
constexpr COLORREF kTypedCode = RGB(200, 0, 0);
constexpr COLORREF kRest = RGB(150, 150, 150);
constexpr COLORREF kCodedText = RGB(0, 150, 0);

constexpr int kMargin = 3;    // pixels before a row's text
constexpr int kCodeGap = 20;  // pixels between a code and its text

// Writes pieces of a row one behind the other.
class RowWriter {
  public:
    RowWriter(DeviceContext& surface, const RECT& area)
        : surface_(surface), area_(area), x_(static_cast<int>(area.left) + kMargin) {
        surface_.SetTransparent();
    }

    void Write(std::string_view text, COLORREF color) {
        const auto length = static_cast<int>(text.size());
        const SIZE size = surface_.TextExtent(text.data(), length);
        const int y = static_cast<int>(area_.top + area_.bottom - size.cy) / 2;
        surface_.SetTextColor(color);
        surface_.ExtTextAt(x_, y, ETO_CLIPPED, &area_, text.data(), length, nullptr);
        x_ += static_cast<int>(size.cx);
    }
    void Skip(int pixels) { x_ += pixels; }

  private:
    DeviceContext& surface_;
    const RECT& area_;
    int x_;
};

}  // namespace

CompletionList::CompletionList(const LibraryModule& library, Window* popup)
    : ListView(library, popup, kListId, ListForm::kOwnerDrawn, RECT{}) {
    HideColumnHeader();
    SetColumns(kColumns);
}

void CompletionList::SetHighlight(std::string_view text) {
    const std::size_t length = text.size() < sizeof highlight_ ? text.size() : 0;
    text.copy(highlight_, length);
    highlight_[length] = '\0';
}

void CompletionList::KeepRows(int count) {
    const int rows = ItemCount();
    if (count < rows / 2) {
        DeleteAllRows();
    }
    for (int row = ItemCount(); row > count; --row) {
        SendMsg(LVM_DELETEITEM, static_cast<WPARAM>(row - 1));
    }
}

void CompletionList::ShowEntry(int row, const CompletionEntry& entry) {
    const auto data = reinterpret_cast<LPARAM>(&entry);
    if (row >= ItemCount()) {
        AppendRow(data, 0);
        return;
    }
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    item.lParam = data;
    SendMsg(LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void CompletionList::ShowSelected(int row) {
    SelectRow(row);
    RECT client{};
    if (GetClientRect(client)) {
        Invalidate(&client);
    }
}

int CompletionList::RowAt(int y) const {
    LVHITTESTINFO hit{};
    hit.pt = {kMargin, y};
    return static_cast<int>(SendMsg(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

const CompletionEntry* CompletionList::Entry(int row) const {
    return reinterpret_cast<const CompletionEntry*>(RowData(row));
}

void CompletionList::DrawRow(DeviceContext& surface, const RECT& columns, LPARAM rowData, bool selected) {
    RECT area = columns;
    if (RECT client{}; GetClientRect(client)) {
        area.right = client.right;
    }
    const COLORREF background = !selected ? kPlain : HasFocus() ? kSelectedFocused : kSelected;
    const UniqueBrush brush(CreateSolidBrush(background));
    surface.FillRect(area, brush.get());

    const auto& entry = *reinterpret_cast<const CompletionEntry*>(rowData);
    const std::string_view text = entry.text;
    const std::string_view code = entry.code;
    const std::string_view typed = highlight_;
    RowWriter row(surface, area);
    if (!typed.empty() && BeginsWithFolded(code, typed)) {
        row.Write(code.substr(0, typed.size()), kTypedCode);
        row.Write(code.substr(typed.size()), kRest);
        row.Skip(kCodeGap);
        row.Write(text, kCodedText);
    } else {
        row.Write(typed, kTyped);
        row.Write(text.substr(std::min(typed.size(), text.size())), kRest);
    }
}

}  // namespace kx
