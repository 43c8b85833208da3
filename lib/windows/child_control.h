// A window of any registered class as a child of a parent window.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/modules/module_instance.h"
#include "lib/windows/window.h"

namespace kx {

// Styles that every child has besides the caller's: WS_CHILD, WS_VISIBLE, WS_CLIPSIBLINGS, WS_CLIPCHILDREN
// and the bit 0x4000, which belongs to the class of the window.
inline constexpr DWORD kChildStyle = 0x56004000;

// The whole style of a child, nothing added.
struct WholeStyle {
    DWORD bits;
};
// What a scrolling child has besides its border and its client edge.
struct ScrollingStyle {
    bool vertical = false;
    bool horizontal = false;
    bool thickFrame = false;  // 0x40000
    bool tabStop = false;     // 0x10000
};

// Owned by whoever made it; its end is the end of its window, if that still exists. The window is created
// without a title and with `id` as its control id; it is made without an object of the caller's, so that a
// class of this library's own gets its object from its WindowClass. x, y, width and height in pixels of the
// parent's client area.
class ChildControl : public Window {
  public:
    ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module, Window* parent,
                 std::uint32_t id, int x, int y, int width, int height, DWORD extraStyle);
    // At the system's default position and size.
    ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module, Window* parent,
                 std::uint32_t id, DWORD extraStyle);
    ChildControl(DWORD extendedStyle, const char* className, const ModuleInstance& module, Window* parent,
                 std::uint32_t id, int x, int y, int width, int height, WholeStyle style);
    ChildControl(const char* className, const ModuleInstance& module, Window* parent, std::uint32_t id, int x,
                 int y, int width, int height, ScrollingStyle style);
    ~ChildControl();

    // Told by the parent of every WM_NOTIFY: remembers the code when the id is the control's own, else 0.
    // Derived controls act on their own notifications here; one that wants a result stores it in `result`.
    // Returns whether that is so.
    virtual bool OnChildNotify(std::uint32_t id, const NMHDR* header, LRESULT* result);

    // 0 when the last notification was another control's.
    std::uint32_t LastNotification() const { return lastNotification_; }

  private:
    friend struct ChildControlLayout;

    std::uint32_t lastNotification_ = 0;
};

}  // namespace kx
