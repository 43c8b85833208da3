#include "host/frame/host_window.h"

#include <exception>
#include <stdexcept>

#include "host/resource_ids.h"

namespace kxhost {

HostWindow::~HostWindow() {
    if (window_ != nullptr) {
        DestroyWindow(window_);
    }
}

void HostWindow::RegisterOnce(const wchar_t* className) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExW(instance, className, &known)) {
        return;
    }
    WNDCLASSEXW made{};
    made.cbSize = sizeof made;
    made.style = CS_DBLCLKS;
    made.lpfnWndProc = Procedure;
    made.hInstance = instance;
    made.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_WORKSTATION));
    made.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    made.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    made.lpszClassName = className;
    if (RegisterClassExW(&made) == 0) {
        throw std::runtime_error("a window class could not be registered");
    }
}

void HostWindow::Create(const Creation& creation) {
    RegisterOnce(creation.className);
    const int place = creation.parent == nullptr ? CW_USEDEFAULT : 0;
    const HWND made = CreateWindowExW(creation.extendedStyle, creation.className, creation.title,
                                      creation.style, place, place, creation.width, creation.height,
                                      creation.parent, creation.menu, GetModuleHandleW(nullptr), this);
    if (made == nullptr) {
        throw std::runtime_error("a window could not be created");
    }
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT CALLBACK HostWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<HostWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    LRESULT result = 0;
    try {
        result = self->OnMessage(message, wParam, lParam);
    } catch (const std::exception& failure) {
        OutputDebugStringA(failure.what());
    } catch (...) {
        OutputDebugStringA("kxhost: unknown exception in a window procedure");
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->window_ = nullptr;
    }
    return result;
}

}  // namespace kxhost
