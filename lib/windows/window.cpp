// Windows as objects: construction, creation and the bond between window and object.
#include "lib/windows/window.h"

#include <cstddef>

namespace kx {

// The host's compiler lays out a class with virtual operations and plain members like this one does.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct WindowLayout {
    static_assert(sizeof(Window) == 24);
    static_assert(offsetof(Window, handle_) == 4);
    static_assert(offsetof(Window, parent_) == 8);
    static_assert(offsetof(Window, id_) == 12);
    static_assert(offsetof(Window, replacedProc_) == 16);
    static_assert(offsetof(Window, timerId_) == 20);
};
#pragma GCC diagnostic pop

namespace {

constexpr DWORD kFramedStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD kPopupStyle = WS_POPUP | WS_CLIPCHILDREN;

// SetWindowLongA returns the value before, so that only the last error tells a failure from a 0.
bool StoreUserData(HWND window, Window* object) {
    SetLastError(0);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    return GetLastError() == 0;
}

}  // namespace

Window::Window(Window* parent) noexcept : parent_(parent) {}

Window::Window(Window* parent, std::uint32_t id) noexcept : parent_(parent), id_(id) {
    handle_ = GetDlgItem(ParentHandle(), static_cast<int>(id));
}

Window::Window(HWND window, Window* parent, std::uint32_t id) noexcept
    : handle_(window), parent_(parent), id_(id) {}

Window::~Window() {
    StopTimer();
    // A window that outlives its object must not lead to it.
    if (handle_ != nullptr && IsWindow(handle_) != FALSE && FromHandle(handle_) == this) {
        if (replacedProc_ != nullptr) {
            Unsubclass();
        } else {
            Attach(nullptr);
        }
    }
}

bool Window::Create(const char* className, const char* title, HINSTANCE module, Window* createParam,
                    DWORD style, DWORD extendedStyle, int x, int y, int width, int height) {
    const HWND created = CreateWindowExA(extendedStyle, className, title, style, x, y, width, height,
                                         ParentHandle(), nullptr, module, createParam);
    if (created == nullptr) {
        // The object is not touched: a window destroyed while it was being made may have taken it along.
        // After a refused WM_CREATE its handle is 0 already (ClassWindowProc).
        return false;
    }
    handle_ = created;
    return true;
}

bool Window::CreateFrame(const char* className, HINSTANCE module, Window* createParam, const RECT* area,
                         bool framed) {
    const DWORD style = framed ? kFramedStyle : kPopupStyle;
    const DWORD extendedStyle = framed ? WS_EX_CONTROLPARENT : 0;
    if (area == nullptr) {
        return Create(className, "", module, createParam, style, extendedStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT);
    }
    return Create(className, "", module, createParam, style, extendedStyle, area->left, area->top,
                  area->right - area->left, area->bottom - area->top);
}

bool Window::CreateControl(const char* className, const char* title, HINSTANCE module, DWORD style,
                           DWORD extendedStyle, int x, int y, int width, int height) {
    // The menu argument of a child window is its id.
    const auto id = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id_));
    handle_ = CreateWindowExA(extendedStyle, className, title, style, x, y, width, height, ParentHandle(), id,
                              module, nullptr);
    return handle_ != nullptr;
}

bool Window::Attach(Window* object) {
    return StoreUserData(handle_, object);
}

bool Window::Subclass(Window* object, WNDPROC procedure) {
    if (replacedProc_ != nullptr) {
        return false;
    }
    // The procedure is put in last: from its first message on it finds the object.
    Window* const before = FromHandle(handle_);
    const auto own = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(handle_, GWLP_WNDPROC));
    if (own == nullptr || !StoreUserData(handle_, object)) {
        return false;
    }
    replacedProc_ = own;
    SetLastError(0);
    SetWindowLongPtrA(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    if (GetLastError() != 0) {
        replacedProc_ = nullptr;
        StoreUserData(handle_, before);
        return false;
    }
    return true;
}

bool Window::Unsubclass() {
    if (replacedProc_ == nullptr) {
        return false;
    }
    const bool detached = StoreUserData(handle_, nullptr);
    SetLastError(0);
    SetWindowLongPtrA(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(replacedProc_));
    replacedProc_ = nullptr;
    return detached && GetLastError() == 0;
}

LRESULT Window::CallReplacedProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return replacedProc_ == nullptr ? DefWindowProcA(handle_, message, wParam, lParam)
                                    : CallWindowProcA(replacedProc_, handle_, message, wParam, lParam);
}

bool Window::Destroy() {
    return handle_ != nullptr && DestroyWindow(handle_) != FALSE;
}

Window* Window::FromHandle(HWND window) {
    return reinterpret_cast<Window*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

}  // namespace kx
