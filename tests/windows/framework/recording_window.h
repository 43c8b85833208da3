// A window that takes down which of its handlers is called, with what.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

    void OnPaint(PaintContext& context) override;
    bool OnEraseBackground(DeviceContext& context) override;
    void OnInitMenuPopup(Menu& menu) override;
    void OnSize(UINT sizeType, int width, int height) override;
    void OnClose() override;
    void OnDestroy() override;
    LRESULT OnNotify(WPARAM id, NMHDR* header) override;
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam) override;
    bool OnKeyDown(UINT virtualKey, LPARAM keyData) override;
    bool OnKeyUp(UINT virtualKey, LPARAM keyData) override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnTimer(UINT_PTR idOrTime) override;
    LRESULT OnQueryNewPalette() override;
    void OnPaletteChanged(HWND changedBy) override;
    void OnHScroll(int code, int position) override;
    void OnVScroll(int code, int position) override;
    void OnLButtonDown(UINT keys, int x, int y) override;
    void OnLButtonUp(UINT keys, int x, int y) override;
    void OnLButtonDblClk(UINT keys, int x, int y) override;
    void OnRButtonDown(UINT keys, int x, int y) override;
    void OnRButtonUp(UINT keys, int x, int y) override;
    void OnRButtonDblClk(UINT keys, int x, int y) override;
    void OnMouseMove(int x, int y, bool leftButtonDown) override;
    bool OnSetCursor(HWND window, UINT hitTest) override;
    LRESULT OnNcHitTest(LRESULT defaultResult, int x, int y) override;
    bool OnWindowPosChanged(WINDOWPOS* position) override;
    void OnMoving(RECT* area) override;
    void OnSizing(UINT edge, RECT* area) override;
    LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) override;
    bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item) override;
    HBRUSH OnCtlColorStatic(HDC context, HWND control) override;
    void OnExitSizeMove() override;
    bool OnGetDlgCode(LRESULT& code) override;
    void OnDeviceChange(UINT event, LPARAM data) override;

  private:
    template <class... Arguments>
    void Note(const char* handler, Arguments... arguments) {
        std::string line = handler;
        ((line += ' ', line += std::to_string(static_cast<long long>(arguments))), ...);
        calls.push_back(line);
        if (throws) {
            throw std::runtime_error(line);
        }
    }
};

}  // namespace kx::test
