// The two scroll bars of a window.
#include "lib/windows/window.h"

namespace kx {
namespace {

SCROLLINFO Get(HWND window, int bar, UINT mask) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = mask;
    // Stays all 0 when there is no such bar.
    GetScrollInfo(window, bar, &info);
    return info;
}

int SetPage(HWND window, int bar, UINT page) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_PAGE | SIF_DISABLENOSCROLL;
    info.nPage = page;
    return SetScrollInfo(window, bar, &info, TRUE);
}

int SetRange(HWND window, int bar, int minimum, int maximum) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_DISABLENOSCROLL;
    info.nMin = minimum;
    info.nMax = maximum;
    return SetScrollInfo(window, bar, &info, TRUE);
}

int SetPosition(HWND window, int bar, int position, bool redraw) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_POS;
    info.nPos = position;
    return SetScrollInfo(window, bar, &info, redraw ? TRUE : FALSE);
}

}  // namespace

bool Window::HasScrollBar(bool vertical) const {
    const LONG_PTR bit = vertical ? WS_VSCROLL : WS_HSCROLL;
    return (GetWindowLongPtrA(handle_, GWL_STYLE) & bit) != 0;
}

int Window::SetVPage(UINT page) {
    return SetPage(handle_, SB_VERT, page);
}

int Window::SetHPage(UINT page) {
    return SetPage(handle_, SB_HORZ, page);
}

int Window::SetVRange(int minimum, int maximum) {
    return SetRange(handle_, SB_VERT, minimum, maximum);
}

int Window::SetHRange(int minimum, int maximum) {
    return SetRange(handle_, SB_HORZ, minimum, maximum);
}

int Window::SetVPosition(int position, bool redraw) {
    return SetPosition(handle_, SB_VERT, position, redraw);
}

int Window::SetHPosition(int position, bool redraw) {
    return SetPosition(handle_, SB_HORZ, position, redraw);
}

UINT Window::GetVPage() const {
    return Get(handle_, SB_VERT, SIF_PAGE).nPage;
}

UINT Window::GetHPage() const {
    return Get(handle_, SB_HORZ, SIF_PAGE).nPage;
}

int Window::GetVPosition() const {
    return Get(handle_, SB_VERT, SIF_POS).nPos;
}

int Window::GetHPosition() const {
    return Get(handle_, SB_HORZ, SIF_POS).nPos;
}

int Window::GetVTrackPosition() const {
    return Get(handle_, SB_VERT, SIF_TRACKPOS).nTrackPos;
}

int Window::GetHTrackPosition() const {
    return Get(handle_, SB_HORZ, SIF_TRACKPOS).nTrackPos;
}

int Window::GetVMinimum() const {
    return Get(handle_, SB_VERT, SIF_RANGE).nMin;
}

int Window::GetHMinimum() const {
    return Get(handle_, SB_HORZ, SIF_RANGE).nMin;
}

}  // namespace kx
