// The dispatcher: which message reaches which handler, with what, and what the sender gets back.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "lib/windows/window_class.h"
#include "tests/windows/framework/recording_window.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Window;
using kx::WindowClass;
using kx::test::RecordingWindow;
using kx::test::ThisLibrary;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr LRESULT kValue = 77;

enum class Result { kZero, kAnswer, kDefault };

class Dispatch : public testing::Test {
  protected:
    Dispatch() {
        window_.Create("KxFramework", "title", ThisLibrary().instance.Handle(), &window_,
                       WS_POPUP | WS_BORDER, 0, 100, 100, 300, 200);
        ShowWindow(window_.Handle(), SW_SHOWNA);
        kx::test::PumpMessages();
        window_.calls.clear();
    }

    WindowClass class_{&ThisLibrary(), "KxFramework", 0, 0, nullptr};
    RecordingWindow window_;
};

struct Row {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    const char* call;  // "" for none
    Result handled;    // what comes back when the handler answers yes, or 77
    Result declined;   // what comes back when it answers no, or 0
};

const LPARAM kPoint = MAKELPARAM(static_cast<WORD>(-3), 70);

const Row kRows[] = {
    {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(300, 40000), "OnSize 2 300 40000", Result::kZero, Result::kZero},
    {WM_TIMER, 5, 0, "OnTimer 5", Result::kZero, Result::kZero},
    {WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000), 0, "OnHScroll 5 40000", Result::kZero, Result::kZero},
    {WM_VSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), 0, "OnVScroll 3 0", Result::kZero, Result::kZero},
    {WM_KEYDOWN, VK_F5, 0x3F0001, "OnKeyDown 116 4128769", Result::kZero, Result::kDefault},
    {WM_KEYUP, VK_F5, 1, "OnKeyUp 116 1", Result::kZero, Result::kDefault},
    {WM_SETFOCUS, 0, 0, "OnSetFocus", Result::kDefault, Result::kDefault},
    {WM_KILLFOCUS, 0, 0, "OnKillFocus", Result::kDefault, Result::kDefault},
    {WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, kPoint, "OnLButtonDown 5 -3 70", Result::kZero, Result::kZero},
    {WM_LBUTTONUP, 0, kPoint, "OnLButtonUp 0 -3 70", Result::kZero, Result::kZero},
    {WM_LBUTTONDBLCLK, 1, kPoint, "OnLButtonDblClk 1 -3 70", Result::kZero, Result::kZero},
    {WM_RBUTTONDOWN, 2, kPoint, "OnRButtonDown 2 -3 70", Result::kZero, Result::kZero},
    {WM_RBUTTONUP, 0, kPoint, "OnRButtonUp 0 -3 70", Result::kZero, Result::kZero},
    {WM_RBUTTONDBLCLK, 2, kPoint, "OnRButtonDblClk 2 -3 70", Result::kZero, Result::kZero},
    {WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, kPoint, "OnMouseMove -3 70 1", Result::kZero, Result::kZero},
    {WM_MOUSEMOVE, MK_RBUTTON, kPoint, "OnMouseMove -3 70 0", Result::kZero, Result::kZero},
    {WM_EXITSIZEMOVE, 0, 0, "OnExitSizeMove", Result::kZero, Result::kZero},
    {WM_CLOSE, 0, 0, "OnClose", Result::kZero, Result::kZero},
    {WM_PALETTECHANGED, 9, 0, "OnPaletteChanged 9", Result::kZero, Result::kZero},
    {WM_QUERYNEWPALETTE, 0, 0, "OnQueryNewPalette", Result::kAnswer, Result::kZero},
    {WM_NOTIFY, 8, 0, "OnNotify 8 0", Result::kAnswer, Result::kZero},
    {WM_COMMAND, 0x30007, 4, "OnCommand 196615 4", Result::kZero, Result::kZero},
    {WM_DRAWITEM, 12, 0, "OnDrawItem 12", Result::kZero, Result::kZero},
    {WM_MEASUREITEM, 12, 0, "OnMeasureItem 12", Result::kAnswer, Result::kZero},
    {WM_CTLCOLORSTATIC, 3, 4, "OnCtlColorStatic 3 4", Result::kAnswer, Result::kZero},
    {WM_GETDLGCODE, 0, 0, "OnGetDlgCode", Result::kAnswer, Result::kDefault},
    {WM_DEVICECHANGE, 7, 0, "OnDeviceChange 7 0", Result::kDefault, Result::kDefault},
    {WM_GETTEXTLENGTH, 0, 0, "", Result::kDefault, Result::kDefault},
};

TEST_F(Dispatch, EveryMessageReachesItsHandlerAndReturnsItsResult) {
    for (const Row& row : kRows) {
        for (const bool handled : {true, false}) {
            window_.handled = handled;
            window_.value = handled ? kValue : 0;
            const LRESULT result = window_.SendMsg(row.message, row.wParam, row.lParam);
            const auto calls = window_.TakeCalls();
            const Result expected = handled ? row.handled : row.declined;
            LRESULT wanted = expected == Result::kAnswer ? kValue : 0;
            if (expected == Result::kDefault) {
                wanted = DefWindowProcA(window_.Handle(), row.message, row.wParam, row.lParam);
                window_.calls.clear();
            }
            EXPECT_EQ(result, wanted) << "message " << row.message << (handled ? " handled" : " declined");
            if (row.call[0] == '\0') {
                EXPECT_THAT(calls, IsEmpty()) << "message " << row.message;
            } else {
                EXPECT_THAT(calls, ElementsAre(row.call));
            }
        }
    }
}

TEST_F(Dispatch, PaintsOnceAndErasesByDefault) {
    const RECT part{10, 20, 50, 60};
    window_.Invalidate();
    window_.Update();
    window_.calls.clear();
    window_.Invalidate(&part);
    window_.Update();
    // The second one is the default procedure's own painting, which finds nothing left; no other follows.
    EXPECT_THAT(window_.TakeCalls(), ElementsAre("OnPaint 10 20 50 60"));
    window_.Update();
    EXPECT_THAT(window_.TakeCalls(), IsEmpty());

    const HDC context = GetDC(window_.Handle());
    window_.handled = true;
    EXPECT_EQ(window_.SendMsg(WM_ERASEBKGND, reinterpret_cast<WPARAM>(context)),
              DefWindowProcA(window_.Handle(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0));
    ReleaseDC(window_.Handle(), context);
    EXPECT_THAT(window_.TakeCalls(), ElementsAre("OnEraseBackground"));
}

// ---- the handlers' defaults

class CommandWindow final : public Window {
  public:
    LRESULT OnControlCommand(WPARAM wParam, LPARAM) override {
        control = wParam;
        return taken;
    }
    LRESULT OnMenuCommand(UINT id) override {
        menu = id;
        return 55;
    }

    LRESULT taken = 0;
    WPARAM control = 0;
    UINT menu = 0;
};

TEST(CommandDefault, SplitsCommands) {
    const struct {
        const char* name;
        WPARAM wParam;
        LRESULT taken;
        LRESULT result;
        UINT menu;
    } rows[] = {
        {"menu", MAKEWPARAM(40001, 0), 0, 55, 40001},
        {"accelerator", MAKEWPARAM(40001, 1), 0, 55, 40001},
        {"notification", MAKEWPARAM(40001, 0x300), 0, 0x300, 0},
        {"notification with code 2", MAKEWPARAM(40001, 2), 0, 2, 0},
        {"taken notification", MAKEWPARAM(40001, 0x300), 9, 9, 0},
        {"taken menu command", MAKEWPARAM(40001, 0), 9, 9, 0},
    };
    for (const auto& row : rows) {
        CommandWindow window;
        window.taken = row.taken;
        EXPECT_EQ(window.OnCommand(row.wParam, 0), row.result) << row.name;
        EXPECT_EQ(window.control, row.wParam) << row.name;
        EXPECT_EQ(window.menu, row.menu) << row.name;
    }
}

}  // namespace
