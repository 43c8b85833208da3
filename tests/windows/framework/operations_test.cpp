// The operations of a window that no pane calls, by one table of what each shows, sends and reads back; the timer; and what
// the handlers do where a class leaves them alone.
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

// A child of a frame with both scroll bars; it remembers the last message that somebody sent it.
class HeardWindow final : public Window {
  public:
    using Window::Window;
    ~HeardWindow() { Destroy(); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool heard = message == WM_COMMAND || message == WM_DRAWITEM || message >= WM_USER;
        if (heard) {
            lastMessage = static_cast<long>(message * 100 + wParam * 10) + lParam;
        }
        return heard ? 21 : Window::WindowProc(message, wParam, lParam);
    }
    bool IsCommandEnabled(UINT id) override { return id == 40001; }
    bool IsCommandChecked(UINT id) override { return id == 40002; }
    void OnTimer(UINT_PTR) override { ++ticks; }

    long lastMessage = 0;
    int ticks = 0;
};

class Operations : public FrameworkTest {
  protected:
    Operations() { child_.Create("KxFramework", "", GetModuleHandleA(nullptr), &child_, kStyle, 0, 10, 20, 100, 50); }

    static constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL;

    WindowClass class_{&ThisLibrary(), "KxFramework", 0, 0, &services_};
    HeardWindow child_{&frame_};
};

bool Has(const Window& window, LONG style) { return (GetWindowLongA(window.Handle(), GWL_STYLE) & style) == style; }

// In the parent's window, or on the screen.
bool IsAt(const Window& window, int left, int top, int width, int height) {
    RECT area{};
    window.GetWindowRect(area);
    MapWindowPoints(nullptr, window.ParentHandle(), reinterpret_cast<POINT*>(&area), 2);
    const RECT expected{left, top, left + width, top + height};
    return EqualRect(&area, &expected) != FALSE;
}

bool Shows(const Window& window, const char* text) { return TextOf(window.Handle()) == text; }

// The message's number, and a digit for each parameter, of the last one heard.
long Heard(Window& window) {
    Pump();
    return static_cast<HeardWindow&>(window).lastMessage;
}

TEST_F(Operations, ThatNoPaneCallsShowSendAndReadBack) {
    using W = Window;
    const struct {
        const char* name;
        bool (*works)(W& w);
    } rows[] = {
        {"ShowNormal", [](W& w) { return w.Hide() && !w.ShowNormal() && Has(w, WS_VISIBLE); }},
        {"CenterHorizontally", [](W& w) { return w.CenterHorizontally() && IsAt(w, 270, 20, 100, 50); }},
        {"CenterVertically", [](W& w) { return w.CenterVertically() && IsAt(w, 270, 215, 100, 50); }},
        {"ToTop", [](W& w) { return w.ToTop() && GetTopWindow(w.ParentHandle()) == w.Handle(); }},
        {"ToBottom", [](W& w) { return w.ToBottom() && GetWindow(w.Handle(), GW_HWNDNEXT) == nullptr; }},
        {"BringToTop", [](W& w) { return w.BringToTop() && GetTopWindow(w.ParentHandle()) == w.Handle(); }},
        {"SetMinimizeBox", [](W& w) { return w.SetMinimizeBox(true) && Has(w, WS_MINIMIZEBOX); }},
        {"SetSystemMenu", [](W& w) { return w.SetSystemMenu(true) && Has(w, WS_SYSMENU); }},
        {"SetThickFrame", [](W& w) { return w.SetThickFrame(true) && Has(w, WS_THICKFRAME); }},
        {"SetThickFrame off", [](W& w) { return w.SetThickFrame(false) && !Has(w, WS_THICKFRAME); }},
        {"SetCaption", [](W& w) { return w.SetCaption(true) && Has(w, WS_CAPTION); }},
        {"SetStaticEdge", [](W& w) { return w.SetStaticEdge(true) && GetWindowLongA(w.Handle(), GWL_EXSTYLE) == WS_EX_STATICEDGE; }},
        {"SetStyles", [](W& w) { return w.SetStyles(kStyle, 0) && GetWindowLongA(w.Handle(), GWL_EXSTYLE) == 0 && !Has(w, WS_CAPTION); }},
        {"HasScrollBar", [](W& w) { return w.HasScrollBar(true) && w.HasScrollBar(false); }},
        // What is meant for one bar would show in the other one.
        {"Range", [](W& w) { return w.SetVRange(5, 100), w.SetHRange(6, 200), w.GetVMinimum() == 5 && w.GetHMinimum() == 6; }},
        {"Page", [](W& w) { return w.SetVPage(9), w.SetHPage(8), w.GetVPage() == 9 && w.GetHPage() == 8; }},
        {"Position", [](W& w) { return w.SetVPosition(50, false) == 50 && w.SetHPosition(500, true) == 193 && w.GetVPosition() == 50; }},
        {"numbers", [](W& w) { return w.SetUnsigned(4000000000) && Shows(w, "4000000000") && w.SetTenths(127) && Shows(w, "12.7"); }},
        {"SetFixed", [](W& w) { return w.SetFixed(2.25, 1) && Shows(w, "2.2"); }},
        {"SetScaled", [](W& w) { return w.SetScaled(1, 1000, 2, 1234) && Shows(w, "1.23"); }},
        {"SetDuration", [](W& w) { return w.SetDuration(3723000) && Shows(w, "1:02:03"); }},
        {"GetHexText", [](W& w) { return w.SetHex(0xBEEF) && Shows(w, "BEEF") && w.GetHexText() == 0xBEEF; }},
        {"GetNumberText", [](W& w) { return w.SetText((std::string(62, ' ') + "1234").c_str()) && w.GetNumberText() == 12; }},
        {"PostCommand", [](W& w) { return w.PostCommand(5, 6) && Heard(w) == WM_COMMAND * 100 + 56; }},
        {"SendCommand", [](W& w) { return w.SendCommand(7, 8) == 21 && Heard(w) == WM_COMMAND * 100 + 78; }},
        {"SendDrawItem", [](W& w) { return w.SendDrawItem(9, nullptr) == 21 && Heard(w) == WM_DRAWITEM * 100 + 90; }},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(row.works(child_)) << row.name;
    }
}

TEST_F(Operations, TickUntilTheTimerIsStoppedOrItsObjectGone) {
    ASSERT_TRUE(child_.StartTimer(10));
    EXPECT_TRUE(PumpUntil(nullptr, [&] { return child_.ticks > 0; }));
    child_.StopTimer();
    child_.ticks = 0;
    {
        HeardWindow gone(nullptr);
        gone.Create("KxFramework", "", GetModuleHandleA(nullptr), &gone, WS_POPUP, 0, 0, 0, 9, 9);
        ASSERT_TRUE(gone.StartTimer(10));
        Sleep(30);
        // A tick is due, and its object is not there any more.
    }
    EXPECT_FALSE(PumpUntil(
        nullptr, [&] { return child_.ticks > 0; }, 50));
}

TEST_F(Operations, EnableAndCheckTheItemsOfAMenu) {
    const HMENU menu = CreatePopupMenu();
    for (const UINT id : {40001u, 40002u}) {
        AppendMenuA(menu, MF_STRING, id, "voce");
    }
    child_.SendMsg(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu));
    EXPECT_EQ(GetMenuState(menu, 40001, MF_BYCOMMAND), UINT{MF_ENABLED | MF_UNCHECKED});
    EXPECT_EQ(GetMenuState(menu, 40002, MF_BYCOMMAND), UINT{MF_GRAYED | MF_CHECKED});
    DestroyMenu(menu);
}

TEST(WindowWithoutHandle, DoesNothing) {
    Window window;
    EXPECT_FALSE(window.Create("no such class", "", nullptr, nullptr, WS_POPUP, 0, 0, 0, 1, 1));
    EXPECT_FALSE(window.IsValid() || window.PostUser(1, 2) || window.PostToParent(WM_USER, 1, 2) || window.StartTimer(10));
    EXPECT_FALSE(window.Destroy() || window.Invalidate() || window.HasFocus() || window.UnregisterHotKey(1));
    EXPECT_EQ(window.RegisterHotKey("kx", 0, VK_F5), 0);
    char text[] = "old";
    EXPECT_EQ(window.GetText(text, sizeof text), 0);
    EXPECT_STREQ(text, "");
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_REMOVE)) << "the thread's queue gets nothing";
}

}  // namespace
}  // namespace kx::test
