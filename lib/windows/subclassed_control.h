// What the wrappers that subclass their control have in common: they see its messages before the system's
// procedure does, and they delete themselves when the control is destroyed.
//
// Such a wrapper is made with new. If its DeletesItself is true afterwards, the control deletes it in its
// WM_DESTROY, which reaches the controls of a dialog after the dialog itself; nobody may use or delete it
// later. Else there is no control, or it could not be subclassed, and the wrapper is its owner's to delete.
#pragma once

#include <windows.h>

#include "lib/windows/window.h"

namespace kx {

// The window procedure of a subclassed control. Control: a class derived from Window whose
// OnControlMessage(message, wParam, lParam) is noexcept.
template <class Control>
LRESULT CALLBACK SubclassedControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* control = static_cast<Control*>(Window::FromHandle(window));
    if (control == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    const WNDPROC original = control->ReplacedProc();
    if (message == WM_DESTROY) {
        control->Unsubclass();
        delete control;
    } else {
        control->OnControlMessage(message, wParam, lParam);
    }
    return CallWindowProcA(original, window, message, wParam, lParam);
}

// Gives a wrapper up at the end of its dialog: deletes it unless its control will.
template <class Control>
void ReleaseSubclassed(Control*& control) {
    if (control != nullptr && !control->DeletesItself()) {
        delete control;
    }
    control = nullptr;
}

}  // namespace kx
