// What a window sends, its menu and hot keys, and the boxes that it owns.
#include "lib/windows/html_help.h"
#include "lib/windows/menu.h"
#include "lib/windows/window.h"

namespace kx {

LRESULT Window::SendMsg(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(handle_, message, wParam, lParam);
}

bool Window::PostMsg(UINT message, WPARAM wParam, LPARAM lParam) const {
    // The system takes a null handle for the thread's own queue.
    return handle_ != nullptr && PostMessageA(handle_, message, wParam, lParam) != FALSE;
}

bool Window::PostUser(WPARAM wParam, LPARAM lParam) const {
    return PostMsg(WM_USER, wParam, lParam);
}

bool Window::PostCommand(WPARAM wParam, LPARAM lParam) const {
    return PostMsg(WM_COMMAND, wParam, lParam);
}

LRESULT Window::SendCommand(WPARAM wParam, LPARAM lParam) const {
    return SendMsg(WM_COMMAND, wParam, lParam);
}

LRESULT Window::SendDrawItem(WPARAM id, const DRAWITEMSTRUCT* item) const {
    return SendMsg(WM_DRAWITEM, id, reinterpret_cast<LPARAM>(item));
}

LRESULT Window::SendNotify(WPARAM id, const NMHDR* header) const {
    return SendMsg(WM_NOTIFY, id, reinterpret_cast<LPARAM>(header));
}

bool Window::PostToParent(UINT message, WPARAM wParam, LPARAM lParam) const {
    const HWND parent = ParentHandle();
    return parent != nullptr && PostMessageA(parent, message, wParam, lParam) != FALSE;
}

bool Window::SetMenu(const Menu& menu) {
    return menu.Handle() != nullptr && ::SetMenu(handle_, menu.Handle()) != FALSE;
}

ATOM Window::RegisterHotKey(const char* name, UINT modifiers, UINT virtualKey) {
    if (handle_ == nullptr) {
        return 0;
    }
    const ATOM atom = GlobalAddAtomA(name);
    if (atom != 0 && ::RegisterHotKey(handle_, atom, modifiers, virtualKey) == FALSE) {
        GlobalDeleteAtom(atom);
        return 0;
    }
    return atom;
}

bool Window::UnregisterHotKey(ATOM atom) {
    if (handle_ == nullptr || atom == 0) {
        return false;
    }
    const bool unregistered = ::UnregisterHotKey(handle_, atom) != FALSE;
    GlobalDeleteAtom(atom);
    return unregistered;
}

int Window::MessageBox(const char* text, const char* caption, UINT flags) const {
    return ::MessageBoxA(handle_, text, caption, flags);
}

bool Window::AskYesNo(const char* text, const char* caption, bool defaultYes) const {
    const UINT question = MB_YESNO | MB_ICONQUESTION;
    return MessageBox(text, caption, defaultYes ? question : question | MB_DEFBUTTON2) == IDYES;
}

void Window::Warn(const char* text, const char* caption) const {
    MessageBox(text, caption, MB_ICONEXCLAMATION);
}

void Window::Inform(const char* text, const char* caption) const {
    MessageBox(text, caption, MB_ICONINFORMATION);
}

bool Window::ShowHelpContents(const char* helpFile) const {
    return OpenHtmlHelp(handle_, helpFile, kHelpDisplayContents, 0) != nullptr;
}

void Window::PostQuit() {
    PostQuitMessage(0);
}

}  // namespace kx
