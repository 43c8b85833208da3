// The dispatchers of windows and of dialogs, by two tables of messages and four laws: each message reaches its handler, its
// sender gets the handler's result, the object may go within the handler, and an exception of the handler is reported.
#include <memory>
#include <stdexcept>

#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the sender gets: 0, the handler's answer, or what the default procedure says.
enum class Result { kZero, kHandlers, kDefault };
using enum Result;

struct WindowRow {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::vector<std::string> calls;  // one, or none
    Result handled;
    Result declined;
};

const LPARAM kPoint = MAKELPARAM(static_cast<WORD>(-3), static_cast<WORD>(-70));
RECT g_area{11, 12, 13, 14};
const LPARAM kArea = reinterpret_cast<LPARAM>(&g_area);
WINDOWPOS g_unmoved{nullptr, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | 0x1800};  // nor its client area
const LPARAM kUnmoved = reinterpret_cast<LPARAM>(&g_unmoved);

const WindowRow kWindowRows[] = {
    {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(300, 40000), {"OnSize 2 300 40000"}, kZero, kZero},
    {WM_TIMER, 5, 0, {"OnTimer 5"}, kZero, kZero},
    {WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000), 0, {"OnHScroll 5 40000"}, kZero, kZero},
    {WM_VSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), 0, {"OnVScroll 3 0"}, kZero, kZero},
    {WM_KEYDOWN, VK_F5, 0x3F0001, {"OnKeyDown 116 4128769"}, kZero, kDefault},
    {WM_KEYUP, VK_F5, 1, {"OnKeyUp 116 1"}, kZero, kDefault},
    {WM_SETFOCUS, 0, 0, {"OnSetFocus"}, kDefault, kDefault},
    {WM_KILLFOCUS, 0, 0, {"OnKillFocus"}, kDefault, kDefault},
    {WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, kPoint, {"OnLButtonDown 5 -3 -70"}, kZero, kZero},
    {WM_LBUTTONUP, 0, kPoint, {"OnLButtonUp 0 -3 -70"}, kZero, kZero},
    {WM_LBUTTONDBLCLK, 1, kPoint, {"OnLButtonDblClk 1 -3 -70"}, kZero, kZero},
    {WM_RBUTTONDOWN, 2, kPoint, {"OnRButtonDown 2 -3 -70"}, kZero, kZero},
    {WM_RBUTTONUP, 0, kPoint, {"OnRButtonUp 0 -3 -70"}, kZero, kZero},
    {WM_RBUTTONDBLCLK, 2, kPoint, {"OnRButtonDblClk 2 -3 -70"}, kZero, kZero},
    {WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, kPoint, {"OnMouseMove -3 -70 1"}, kZero, kZero},
    {WM_MOUSEMOVE, MK_RBUTTON, kPoint, {"OnMouseMove -3 -70 0"}, kZero, kZero},
    {WM_EXITSIZEMOVE, 0, 0, {"OnExitSizeMove"}, kZero, kZero},
    {WM_CLOSE, 0, 0, {"OnClose"}, kZero, kZero},
    {WM_DESTROY, 0, 0, {"OnDestroy"}, kZero, kZero},
    {WM_PAINT, 0, 0, {"OnPaint 0 0 0 0"}, kDefault, kDefault},
    {WM_ERASEBKGND, 0, 0, {"OnEraseBackground 0"}, kDefault, kDefault},
    {WM_INITMENUPOPUP, 0, 0, {"OnInitMenuPopup"}, kZero, kZero},
    {WM_PALETTECHANGED, 9, 0, {"OnPaletteChanged 9"}, kZero, kZero},
    {WM_QUERYNEWPALETTE, 0, 0, {"OnQueryNewPalette"}, kHandlers, kZero},
    {WM_NOTIFY, 8, 0, {"OnNotify 8 0"}, kHandlers, kZero},
    {WM_COMMAND, 0x30007, 4, {"OnControlCommand 196615 4"}, kZero, kZero},
    {WM_DRAWITEM, 12, 0, {"OnDrawItem 12"}, kZero, kZero},
    {WM_MEASUREITEM, 12, 0, {"OnMeasureItem 12"}, kHandlers, kZero},
    {WM_CTLCOLORSTATIC, 3, 4, {"OnCtlColorStatic 3 4"}, kHandlers, kZero},
    {WM_GETDLGCODE, 0, 0, {"OnGetDlgCode"}, kHandlers, kDefault},
    {WM_DEVICECHANGE, 7, 0, {"OnDeviceChange 7 0"}, kDefault, kDefault},
    {WM_NCHITTEST, 0, kPoint, {"OnNcHitTest 0 -3 -70"}, kHandlers, kZero},
    {WM_SETCURSOR, 5, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE), {"OnSetCursor 5 1"}, kZero, kDefault},
    {WM_WINDOWPOSCHANGED, 0, kUnmoved, {"OnWindowPosChanged"}, kZero, kDefault},
    {WM_MOVING, 0, kArea, {"OnMoving 11"}, kDefault, kDefault},
    {WM_SIZING, WMSZ_LEFT, kArea, {"OnSizing 1 11"}, kDefault, kDefault},
    {WM_GETTEXTLENGTH, 0, 0, {}, kDefault, kDefault},
};

class WindowMessages : public FrameworkTest {
  protected:
    static void Create(RecordingWindow& window) {
        const HINSTANCE module = ThisLibrary().instance.Handle();
        ASSERT_TRUE(window.Create("KxFramework", "title", module, &window, WS_CHILD | WS_VISIBLE | WS_BORDER, 0, 100, 100, 300, 200));
        Pump();
        window.calls.clear();
    }

    WindowClass class_{&ThisLibrary(), "KxFramework", 0, 0, &services_};
};

TEST_F(WindowMessages, ReachTheirHandlerAndReturnItsResult) {
    RecordingWindow window(&frame_);
    Create(window);
    for (const WindowRow& row : kWindowRows) {
        for (const bool handled : {true, false}) {
            window.handled = handled;
            const LRESULT result = window.SendMsg(row.message, row.wParam, row.lParam);
            const auto calls = window.TakeCalls();
            const Result expected = handled ? row.handled : row.declined;
            const LRESULT wanted = expected == kHandlers  ? kAnswer
                                   : expected == kDefault ? DefWindowProcA(window.Handle(), row.message, row.wParam, row.lParam)
                                                          : 0;
            window.calls.clear();
            EXPECT_EQ(result, wanted) << "message " << row.message << (handled ? " handled" : " declined");
            EXPECT_EQ(calls, row.calls);
        }
    }
}

TEST_F(WindowMessages, MayEndTheirWindowAndAreReportedWhenTheirHandlerThrows) {
    for (const WindowRow& row : kWindowRows) {
        if (row.calls.empty()) {
            continue;
        }
        Parent parent;
        auto* const window = Watched(new RecordingWindow(&parent));
        Create(*window);
        window->onCall = [] { throw std::runtime_error("handler"); };
        EXPECT_EQ(window->SendMsg(row.message, row.wParam, row.lParam), 0) << row.message;
        EXPECT_EQ(window->TakeCalls(), row.calls);
        EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"KxFramework\"")) << row.message;
        window->dies = true;
        window->onCall = [&parent] { parent.Destroy(); };
        SendMessageA(window->Handle(), row.message, row.wParam, row.lParam);
        EXPECT_EQ(Deletions(window), 1) << row.message;
        EXPECT_TRUE(IsUntouched(window)) << row.message;
    }
}

TEST_F(WindowMessages, PaintOnceAlsoWhenItFails) {
    RecordingWindow window(&frame_);
    Create(window);
    window.onCall = [] { throw 5; };
    const RECT part{10, 20, 50, 60};
    window.Invalidate(&part);
    window.Update();
    window.Update();
    EXPECT_THAT(window.TakeCalls(), ElementsAre("OnPaint 10 20 50 60"));
    window.onCall = nullptr;
}

TEST_F(WindowMessages, OfACommandGoToTheControlFirst) {
    const struct {
        WPARAM wParam;
        bool taken;
        LRESULT result;
        std::vector<std::string> calls;
    } rows[] = {{MAKEWPARAM(7, 0), false, 0, {"OnControlCommand 7 0", "OnMenuCommand 7"}},
                {MAKEWPARAM(7, 1), false, 0, {"OnControlCommand 65543 0", "OnMenuCommand 7"}},
                {MAKEWPARAM(7, 2), false, 2, {"OnControlCommand 131079 0"}},
                {MAKEWPARAM(7, 0), true, kAnswer, {"OnControlCommand 7 0"}}};
    for (const auto& row : rows) {
        RecordingWindow window;
        window.handled = row.taken;
        EXPECT_EQ(window.OnCommand(row.wParam, 0), row.result) << row.wParam;
        EXPECT_EQ(window.calls, row.calls);
    }
}

// ---- dialogs

constexpr LRESULT kUntouched = 5;
NMHDR g_header{nullptr, 0, 3};

const struct DialogRow {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::vector<std::string> calls;
    INT_PTR handled;        // what the dialog procedure returns then
    LRESULT handledResult;  // and the message's result
    INT_PTR declined;
} kDialogRows[] = {
    {WM_COMMAND, 0x12345, 0, {"OnDialogCommand 74565"}, TRUE, kUntouched, FALSE},
    {WM_NOTIFY, 40001, reinterpret_cast<LPARAM>(&g_header), {"OnDialogNotify 40001 3"}, TRUE, kAnswer, FALSE},
    {WM_DRAWITEM, 40001, 0, {"OnDrawItem 40001"}, TRUE, 1, FALSE},
    {WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(300, 40000), {"OnSize 1 300 40000"}, FALSE, kUntouched, FALSE},
    {WM_HOTKEY, 0xC001, 9, {"OnDialogHotKey 49153 9"}, FALSE, kUntouched, FALSE},
    {WM_ERASEBKGND, 6, 0, {"OnEraseBackground 6"}, TRUE, 1, FALSE},
    {WM_CTLCOLORSTATIC, 3, 4, {"OnCtlColorStatic 3 4"}, kAnswer, kUntouched, FALSE},
    {WM_MEASUREITEM, 40001, 0, {"OnMeasureItem 40001"}, FALSE, kUntouched, FALSE},
    {WM_CLOSE, 0, 0, {"OnClose"}, FALSE, kUntouched, FALSE},
    {WM_DEVICECHANGE, 7, 8, {"OnDeviceChange 7 8"}, FALSE, kUntouched, FALSE},
    {WM_MOUSEMOVE, 0, 0, {}, FALSE, kUntouched, FALSE},
    {WM_TIMER, 1, 0, {}, FALSE, kUntouched, FALSE},
};

class DialogMessages : public FrameworkTest {
  protected:
    void Create(RecordingDialog& dialog) {
        dialog.CreateModeless(IDD_PLAIN_CHILD, &dialog);
        Pump();
        dialog.calls.clear();
    }
    static INT_PTR Call(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        return reinterpret_cast<DLGPROC>(GetWindowLongA(dialog, DWLP_DLGPROC))(dialog, message, wParam, lParam);
    }
};

TEST_F(DialogMessages, ReachTheirHandlerAndReturnItsResult) {
    RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, &services_);
    Create(dialog);
    for (const DialogRow& row : kDialogRows) {
        for (const bool handled : {true, false}) {
            dialog.handled = handled;
            dialog.SetMsgResult(kUntouched);
            EXPECT_EQ(Call(dialog.Handle(), row.message, row.wParam, row.lParam), handled ? row.handled : row.declined)
                << "message " << row.message;
            EXPECT_EQ(GetWindowLongA(dialog.Handle(), DWLP_MSGRESULT), handled ? row.handledResult : kUntouched)
                << "message " << row.message;
            EXPECT_EQ(dialog.TakeCalls(), row.calls);
        }
    }
}

TEST_F(DialogMessages, MayEndTheirDialogAndAreReportedWhenTheirHandlerThrows) {
    for (const DialogRow& row : kDialogRows) {
        if (row.calls.empty()) {
            continue;
        }
        Parent parent;
        auto* const dialog = Watched(new RecordingDialog(ThisLibrary(), &parent, nullptr, &services_));
        Create(*dialog);
        dialog->onCall = [] { throw 5; };
        EXPECT_EQ(Call(dialog->Handle(), row.message, row.wParam, row.lParam), 0) << row.message;
        EXPECT_THAT(Reports(), ElementsAre("LOGEXCEPTION \"RecordingDialog\"")) << row.message;
        dialog->handled = true;
        dialog->dies = true;
        dialog->onCall = [&parent] { parent.Destroy(); };
        Call(dialog->Handle(), row.message, row.wParam, row.lParam);
        EXPECT_EQ(Deletions(dialog), 1) << row.message;
        EXPECT_TRUE(IsUntouched(dialog)) << row.message;
    }
}

TEST_F(DialogMessages, WithoutAnObjectOnlyItemHeightsAreAnswered) {
    RecordingDialog dialog(ThisLibrary(), &frame_, nullptr, &services_);
    Create(dialog);
    const HWND window = dialog.Handle();
    dialog.Attach(nullptr);
    MEASUREITEMSTRUCT item{};
    EXPECT_EQ(SendMessageA(window, WM_MEASUREITEM, 40001, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(item.itemHeight, 150u);
    for (const UINT message : {WM_MEASUREITEM, WM_INITDIALOG, WM_COMMAND}) {
        EXPECT_EQ(Call(window, message, IDOK, 0), FALSE);
    }
    EXPECT_THAT(dialog.calls, IsEmpty());
}

}  // namespace
}  // namespace kx::test
