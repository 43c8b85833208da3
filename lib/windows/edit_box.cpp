#include "lib/windows/edit_box.h"

#include <richedit.h>

#include <cstring>

#include "lib/number_text.h"
#include "lib/windows/control_notification.h"

namespace kx {
static_assert(sizeof(EditBox) == sizeof(Window));

namespace {

// WS_CHILD, WS_VISIBLE, WS_BORDER, WS_TABSTOP, ES_MULTILINE, ES_AUTOVSCROLL
constexpr DWORD kEditStyle = 0x50810044;

constexpr std::size_t kShownTextSize = 128;

bool SetFormat(const Window& edit, DWORD mask, DWORD effects, COLORREF color = 0) {
    static_assert(sizeof(CHARFORMATA) == 60);
    CHARFORMATA format{};
    format.cbSize = sizeof format;
    format.dwMask = mask;
    format.dwEffects = effects;
    format.crTextColor = color;
    return edit.SendMsg(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format)) != 0;
}

}  // namespace

EditBox::EditBox(Window* dialog, std::uint32_t id) : Window(dialog, id) {}

EditBox::EditBox(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                 int height)
    : Window(nullptr, parent, id) {
    CreateControl("Edit", "", module.Handle(), kEditStyle, WS_EX_CLIENTEDGE, x, y, width, height);
}

EditBox::~EditBox() {
    Destroy();
}

void EditBox::ShowText(const char* text) {
    if (text == nullptr) {
        text = "";
    }
    // A text that does not fit is longer than what is shown of this kind, and is set.
    char shown[kShownTextSize];
    const int length = GetText(shown, sizeof shown);
    if (length == static_cast<int>(sizeof shown) - 1 || std::strcmp(shown, text) != 0) {
        SetText(text);
    }
}

void EditBox::ShowNumber(std::int32_t value) {
    char text[kShownTextSize];
    FormatNumber(text, sizeof text, value);
    ShowText(text);
}

void EditBox::Append(const char* text) {
    const int end = GetTextLength();
    SetSelection(end, end);
    SendMsg(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
}

void EditBox::Deselect() {
    SetSelection(-1, 0);
}

void EditBox::SetSelection(int start, int end) {
    SendMsg(EM_SETSEL, static_cast<WPARAM>(start), end);
}

TextSelection EditBox::GetSelection() const {
    DWORD start = 0;
    DWORD end = 0;
    SendMsg(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
}

bool EditBox::SetReadOnly(bool readOnly) {
    return SendMsg(EM_SETREADONLY, readOnly ? TRUE : FALSE) != 0;
}

POINT EditBox::PositionOfChar(int index) const {
    const LRESULT position = SendMsg(EM_POSFROMCHAR, static_cast<WPARAM>(index));
    // A character above or left of the visible text has negative coordinates.
    return {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
}

bool EditBox::SetBold() {
    return SetFormat(*this, CFM_BOLD, CFE_BOLD);
}

bool EditBox::SetPlain() {
    return SetFormat(*this, 0, 0);
}

bool EditBox::SetUnderline() {
    return SetFormat(*this, CFM_UNDERLINE, CFE_UNDERLINE);
}

bool EditBox::SetColor(COLORREF color) {
    return SetFormat(*this, CFM_COLOR, 0, color);
}

bool EditBox::IsSetFocus(WPARAM wParam) const {
    return IsNotification(wParam, Id(), EN_SETFOCUS);
}

bool EditBox::IsKillFocus(WPARAM wParam) const {
    return IsNotification(wParam, Id(), EN_KILLFOCUS);
}

bool EditBox::IsChange(WPARAM wParam) const {
    return IsNotification(wParam, Id(), EN_CHANGE);
}

bool EditBox::IsUpdate(WPARAM wParam) const {
    return IsNotification(wParam, Id(), EN_UPDATE);
}

}  // namespace kx
