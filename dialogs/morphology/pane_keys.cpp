#include "dialogs/morphology/pane_keys.h"

// After <windows.h>.
#include <commctrl.h>

#include "dialogs/marker_view/marker_view_messages.h"

namespace kx {
namespace {

constexpr UINT_PTR kControlWatch = 1;
constexpr UINT_PTR kViewWatch = 2;
constexpr LPARAM kRepeated = LPARAM{1} << 30;  // of a key that is held down

// What WM_CHAR makes of the two keys.
constexpr WPARAM kCtrlY = 'Y' - '@';
constexpr WPARAM kCtrlZ = 'Z' - '@';

HWND PaneOf(DWORD_PTR data) {
    return reinterpret_cast<HWND>(data);
}

bool IsControlAlone() {
    return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
}

LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                             DWORD_PTR data) {
    switch (message) {
        case WM_KEYDOWN:
            if ((wParam == 'Z' || wParam == 'Y') && IsControlAlone()) {
                PostMessageA(PaneOf(data), wParam == 'Z' ? MVN_UNDO : MVN_REDO, 0, 0);
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam == kCtrlZ || wParam == kCtrlY) {
                return 0;  // an edit would undo by it, a button beep
            }
            break;
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, ControlProc, id);
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                          DWORD_PTR data) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK ||
        (message == WM_KEYDOWN && (lParam & kRepeated) == 0)) {
        SendMessageA(PaneOf(data), kMarkerGrasped, 0, 0);
    } else if (message == WM_CAPTURECHANGED || message == WM_KEYUP) {
        PostMessageA(PaneOf(data), kMarkerReleased, 0, 0);
    } else if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, ViewProc, id);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void WatchPane(HWND pane, HWND view) {
    const auto data = reinterpret_cast<DWORD_PTR>(pane);
    for (HWND control = GetWindow(pane, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (control == view) {
            SetWindowSubclass(control, ViewProc, kViewWatch, data);
        } else {
            SetWindowSubclass(control, ControlProc, kControlWatch, data);
        }
    }
}

}  // namespace kx
