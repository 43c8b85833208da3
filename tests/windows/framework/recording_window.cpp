#include "tests/windows/framework/recording_window.h"

#include "lib/windows/device_context.h"
#include "lib/windows/menu.h"

namespace kx::test {
namespace {

LONG_PTR Address(const void* pointer) {
    return reinterpret_cast<LONG_PTR>(pointer);
}

}  // namespace

void RecordingWindow::OnPaint(PaintContext& context) {
    const RECT& area = context.UpdateRect();
    Note("OnPaint", area.left, area.top, area.right, area.bottom);
}
bool RecordingWindow::OnEraseBackground(DeviceContext& context) {
    Note("OnEraseBackground", context.Handle() != nullptr);
    return handled;
}
void RecordingWindow::OnInitMenuPopup(Menu& menu) {
    Note("OnInitMenuPopup", Address(menu.Handle()));
}
void RecordingWindow::OnSize(UINT sizeType, int width, int height) {
    Note("OnSize", sizeType, width, height);
}
void RecordingWindow::OnClose() {
    Note("OnClose");
}
void RecordingWindow::OnDestroy() {
    Note("OnDestroy");
}
LRESULT RecordingWindow::OnNotify(WPARAM id, NMHDR* header) {
    Note("OnNotify", id, Address(header));
    return value;
}
LRESULT RecordingWindow::OnCommand(WPARAM wParam, LPARAM lParam) {
    Note("OnCommand", wParam, lParam);
    return value;
}
bool RecordingWindow::OnKeyDown(UINT virtualKey, LPARAM keyData) {
    Note("OnKeyDown", virtualKey, keyData);
    return handled;
}
bool RecordingWindow::OnKeyUp(UINT virtualKey, LPARAM keyData) {
    Note("OnKeyUp", virtualKey, keyData);
    return handled;
}
void RecordingWindow::OnSetFocus() {
    Note("OnSetFocus");
}
void RecordingWindow::OnKillFocus() {
    Note("OnKillFocus");
}
void RecordingWindow::OnTimer(UINT_PTR idOrTime) {
    Note("OnTimer", idOrTime);
}
LRESULT RecordingWindow::OnQueryNewPalette() {
    Note("OnQueryNewPalette");
    return value;
}
void RecordingWindow::OnPaletteChanged(HWND changedBy) {
    Note("OnPaletteChanged", Address(changedBy));
}
void RecordingWindow::OnHScroll(int code, int position) {
    Note("OnHScroll", code, position);
}
void RecordingWindow::OnVScroll(int code, int position) {
    Note("OnVScroll", code, position);
}
void RecordingWindow::OnLButtonDown(UINT keys, int x, int y) {
    Note("OnLButtonDown", keys, x, y);
}
void RecordingWindow::OnLButtonUp(UINT keys, int x, int y) {
    Note("OnLButtonUp", keys, x, y);
}
void RecordingWindow::OnLButtonDblClk(UINT keys, int x, int y) {
    Note("OnLButtonDblClk", keys, x, y);
}
void RecordingWindow::OnRButtonDown(UINT keys, int x, int y) {
    Note("OnRButtonDown", keys, x, y);
}
void RecordingWindow::OnRButtonUp(UINT keys, int x, int y) {
    Note("OnRButtonUp", keys, x, y);
}
void RecordingWindow::OnRButtonDblClk(UINT keys, int x, int y) {
    Note("OnRButtonDblClk", keys, x, y);
}
void RecordingWindow::OnMouseMove(int x, int y, bool leftButtonDown) {
    Note("OnMouseMove", x, y, leftButtonDown);
}
bool RecordingWindow::OnSetCursor(HWND window, UINT hitTest) {
    Note("OnSetCursor", Address(window), hitTest);
    return handled;
}
LRESULT RecordingWindow::OnNcHitTest(LRESULT defaultResult, int x, int y) {
    Note("OnNcHitTest", defaultResult, x, y);
    return value;
}
bool RecordingWindow::OnWindowPosChanged(WINDOWPOS* position) {
    Note("OnWindowPosChanged", Address(position));
    return handled;
}
void RecordingWindow::OnMoving(RECT* area) {
    Note("OnMoving", Address(area));
}
void RecordingWindow::OnSizing(UINT edge, RECT* area) {
    Note("OnSizing", edge, Address(area));
}
LRESULT RecordingWindow::OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item) {
    Note("OnMeasureItem", id, Address(item));
    return value;
}
bool RecordingWindow::OnDrawItem(UINT id, DRAWITEMSTRUCT* item) {
    Note("OnDrawItem", id, Address(item));
    return handled;
}
HBRUSH RecordingWindow::OnCtlColorStatic(HDC context, HWND control) {
    Note("OnCtlColorStatic", Address(context), Address(control));
    return reinterpret_cast<HBRUSH>(value);
}
void RecordingWindow::OnExitSizeMove() {
    Note("OnExitSizeMove");
}
bool RecordingWindow::OnGetDlgCode(LRESULT& code) {
    Note("OnGetDlgCode");
    code = value;
    return handled;
}
void RecordingWindow::OnDeviceChange(UINT event, LPARAM data) {
    Note("OnDeviceChange", event, data);
}

}  // namespace kx::test
