// The tool tips of a window's controls.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include "lib/windows/window.h"

namespace kx {

// Asks the window for a text when the pointer rests on a control: by WM_NOTIFY with TTN_NEEDTEXTA, which
// Window::OnNotify answers with GetToolTipText. There the control's id is its window handle.
class ToolTips {
  public:
    // owner and controls outlive the object. Without memory there are no tool tips.
    ToolTips(HINSTANCE module, const Window& owner);
    void Add(const Window& control);

  private:
    struct Destroyer {
        void operator()(HWND window) const noexcept { DestroyWindow(window); }
    };
    HWND owner_;
    std::unique_ptr<std::remove_pointer_t<HWND>, Destroyer> tips_;
};

}  // namespace kx
