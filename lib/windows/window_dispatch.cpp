// The dispatcher: one message, one handler, one result.
//
// A handler may destroy the window and with it the object, so nothing below touches the object once a handler
// has been called; the default procedure gets the handle that was kept.
#include "lib/windows/device_context.h"
#include "lib/windows/menu.h"
#include "lib/windows/window.h"

namespace kx {
namespace {

constexpr UINT kMouseFirst = WM_LBUTTONDOWN;
using MouseHandler = void (Window::*)(UINT keys, int x, int y);
constexpr MouseHandler kMouseHandlers[] = {
    &Window::OnLButtonDown, &Window::OnLButtonUp, &Window::OnLButtonDblClk,
    &Window::OnRButtonDown, &Window::OnRButtonUp, &Window::OnRButtonDblClk,
};
static_assert(WM_LBUTTONUP == kMouseFirst + 1 && WM_LBUTTONDBLCLK == kMouseFirst + 2 &&
              WM_RBUTTONDOWN == kMouseFirst + 3 && WM_RBUTTONUP == kMouseFirst + 4 &&
              WM_RBUTTONDBLCLK == kMouseFirst + 5);

// Coordinates are signed: a captured mouse and a second screen go below 0.
int SignedLow(LPARAM value) {
    return static_cast<short>(LOWORD(value));
}
int SignedHigh(LPARAM value) {
    return static_cast<short>(HIWORD(value));
}

}  // namespace

LRESULT Window::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return DispatchInput(handle_, message, wParam, lParam);
}

// Mouse, keys, focus and scroll bars; everything else goes on.
LRESULT Window::DispatchInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    bool handled = false;
    switch (message) {
        case WM_MOUSEMOVE:
            OnMouseMove(SignedLow(lParam), SignedHigh(lParam), (wParam & MK_LBUTTON) != 0);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_RBUTTONDBLCLK:
            (this->*kMouseHandlers[message - kMouseFirst])(static_cast<UINT>(wParam), SignedLow(lParam),
                                                           SignedHigh(lParam));
            return 0;
        case WM_HSCROLL:
            OnHScroll(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_VSCROLL:
            OnVScroll(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_KEYDOWN:
            handled = OnKeyDown(static_cast<UINT>(wParam), lParam);
            break;
        case WM_KEYUP:
            handled = OnKeyUp(static_cast<UINT>(wParam), lParam);
            break;
        case WM_SETCURSOR:
            handled = OnSetCursor(reinterpret_cast<HWND>(wParam), LOWORD(lParam));
            break;
        case WM_SETFOCUS:
            OnSetFocus();
            break;
        case WM_KILLFOCUS:
            OnKillFocus();
            break;
        default:
            return DispatchFrame(window, message, wParam, lParam);
    }
    return handled ? 0 : DefWindowProcA(window, message, wParam, lParam);
}

// What happens to the window as a whole.
LRESULT Window::DispatchFrame(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    bool handled = false;
    switch (message) {
        case WM_SIZE:
            OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
            return 0;
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_EXITSIZEMOVE:
            OnExitSizeMove();
            return 0;
        case WM_NCHITTEST: {
            const LRESULT hit = DefWindowProcA(window, message, wParam, lParam);
            return OnNcHitTest(hit, SignedLow(lParam), SignedHigh(lParam));
        }
        case WM_WINDOWPOSCHANGED:
            handled = OnWindowPosChanged(reinterpret_cast<WINDOWPOS*>(lParam));
            break;
        case WM_MOVING:
            OnMoving(reinterpret_cast<RECT*>(lParam));
            break;
        case WM_SIZING:
            OnSizing(static_cast<UINT>(wParam), reinterpret_cast<RECT*>(lParam));
            break;
        case WM_DEVICECHANGE:
            OnDeviceChange(static_cast<UINT>(wParam), lParam);
            break;
        default:
            return DispatchContent(window, message, wParam, lParam);
    }
    return handled ? 0 : DefWindowProcA(window, message, wParam, lParam);
}

// Painting, and what controls and menus ask and tell; any other message is the default procedure's.
LRESULT Window::DispatchContent(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            PaintContext context(window);
            OnPaint(context);
            return DefWindowProcA(window, message, wParam, lParam);
        }
        case WM_ERASEBKGND: {
            DeviceContext context(reinterpret_cast<HDC>(wParam));
            OnEraseBackground(context);
            break;
        }
        case WM_COMMAND:
            OnCommand(wParam, lParam);
            return 0;
        case WM_NOTIFY:
            return OnNotify(wParam, reinterpret_cast<NMHDR*>(lParam));
        case WM_DRAWITEM:
            OnDrawItem(static_cast<UINT>(wParam), reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
            return 0;
        case WM_MEASUREITEM:
            return OnMeasureItem(static_cast<UINT>(wParam), reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
        case WM_INITMENUPOPUP: {
            Menu menu(reinterpret_cast<HMENU>(wParam));
            OnInitMenuPopup(menu);
            return 0;
        }
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(
                OnCtlColorStatic(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        case WM_GETDLGCODE: {
            LRESULT code = 0;
            if (OnGetDlgCode(code)) {
                return code;
            }
            break;
        }
        case WM_QUERYNEWPALETTE:
            return OnQueryNewPalette();
        case WM_PALETTECHANGED:
            OnPaletteChanged(reinterpret_cast<HWND>(wParam));
            return 0;
        default:
            break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace kx
