// A window that takes down which of its handlers is called, with what.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "lib/windows/device_context.h"
#include "lib/windows/window.h"

namespace kx::test {

// Every handler that answers yes or no answers `handled`, every one with a value answers `value`.
class RecordingWindow : public Window {
  public:
    using Window::Window;
    ~RecordingWindow() { Destroy(); }

    bool handled = false;
    LRESULT value = 0;
    bool throws = false;
    std::vector<std::string> calls;

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    void OnPaint(PaintContext& context) override {
        const RECT& area = context.UpdateRect();
        Note("OnPaint", area.left, area.top, area.right, area.bottom);
    }
    bool OnEraseBackground(DeviceContext&) override { return Handled("OnEraseBackground"); }
    void OnSize(UINT type, int width, int height) override { Note("OnSize", type, width, height); }
    void OnClose() override { Note("OnClose"); }
    void OnDestroy() override { Note("OnDestroy"); }
    LRESULT OnNotify(WPARAM id, NMHDR* header) override { return Value("OnNotify", id, header); }
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam) override { return Value("OnCommand", wParam, lParam); }
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
    void OnMoving(RECT* area) override { Note("OnMoving", area); }
    void OnSizing(UINT edge, RECT* area) override { Note("OnSizing", edge, area); }
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT*) override { return Value("OnMeasureItem", id); }
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT*) override { return Handled("OnDrawItem", id); }
    HBRUSH OnCtlColorStatic(HDC context, HWND control) override {
        return reinterpret_cast<HBRUSH>(Value("OnCtlColorStatic", context, control));
    }
    void OnExitSizeMove() override { Note("OnExitSizeMove"); }
    bool OnGetDlgCode(LRESULT& code) override {
        code = value;
        return Handled("OnGetDlgCode");
    }
    void OnDeviceChange(UINT event, LPARAM data) override { Note("OnDeviceChange", event, data); }

  private:
    template <class Argument>
    static std::string Text(Argument argument) {
        if constexpr (std::is_pointer_v<Argument>) {
            return std::to_string(reinterpret_cast<LONG_PTR>(argument));
        } else {
            return std::to_string(argument);
        }
    }
    template <class... Arguments>
    void Note(const char* handler, Arguments... arguments) {
        std::string line = handler;
        ((line += ' ', line += Text(arguments)), ...);
        calls.push_back(line);
        if (throws) {
            throw std::runtime_error(line);
        }
    }
    template <class... Arguments>
    bool Handled(const char* handler, Arguments... arguments) {
        Note(handler, arguments...);
        return handled;
    }
    template <class... Arguments>
    LRESULT Value(const char* handler, Arguments... arguments) {
        Note(handler, arguments...);
        return value;
    }
};

}  // namespace kx::test
