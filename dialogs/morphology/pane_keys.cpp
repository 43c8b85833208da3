#include "dialogs/morphology/pane_keys.h"

#include <unordered_map>

#include "dialogs/marker_view/marker_view_messages.h"

namespace kx {
namespace {

// What WM_CHAR makes of the two keys.
constexpr WPARAM kCtrlY = 'Y' - '@';
constexpr WPARAM kCtrlZ = 'Z' - '@';

struct Watched {
    WNDPROC original;
    HWND pane;
};

// The watched windows of all panes, on the user-interface thread. Looked up for every message of a control,
// of which the opening of a pane sends thousands: the subclassing of the common controls, which keeps the
// same in properties of the window, takes as long for it as everything else together.
std::unordered_map<HWND, Watched> g_watched;

bool IsControlAlone() {
    return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
}

LRESULT CallOriginal(const Watched& watched, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WNDPROC original = watched.original;
    if (message == WM_NCDESTROY) {
        g_watched.erase(window);
    }
    return CallWindowProcA(original, window, message, wParam, lParam);
}

LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = g_watched.find(window);
    if (found == g_watched.end()) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    switch (message) {
        case WM_KEYDOWN:
            if ((wParam == 'Z' || wParam == 'Y') && IsControlAlone()) {
                PostMessageA(found->second.pane, wParam == 'Z' ? MVN_UNDO : MVN_REDO, 0, 0);
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam == kCtrlZ || wParam == kCtrlY) {
                return 0;  // an edit would undo by it, a button beep
            }
            break;
        default:
            break;
    }
    return CallOriginal(found->second, window, message, wParam, lParam);
}

void Watch(HWND window, HWND pane) {
    const auto original = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC));
    // First known, then put in: from its first message on the procedure finds the window.
    g_watched[window] = {original, pane};
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ControlProc));
}

}  // namespace

void WatchPane(HWND pane, HWND view) {
    for (HWND control = GetWindow(pane, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (control != view) {
            Watch(control, pane);
        }
    }
}

}  // namespace kx
