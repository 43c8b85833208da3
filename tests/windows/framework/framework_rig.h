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
    HWND NewItem(const char* className, DWORD style, std::uint32_t id) const {
        return CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | style, 5, 5, 100, 100, Handle(),
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

// What every handler with an answer gives when it handles its message; else 0, false or nothing.
constexpr LRESULT kAnswer = 77;

// Takes down each call of a handler with its arguments and answers as `handled` says; what it does besides is `onCall`.
// Nothing of it is touched once that has been called.
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
    bool dies = false;  // the object was made with new and ends with its window
    std::function<void()> onCall;
    std::vector<std::string> calls;
    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    bool OnEraseBackground(DeviceContext& context) override { return Note("OnEraseBackground", context.Handle()) != 0; }
    void OnSize(UINT type, int width, int height) override { Note("OnSize", type, width, height); }
    void OnClose() override { Note("OnClose"); }
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT*) override { return Note("OnMeasureItem", id); }
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT*) override { return Note("OnDrawItem", id) != 0; }
    HBRUSH OnCtlColorStatic(HDC dc, HWND control) override { return reinterpret_cast<HBRUSH>(Note("OnCtlColorStatic", dc, control)); }
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
    LRESULT Note(const char* handler, Arguments... arguments) {
        std::string line = handler;
        ((line += ' ', line += Text(arguments)), ...);
        calls.push_back(line);
        const LRESULT answer = handled ? kAnswer : 0;
        if (const auto act = onCall) {
            act();
        }
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
    LRESULT OnNotify(WPARAM id, NMHDR* header) override { return Note("OnNotify", id, header); }
    LRESULT OnControlCommand(WPARAM wParam, LPARAM lParam) override { return Note("OnControlCommand", wParam, lParam); }
    LRESULT OnMenuCommand(UINT id) override { return Note("OnMenuCommand", id); }
    bool OnKeyDown(UINT key, LPARAM data) override { return Note("OnKeyDown", key, data) != 0; }
    bool OnKeyUp(UINT key, LPARAM data) override { return Note("OnKeyUp", key, data) != 0; }
    void OnSetFocus() override { Note("OnSetFocus"); }
    void OnKillFocus() override { Note("OnKillFocus"); }
    void OnTimer(UINT_PTR id) override { Note("OnTimer", id); }
    LRESULT OnQueryNewPalette() override { return Note("OnQueryNewPalette"); }
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
    bool OnSetCursor(HWND window, UINT hit) override { return Note("OnSetCursor", window, hit) != 0; }
    LRESULT OnNcHitTest(LRESULT hit, int x, int y) override { return Note("OnNcHitTest", hit, x, y); }
    bool OnWindowPosChanged(WINDOWPOS*) override { return Note("OnWindowPosChanged") != 0; }
    void OnMoving(RECT* area) override { Note("OnMoving", area->left); }
    void OnSizing(UINT edge, RECT* area) override { Note("OnSizing", edge, area->left); }
    void OnExitSizeMove() override { Note("OnExitSizeMove"); }
    bool OnGetDlgCode(LRESULT& code) override { return (code = Note("OnGetDlgCode")) != 0; }
};

class RecordingDialog final : public Noting<RecordingDialog, Dialog> {
  public:
    using Noting::Noting;

    std::function<bool()> onInit;
    bool passesCommands = false;

    bool OnInitDialog() override { return onInit ? onInit() : true; }
    INT_PTR OnDialogCommand(WPARAM wParam) override {
        return passesCommands ? Dialog::OnDialogCommand(wParam) : Note("OnDialogCommand", wParam) != 0;
    }
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override {
        result = kAnswer;
        return Note("OnDialogNotify", id, header->code) != 0;
    }
    void OnDialogHotKey(int id, LPARAM lParam) override { Note("OnDialogHotKey", id, lParam); }
    const char* ReportName() const noexcept override { return "RecordingDialog"; }
};

}  // namespace kx::test
