// The procedure of every control that is subclassed: its wrapper, or a ControlWatch, sees the control's
// messages before the control does. No other procedure is put before a control's. Windows that may be the
// host's, whose user data is its own, are watched by the system's subclassing
// (StatementCompletion::WatchSurroundings).
#pragma once

#include <windows.h>

#include <optional>

#include "lib/windows/handler_scope.h"
#include "lib/windows/window.h"

namespace kx {

// For Window::Subclass. Control: a class derived from Window with
//   std::optional<LRESULT> OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam)
//     the message's result, or nothing: the control gets it;
//   bool DeletesItself() const
//     whether the object was made with new and is deleted by the control's WM_DESTROY, which reaches the
//     controls of a dialog after the dialog itself.
// In its WM_DESTROY the control gets its own procedure back. An exception is reported and the control gets
// the message.
template <class Control>
LRESULT CALLBACK SubclassedControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const control = static_cast<Control*>(Window::FromHandle(window));
    if (control == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    const WNDPROC original = control->ReplacedProc();
    if (message == WM_DESTROY) {
        const bool deletesItself = control->DeletesItself();
        control->Unsubclass();
        if (deletesItself) {
            Retire(*control);
        }
        return CallWindowProcA(original, window, message, wParam, lParam);
    }
    const HandlerScope scope(*control);
    try {
        if (const std::optional<LRESULT> result = control->OnControlMessage(message, wParam, lParam)) {
            return *result;
        }
    } catch (...) {
        scope.Exception();
    }
    return CallWindowProcA(original, window, message, wParam, lParam);
}

}  // namespace kx
