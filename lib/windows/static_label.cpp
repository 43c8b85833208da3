#include "lib/windows/static_label.h"

#include <cstddef>

namespace kx {

// The layout that the suite's window objects share.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct StaticLabelLayout {
    static_assert(offsetof(StaticLabel, colors_) == sizeof(Window) + 0);
    static_assert(sizeof(StaticLabel) == sizeof(Window) + 12);
};
#pragma GCC diagnostic pop

namespace {

constexpr DWORD kPlainStyle = 0x50000000;                // WS_CHILD, WS_VISIBLE
constexpr DWORD kIconStyle = kPlainStyle | SS_ICON;      // 0x50000003
constexpr DWORD kBitmapStyle = kPlainStyle | SS_BITMAP;  // 0x5000000E

constexpr DWORD StyleOf(LabelKind kind) {
    switch (kind) {
        case LabelKind::kCentered:
            return kPlainStyle | SS_CENTER;  // 0x50000001
        case LabelKind::kCenteredBordered:
            return kPlainStyle | SS_CENTER | WS_BORDER;  // 0x50800001
        case LabelKind::kOwnerDrawn:
            return kPlainStyle | SS_OWNERDRAW;  // 0x5000000D
        case LabelKind::kOwnerDrawnBordered:
            return kPlainStyle | SS_OWNERDRAW | WS_BORDER;  // 0x5080000D
    }
    return kPlainStyle;
}

}  // namespace

StaticLabel::StaticLabel(Window* dialog, std::uint32_t id) : Window(dialog, id) {}

StaticLabel::StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y,
                         int width, int height, LabelKind kind)
    : Window(nullptr, parent, id) {
    CreateControl("STATIC", "", module.Handle(), StyleOf(kind), 0, x, y, width, height);
}

StaticLabel::StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y,
                         int width, int height, HICON icon)
    : Window(nullptr, parent, id) {
    const DWORD style = icon != nullptr ? kIconStyle : kPlainStyle;
    if (CreateControl("STATIC", "", module.Handle(), style, 0, x, y, width, height) && icon != nullptr) {
        SendMsg(STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    }
}

StaticLabel::StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y,
                         int width, int height, HBITMAP bitmap)
    : Window(nullptr, parent, id) {
    const DWORD style = bitmap != nullptr ? kBitmapStyle : kPlainStyle;
    if (CreateControl("STATIC", "", module.Handle(), style, 0, x, y, width, height) && bitmap != nullptr) {
        SendMsg(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
    }
}

StaticLabel::~StaticLabel() {
    Destroy();
}

HBRUSH StaticLabel::OnCtlColor(HDC dc, HWND control) const {
    return control != nullptr && control == Handle() ? colors_.ApplyTo(dc) : nullptr;
}

}  // namespace kx
