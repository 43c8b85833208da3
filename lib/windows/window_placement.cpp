// Showing, placing, focusing and restyling a window.
#include "lib/windows/window.h"

namespace kx {
namespace {

// What a window without a parent is centred over.
constexpr RECT kDefaultReference{0, 0, 1024, 780};

constexpr UINT kInPlace = SWP_NOZORDER | SWP_NOACTIVATE;

bool SetStyleBits(HWND window, int index, DWORD bits, bool on) {
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(window, index));
    SetLastError(0);
    SetWindowLongPtrA(window, index, static_cast<LONG_PTR>(on ? style | bits : style & ~bits));
    return GetLastError() == 0;
}

// The rectangle that a window is centred over, on the screen.
bool CenteringReference(const Window* parent, HWND parentHandle, RECT& reference) {
    if (parent == nullptr) {
        reference = kDefaultReference;
        return true;
    }
    return GetWindowRect(parentHandle, &reference) != FALSE;
}

// x and y: the new left top corner on the screen. A child window is placed in its parent's client area.
bool MoveOnScreen(HWND window, int x, int y, const RECT& size) {
    POINT corner{x, y};
    if ((GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0) {
        ScreenToClient(GetAncestor(window, GA_PARENT), &corner);
    }
    return SetWindowPos(window, nullptr, corner.x, corner.y, size.right - size.left, size.bottom - size.top,
                        kInPlace) != FALSE;
}

bool ChangeOrder(HWND window, HWND after) {
    return SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE) != FALSE;
}

}  // namespace

bool Window::Show() {
    return ShowWindow(handle_, SW_SHOW) != FALSE;
}

bool Window::Hide() {
    return ShowWindow(handle_, SW_HIDE) != FALSE;
}

bool Window::ShowNormal() {
    return ShowWindow(handle_, SW_SHOWNORMAL) != FALSE;
}

bool Window::Maximize() {
    return ShowWindow(handle_, SW_MAXIMIZE) != FALSE;
}

bool Window::Enable(bool enabled) {
    return EnableWindow(handle_, enabled ? TRUE : FALSE) != FALSE;
}

bool Window::IsValid() const {
    return IsWindow(handle_) != FALSE;
}

bool Window::Update() {
    return UpdateWindow(handle_) != FALSE;
}

bool Window::Invalidate(const RECT* area) {
    // The system takes a null handle for every window of the desktop.
    return handle_ != nullptr && InvalidateRect(handle_, area, area == nullptr ? TRUE : FALSE) != FALSE;
}

bool Window::MoveTo(int x, int y, int width, int height) {
    return SetWindowPos(handle_, nullptr, x, y, width, height, kInPlace) != FALSE;
}

bool Window::Resize(int width, int height) {
    return SetWindowPos(handle_, nullptr, 0, 0, width, height, kInPlace | SWP_NOMOVE) != FALSE;
}

bool Window::BringToTopmost() {
    return ChangeOrder(handle_, HWND_TOPMOST);
}

bool Window::ToTop() {
    return ChangeOrder(handle_, HWND_TOP);
}

bool Window::ToBottom() {
    return ChangeOrder(handle_, HWND_BOTTOM);
}

bool Window::CenterHorizontally() {
    RECT own{};
    RECT reference{};
    if (!GetWindowRect(own) || !CenteringReference(parent_, ParentHandle(), reference)) {
        return false;
    }
    const int space = static_cast<int>((reference.right - reference.left) - (own.right - own.left));
    return MoveOnScreen(handle_, reference.left + space / 2, own.top, own);
}

bool Window::CenterVertically() {
    RECT own{};
    RECT reference{};
    if (!GetWindowRect(own) || !CenteringReference(parent_, ParentHandle(), reference)) {
        return false;
    }
    const int space = static_cast<int>((reference.bottom - reference.top) - (own.bottom - own.top));
    return MoveOnScreen(handle_, own.left, reference.top + space / 2, own);
}

bool Window::GetClientRect(RECT& area) const {
    return ::GetClientRect(handle_, &area) != FALSE;
}

bool Window::GetWindowRect(RECT& area) const {
    return ::GetWindowRect(handle_, &area) != FALSE;
}

bool Window::HasFocus() const {
    return handle_ != nullptr && GetFocus() == handle_;
}

HWND Window::SetFocus() {
    // The system takes a null handle for "nobody has the focus".
    return handle_ == nullptr ? nullptr : ::SetFocus(handle_);
}

HWND Window::SetCapture() {
    return handle_ == nullptr ? nullptr : ::SetCapture(handle_);
}

bool Window::ReleaseCapture() {
    return ::ReleaseCapture() != FALSE;
}

bool Window::BringToTop() {
    return BringWindowToTop(handle_) != FALSE;
}

bool Window::SetForeground() {
    return SetForegroundWindow(handle_) != FALSE;
}

bool Window::SetMinimizeBox(bool on) {
    return SetStyleBits(handle_, GWL_STYLE, WS_MINIMIZEBOX, on);
}

bool Window::SetCaption(bool on) {
    return SetStyleBits(handle_, GWL_STYLE, WS_CAPTION, on);
}

bool Window::SetThickFrame(bool on) {
    return SetStyleBits(handle_, GWL_STYLE, WS_THICKFRAME, on);
}

bool Window::SetSystemMenu(bool on) {
    return SetStyleBits(handle_, GWL_STYLE, WS_SYSMENU, on);
}

bool Window::SetStaticEdge(bool on) {
    return SetStyleBits(handle_, GWL_EXSTYLE, WS_EX_STATICEDGE, on);
}

bool Window::SetStyles(DWORD style, DWORD extendedStyle) {
    SetLastError(0);
    SetWindowLongPtrA(handle_, GWL_STYLE, static_cast<LONG_PTR>(style));
    SetWindowLongPtrA(handle_, GWL_EXSTYLE, static_cast<LONG_PTR>(extendedStyle));
    return GetLastError() == 0;
}

}  // namespace kx
