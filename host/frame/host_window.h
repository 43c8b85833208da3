// The common part of the workstation's own windows: a class of their own, and one door for messages.
#pragma once

#include <windows.h>

namespace kxhost {

// A window of this program. A derived class answers messages in OnMessage(); what it throws is written to the
// debugger and ends that one message, since an exception must not travel through the window manager. The
// object outlives its window: the owner destroys the window (or its parent) first, and the destructor does.
class HostWindow {
  public:
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    virtual ~HostWindow();

    HWND Window() const { return window_; }

  protected:
    HostWindow() = default;

    // Registers the class on first use and creates the window; throws std::runtime_error when that fails.
    // parent null: a top-level window of the given size; else a visible child that its owner places.
    struct Creation {
        const wchar_t* className;
        const wchar_t* title;
        DWORD style;
        DWORD extendedStyle;
        HWND parent;
        int width;
        int height;
        HMENU menu;
    };
    void Create(const Creation& creation);

    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static void RegisterOnce(const wchar_t* className);

    HWND window_ = nullptr;
};

}  // namespace kxhost
