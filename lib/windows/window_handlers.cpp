// What the handlers do in a class that does not replace them.
#include <windows.h>

#include <commctrl.h>

#include "lib/windows/device_context.h"
#include "lib/windows/menu.h"
#include "lib/windows/window.h"

namespace kx {

void Window::OnPaint(PaintContext& context) {
    const RECT& area = context.UpdateRect();
    const HGDIOBJ before = context.Select(GetSysColorBrush(COLOR_WINDOW));
    context.FillPattern(area.left, area.top, area.right - area.left, area.bottom - area.top);
    context.Select(before);
}

bool Window::OnEraseBackground(DeviceContext&) {
    return false;
}

void Window::OnInitMenuPopup(Menu& menu) {
    UINT id = 0;
    for (UINT position = 0; menu.ItemId(position, id); ++position) {
        if (static_cast<int>(id) > 0) {
            menu.EnableItem(id, IsCommandEnabled(id));
            menu.CheckItem(id, IsCommandChecked(id));
        }
    }
}

void Window::OnSize(UINT, int, int) {}

LRESULT Window::OnCreate(HWND window) {
    handle_ = window;
    if (!Attach(this)) {
        handle_ = nullptr;
        return -1;
    }
    return 0;
}

void Window::OnClose() {
    Destroy();
}

void Window::OnDestroy() {}

LRESULT Window::OnNotify(WPARAM, NMHDR* header) {
    if (header != nullptr && header->code == TTN_NEEDTEXTA) {
        HINSTANCE module = nullptr;
        const char* text = nullptr;
        if (GetToolTipText(header->idFrom, module, text)) {
            auto* request = reinterpret_cast<NMTTDISPINFOA*>(header);
            request->hinst = module;
            request->lpszText = const_cast<char*>(text);  // the tool tip only reads it
        }
    }
    return 0;
}

LRESULT Window::OnCommand(WPARAM wParam, LPARAM lParam) {
    constexpr WORD kAccelerator = 1;
    const HWND window = handle_;
    const LRESULT result = OnControlCommand(wParam, lParam);
    if (result != 0) {
        return result;
    }
    const WORD notification = HIWORD(wParam);
    if (notification > kAccelerator) {
        return notification;
    }
    // The control command may have closed the window, and this object with it.
    if (window != nullptr && IsWindow(window) == FALSE) {
        return 0;
    }
    return OnMenuCommand(LOWORD(wParam));
}

LRESULT Window::OnMenuCommand(UINT) {
    return 0;
}

LRESULT Window::OnControlCommand(WPARAM, LPARAM) {
    return 0;
}

bool Window::OnKeyDown(UINT, LPARAM) {
    return false;
}

bool Window::OnKeyUp(UINT, LPARAM) {
    return false;
}

void Window::OnSetFocus() {}

void Window::OnKillFocus() {}

void Window::OnTimer(UINT_PTR) {}

LRESULT Window::OnQueryNewPalette() {
    return 0;
}

void Window::OnPaletteChanged(HWND) {}

void Window::OnHScroll(int, int) {}

void Window::OnVScroll(int, int) {}

void Window::OnLButtonDown(UINT, int, int) {}

void Window::OnLButtonUp(UINT, int, int) {}

void Window::OnLButtonDblClk(UINT, int, int) {}

void Window::OnRButtonDown(UINT, int, int) {}

void Window::OnRButtonUp(UINT, int, int) {}

void Window::OnRButtonDblClk(UINT, int, int) {}

void Window::OnMouseMove(int, int, bool) {}

bool Window::OnSetCursor(HWND, UINT) {
    return false;
}

LRESULT Window::OnNcHitTest(LRESULT defaultResult, int, int) {
    return defaultResult;
}

bool Window::OnWindowPosChanged(WINDOWPOS*) {
    return false;
}

void Window::OnMoving(RECT*) {}

void Window::OnSizing(UINT, RECT*) {}

LRESULT Window::OnMeasureItem(UINT, MEASUREITEMSTRUCT*) {
    return 0;
}

bool Window::OnDrawItem(UINT, DRAWITEMSTRUCT*) {
    return false;
}

HBRUSH Window::OnCtlColorStatic(HDC, HWND) {
    return nullptr;
}

void Window::OnExitSizeMove() {}

bool Window::OnGetDlgCode(LRESULT&) {
    return false;
}

void Window::OnDeviceChange(UINT, LPARAM) {}

bool Window::GetToolTipText(UINT_PTR, HINSTANCE&, const char*&) {
    return false;
}

bool Window::IsCommandEnabled(UINT) {
    return false;
}

bool Window::IsCommandChecked(UINT) {
    return false;
}

}  // namespace kx
