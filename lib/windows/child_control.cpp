#include "lib/windows/child_control.h"

#include <cstddef>

namespace kx {

// The layout that the suite's window objects share.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct ChildControlLayout {
    static_assert(offsetof(ChildControl, lastNotification_) == sizeof(Window) + 0);
    static_assert(sizeof(ChildControl) == sizeof(Window) + 4);
};
#pragma GCC diagnostic pop

namespace {

constexpr DWORD kBorderedStyle = 0x50800000;  // WS_CHILD, WS_VISIBLE, WS_BORDER

constexpr DWORD StyleBits(const ScrollingStyle& style) {
    return kBorderedStyle | (style.vertical ? WS_VSCROLL : 0) | (style.horizontal ? WS_HSCROLL : 0) |
           (style.thickFrame ? WS_THICKFRAME : 0) | (style.tabStop ? WS_TABSTOP : 0);
}

}  // namespace

ChildControl::ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module,
                           Window* parent, std::uint32_t id, int x, int y, int width, int height,
                           DWORD extraStyle)
    : ChildControl(extendedStyle, className, module, parent, id, x, y, width, height,
                   WholeStyle{extraStyle | kChildStyle}) {}

ChildControl::ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module,
                           Window* parent, std::uint32_t id, DWORD extraStyle)
    : ChildControl(extendedStyle, className, module, parent, id, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                   CW_USEDEFAULT, WholeStyle{extraStyle | kChildStyle}) {}

ChildControl::ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module,
                           Window* parent, std::uint32_t id, int x, int y, int width, int height,
                           WholeStyle style)
    : Window(nullptr, parent, id) {
    CreateControl(className, "", module.Handle(), style.bits, extendedStyle, x, y, width, height);
}

ChildControl::ChildControl(const char* className, const ModuleInstance& module, Window* parent,
                           std::uint32_t id, int x, int y, int width, int height, ScrollingStyle style)
    : ChildControl(WS_EX_CLIENTEDGE, className, module, parent, id, x, y, width, height,
                   WholeStyle{StyleBits(style)}) {}

ChildControl::~ChildControl() {
    if (IsValid()) {
        Destroy();
    }
}

bool ChildControl::OnChildNotify(std::uint32_t id, const NMHDR* header, LRESULT*) {
    lastNotification_ = id == Id() && header != nullptr ? header->code : 0;
    return false;
}

}  // namespace kx
