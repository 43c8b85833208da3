#include "lib/windows/combo_box.h"

#include <cstddef>
#include <cstring>
#include <string>

#include "lib/number_text.h"
#include "lib/pick_list.h"
#include "lib/windows/control_notification.h"
#include "lib/windows/drawing_pause.h"
#include "lib/windows/subclassed_control.h"

namespace kx {

// The layout that the suite's window objects share.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct ComboBoxLayout {
    static_assert(offsetof(ComboBox, library_) == sizeof(Window) + 0);
    static_assert(offsetof(ComboBox, forwardMessage_) == sizeof(Window) + 4);
    static_assert(offsetof(ComboBox, forwardTarget_) == sizeof(Window) + 8);
    static_assert(offsetof(ComboBox, brush_) == sizeof(Window) + 12);
    static_assert(sizeof(ComboBox) == sizeof(Window) + 16);
};
#pragma GCC diagnostic pop

namespace {

// WS_CHILD, WS_VISIBLE, WS_BORDER, WS_VSCROLL, WS_TABSTOP, CBS_DROPDOWNLIST
constexpr DWORD kDropDownListStyle = 0x50A10003;
constexpr int kItemHeight = 10;  // pixels that one visible item adds to the control with its list

// The text of the last selection told to a forward target; shared, see OnControlMessage.
char g_forwardedText[1024];

LPARAM TextParameter(const char* text) {
    return reinterpret_cast<LPARAM>(text);
}

}  // namespace

ComboBox::ComboBox(const LibraryModule& library, Window* dialog, std::uint32_t id)
    : Window(dialog, id), library_(&library) {
    Subclass(this, &SubclassedControlProc<ComboBox>);
}

ComboBox::ComboBox(const LibraryModule& library, Window* parent, std::uint32_t id, int x, int y, int width,
                   int visibleItems, Window* forwardTarget, UINT forwardMessage)
    : Window(nullptr, parent, id),
      library_(&library),
      forwardMessage_(forwardMessage),
      forwardTarget_(forwardTarget) {
    CreateControl("COMBOBOX", "", library.instance.Handle(), kDropDownListStyle, WS_EX_CLIENTEDGE, x, y,
                  width, visibleItems * kItemHeight);
    Subclass(this, &SubclassedControlProc<ComboBox>);
}

void ComboBox::FillList(const char* text) {
    Reset();
    ListPieces pieces(text);
    std::string_view piece;
    while (pieces.Next(piece)) {
        AddString(std::string(piece).c_str());
    }
}

void ComboBox::FillPickList(std::uint32_t textId, std::int32_t selectedCode) {
    char text[kPickListSize];
    library_->instance.LoadText(textId, text, sizeof text);
    FillPickListText(text, selectedCode);
}

void ComboBox::FillPickListText(std::string_view text, std::int32_t selectedCode) {
    {
        const DrawingPause pause(*this);
        Reset();
        PickList choices(text);
        PickListItem item;
        while (choices.Next(item)) {
            AddItem(item.Code(), std::string(item.text).c_str());
        }
    }
    SetCurSel(0);
    SelectCode(selectedCode);
}

int ComboBox::AddItem(std::int32_t code, const char* text) {
    const int index = AddString(text);
    SetItemData(index, code);
    return index;
}

int ComboBox::AddItem(const char* codeText, const char* text) {
    return AddItem(ParseNumber(codeText), text);
}

void ComboBox::SelectCode(std::int32_t code) {
    const int count = GetCount();
    for (int i = 0; i < count; ++i) {
        std::int32_t data = 0;
        GetItemData(i, data);
        if (data == code) {
            SetCurSel(i);
            return;
        }
    }
}

std::int32_t ComboBox::SelectedCode() const {
    std::int32_t code = CB_ERR;
    GetItemData(GetCurSel(), code);
    return code;
}

void ComboBox::SelectText(const char* text) {
    const int count = GetCount();
    int found = 0;
    while (found < count && !HasText(found, text)) {
        ++found;
    }
    SetCurSel(found < count ? found : 0);
}

bool ComboBox::HasText(int index, std::string_view text) const {
    const LRESULT length = SendMsg(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (length != static_cast<LRESULT>(text.size())) {
        return false;
    }
    std::string own(text.size(), '\0');
    SendMsg(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(own.data()));
    return own == text;
}

bool ComboBox::IsSelChange(WPARAM wParam) const {
    return IsNotification(wParam, Id(), CBN_SELCHANGE);
}

bool ComboBox::IsSelEndOk(WPARAM wParam) const {
    return IsNotification(wParam, Id(), CBN_SELENDOK);
}

bool ComboBox::IsEditChange(WPARAM wParam) const {
    return IsNotification(wParam, Id(), CBN_EDITCHANGE);
}

bool ComboBox::IsEditUpdate(WPARAM wParam) const {
    return IsNotification(wParam, Id(), CBN_EDITUPDATE);
}

bool ComboBox::IsKillFocus(WPARAM wParam) const {
    return IsNotification(wParam, Id(), CBN_KILLFOCUS);
}

void ComboBox::Reset() {
    SendMsg(CB_RESETCONTENT);
}

bool ComboBox::GetItemData(int index, std::int32_t& data) const {
    data = static_cast<std::int32_t>(SendMsg(CB_GETITEMDATA, static_cast<WPARAM>(index)));
    return data != CB_ERR;
}

bool ComboBox::SetItemData(int index, std::int32_t data) {
    return SendMsg(CB_SETITEMDATA, static_cast<WPARAM>(index), data) != CB_ERR;
}

int ComboBox::AddString(const char* text) {
    return static_cast<int>(SendMsg(CB_ADDSTRING, 0, TextParameter(text)));
}

int ComboBox::InsertString(int index, const char* text) {
    return static_cast<int>(SendMsg(CB_INSERTSTRING, static_cast<WPARAM>(index), TextParameter(text)));
}

int ComboBox::DeleteString(int index) {
    return static_cast<int>(SendMsg(CB_DELETESTRING, static_cast<WPARAM>(index)));
}

int ComboBox::SetCurSel(int index) {
    return static_cast<int>(SendMsg(CB_SETCURSEL, static_cast<WPARAM>(index)));
}

int ComboBox::GetLBText(int index, char* buffer, std::size_t size) const {
    if (size == 0) {
        return CB_ERR;
    }
    buffer[0] = 0;
    const LRESULT length = SendMsg(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (length < 0) {
        return CB_ERR;
    }
    // The message knows no limit; a text that does not fit is cut from a copy of its own.
    if (static_cast<std::size_t>(length) < size) {
        return static_cast<int>(
            SendMsg(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)));
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    SendMsg(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.copy(buffer, size - 1);
    buffer[size - 1] = 0;
    return static_cast<int>(size - 1);
}

int ComboBox::GetCount() const {
    return static_cast<int>(SendMsg(CB_GETCOUNT));
}

int ComboBox::GetCurSel() const {
    return static_cast<int>(SendMsg(CB_GETCURSEL));
}

int ComboBox::FindExact(const char* text) const {
    return static_cast<int>(SendMsg(CB_FINDSTRINGEXACT, 0, TextParameter(text)));
}

std::optional<LRESULT> ComboBox::OnControlMessage(UINT message, WPARAM, LPARAM) {
    if (message == WM_COMMAND && forwardTarget_ != nullptr) {
        ForwardSelection();
    }
    return std::nullopt;
}

void ComboBox::ForwardSelection() const {
    GetLBText(GetCurSel(), g_forwardedText, sizeof g_forwardedText);
    forwardTarget_->PostMsg(forwardMessage_, static_cast<WPARAM>(SelectedCode()),
                            TextParameter(g_forwardedText));
}

}  // namespace kx
