// What the framework's tests share: this program as the library, a window to put things in, and windows and dialogs that take
// down which of their handlers is called, with what.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "lib/modules/system_services.h"
#include "lib/windows/device_context.h"
#include "lib/windows/dialog.h"
#include "lib/windows/menu.h"
#include "lib/windows/window_class.h"
#include "tests/rig/pane.h"
#include "tests/windows/framework/graves.h"
#include "tests/windows/framework/templates.h"

namespace kx::test {

inline const LibraryModule& ThisLibrary() {
    static const LibraryModule library(GetModuleHandleA(nullptr));
    return library;
}

// A child of the program's frame, destroyed with the object.
class Parent : public Window {
  public:
    Parent() : Window(&Frame(), 1) {
        CreateControl("STATIC", "frame", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 100, 80, 640, 480);
    }
    ~Parent() { Destroy(); }

    // A control of this window as a dialog's template would make it.
    HWND NewItem(const char* className, DWORD style, std::uint32_t id, const char* text = "") const {
        return CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE | style, 5, 5, 100, 100, Handle(),
                               reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    }

  private:
    static Window& Frame() {
        static Window frame(HostWindow::Frame(), nullptr, 0);
        return frame;
    }
};

// A test with the suite's spies, the binding to its system services, and a window to put things in.
class FrameworkTest : public testing::Test {
  protected:
    // The reports since the last call, without the start of the module.
    std::vector<std::string> Reports() {
        std::vector<std::string> reports = suite_.TakeReports();
        std::erase(reports, "LIBSTART");
        return reports;
    }

    SpyingSuite suite_;
    SystemServices services_{&ThisLibrary()};
    Parent frame_;
};

// The slot that a pointer to a virtual member names: its offset in the table plus 1.
template <class Member>
int Slot(Member member) {
    std::uint32_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return offset % 4 == 1 ? static_cast<int>(offset / 4) : -1;
}

// Every handler that answers yes or no answers `handled`, every one with a value answers `value`; what it does besides is
// `onCall`. A nothing of it is touched once that has been called.
template <class Self, class Base>
class Noting : public Base {
  public:
    using Base::Base;
    ~Noting() {
        if (!dies) {
            Base::Destroy();
        }
    }

    bool handled = false;
    LRESULT value = 0;
    bool dies = false;  // the object was made with new and ends with its window
    std::function<void()> onCall;
    std::vector<std::string> calls;
    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    bool OnEraseBackground(DeviceContext& context) override { return Handled("OnEraseBackground", context.Handle()); }
    void OnSize(UINT type, int width, int height) override { Note("OnSize", type, width, height); }
    void OnClose() override { Note("OnClose"); }
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT*) override { return Value("OnMeasureItem", id); }
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT*) override { return Handled("OnDrawItem", id); }
    HBRUSH OnCtlColorStatic(HDC context, HWND control) override {
        return reinterpret_cast<HBRUSH>(Value("OnCtlColorStatic", context, control));
    }
    void OnDeviceChange(UINT event, LPARAM data) override { Note("OnDeviceChange", event, data); }
    void OnDestroy() override {
        Base::OnDestroy();
        if (dies) {
            delete static_cast<Self*>(this);
        } else {
            Note("OnDestroy");
        }
    }

  protected:
    template <class... Arguments>
    void Note(const char* handler, Arguments... arguments) {
        std::string line = handler;
        ((line += ' ', line += Text(arguments)), ...);
        calls.push_back(line);
        if (const auto act = onCall) {
            act();
        }
    }
    template <class... Arguments>
    bool Handled(const char* handler, Arguments... arguments) {
        const bool answer = handled;
        Note(handler, arguments...);
        return answer;
    }
    template <class... Arguments>
    LRESULT Value(const char* handler, Arguments... arguments) {
        const LRESULT answer = value;
        Note(handler, arguments...);
        return answer;
    }

  private:
    template <class Argument>
    static std::string Text(Argument argument) {
        if constexpr (std::is_pointer_v<Argument>) {
            return std::to_string(reinterpret_cast<LONG_PTR>(argument));
        } else {
            return std::to_string(argument);
        }
    }
};

class RecordingWindow final : public Noting<RecordingWindow, Window> {
  public:
    using Noting::Noting;

    void OnPaint(PaintContext& context) override {
        const RECT area = context.UpdateRect();
        Note("OnPaint", area.left, area.top, area.right, area.bottom);
    }
    void OnInitMenuPopup(Menu&) override { Note("OnInitMenuPopup"); }
    LRESULT OnNotify(WPARAM id, NMHDR* header) override { return Value("OnNotify", id, header); }
    LRESULT OnControlCommand(WPARAM wParam, LPARAM lParam) override { return Value("OnControlCommand", wParam, lParam); }
    bool OnKeyDown(UINT key, LPARAM data) override { return Handled("OnKeyDown", key, data); }
    bool OnKeyUp(UINT key, LPARAM data) override { return Handled("OnKeyUp", key, data); }
    void OnSetFocus() override { Note("OnSetFocus"); }
    void OnKillFocus() override { Note("OnKillFocus"); }
    void OnTimer(UINT_PTR id) override { Note("OnTimer", id); }
    LRESULT OnQueryNewPalette() override { return Value("OnQueryNewPalette"); }
    void OnPaletteChanged(HWND window) override { Note("OnPaletteChanged", window); }
    void OnHScroll(int code, int position) override { Note("OnHScroll", code, position); }
    void OnVScroll(int code, int position) override { Note("OnVScroll", code, position); }
    void OnLButtonDown(UINT keys, int x, int y) override { Note("OnLButtonDown", keys, x, y); }
    void OnLButtonUp(UINT keys, int x, int y) override { Note("OnLButtonUp", keys, x, y); }
    void OnLButtonDblClk(UINT keys, int x, int y) override { Note("OnLButtonDblClk", keys, x, y); }
    void OnRButtonDown(UINT keys, int x, int y) override { Note("OnRButtonDown", keys, x, y); }
    void OnRButtonUp(UINT keys, int x, int y) override { Note("OnRButtonUp", keys, x, y); }
    void OnRButtonDblClk(UINT keys, int x, int y) override { Note("OnRButtonDblClk", keys, x, y); }
    void OnMouseMove(int x, int y, bool left) override { Note("OnMouseMove", x, y, left); }
    bool OnSetCursor(HWND window, UINT hit) override { return Handled("OnSetCursor", window, hit); }
    LRESULT OnNcHitTest(LRESULT hit, int x, int y) override { return Value("OnNcHitTest", hit, x, y); }
    bool OnWindowPosChanged(WINDOWPOS*) override { return Handled("OnWindowPosChanged"); }
    void OnMoving(RECT* area) override { Note("OnMoving", area->left); }
    void OnSizing(UINT edge, RECT* area) override { Note("OnSizing", edge, area->left); }
    void OnExitSizeMove() override { Note("OnExitSizeMove"); }
    bool OnGetDlgCode(LRESULT& code) override {
        code = value;
        return Handled("OnGetDlgCode");
    }
};

class RecordingDialog final : public Noting<RecordingDialog, Dialog> {
  public:
    using Noting::Noting;

    std::function<bool()> onInit;

    bool OnInitDialog() override { return onInit ? onInit() : true; }
    INT_PTR OnDialogCommand(WPARAM wParam) override {
        return passesCommands ? Dialog::OnDialogCommand(wParam) : Handled("OnDialogCommand", wParam);
    }
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override {
        result = 77;
        return Handled("OnDialogNotify", id, header == nullptr ? 0 : header->code);
    }
    void OnDialogHotKey(int id, LPARAM lParam) override { Note("OnDialogHotKey", id, lParam); }

    const char* ReportName() const noexcept override { return "RecordingDialog"; }

    bool passesCommands = false;
};

}  // namespace kx::test
