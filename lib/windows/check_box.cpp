#include "lib/windows/check_box.h"

#include <cstddef>
#include <utility>

#include "lib/windows/control_notification.h"
#include "lib/windows/subclassed_control.h"

namespace kx {

// The layout that the suite's window objects share.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct CheckBoxLayout {
    static_assert(offsetof(CheckBox, icon_) == sizeof(Window) + 0);
    static_assert(offsetof(CheckBox, colors_) == sizeof(Window) + 4);
    static_assert(sizeof(CheckBox) == sizeof(Window) + 16);
};
#pragma GCC diagnostic pop

namespace {

constexpr DWORD kCheckBoxStyle = 0x50010003;  // WS_CHILD, WS_VISIBLE, WS_TABSTOP, BS_AUTOCHECKBOX

}  // namespace

CheckBox::CheckBox(Window* dialog, std::uint32_t id) : Window(dialog, id) {
    Subclass(this, &SubclassedControlProc<CheckBox>);
}

CheckBox::CheckBox(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                   int height)
    : Window(nullptr, parent, id) {
    CreateControl("BUTTON", "", module.Handle(), kCheckBoxStyle, WS_EX_NOPARENTNOTIFY, x, y, width, height);
    Subclass(this, &SubclassedControlProc<CheckBox>);
}

void CheckBox::SetChecked(bool checked) {
    SendMsg(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

void CheckBox::SetIndeterminate() {
    SendMsg(BM_SETCHECK, BST_INDETERMINATE);
}

bool CheckBox::IsChecked() const {
    return SendMsg(BM_GETCHECK) == BST_CHECKED;
}

bool CheckBox::IsClicked(WPARAM wParam) const {
    return IsNotification(wParam, Id(), BN_CLICKED);
}

bool CheckBox::SetIcon(UniqueIcon icon) {
    icon_ = std::move(icon);
    Invalidate();
    Update();
    if (icon_ == nullptr) {
        return false;
    }
    SendMsg(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon_.get()));
    return true;
}

HBRUSH CheckBox::OnCtlColor(HDC dc, HWND control) const {
    return control != nullptr && control == Handle() ? colors_.ApplyTo(dc) : nullptr;
}

}  // namespace kx
