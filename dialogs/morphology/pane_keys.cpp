#include "dialogs/morphology/pane_keys.h"

#include "dialogs/marker_view/marker_view_messages.h"

namespace kx {
namespace {

// What WM_CHAR makes of the two keys.
constexpr WPARAM kCtrlY = 'Y' - '@';
constexpr WPARAM kCtrlZ = 'Z' - '@';

bool IsControlAlone() {
    return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
}

}  // namespace

void PaneKeys::Watch(Window& pane, const Window& control) {
    watches_.push_back(std::make_unique<ControlWatch>(control.Handle(), pane, *this));
}

std::optional<LRESULT> PaneKeys::OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_KEYDOWN && (wParam == 'Z' || wParam == 'Y') && IsControlAlone()) {
        watch.PostToParent(wParam == 'Z' ? MVN_UNDO : MVN_REDO, 0, 0);
        return 0;
    }
    if (message == WM_CHAR && (wParam == kCtrlZ || wParam == kCtrlY)) {
        return 0;  // an edit would undo by it, a button beep
    }
    return std::nullopt;
}

}  // namespace kx
