// The operations of a window on a real one, and what its handlers do where a class leaves them alone.
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

// A child of a frame with both scroll bars; it remembers the last message that somebody sent it.
class HeardWindow final : public Window {
  public:
    using Window::Window;
    ~HeardWindow() { Destroy(); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool heard = message == WM_COMMAND || message == WM_NOTIFY || message == WM_DRAWITEM || message >= WM_USER;
        if (heard) {
            lastMessage = static_cast<long>(message * 100 + wParam * 10) + lParam;
        }
        return heard && message != WM_NOTIFY ? 21 : Window::WindowProc(message, wParam, lParam);
    }
    bool GetToolTipText(UINT_PTR id, HINSTANCE& module, const char*& text) override {
        module = GetModuleHandleA(nullptr);
        text = "Aiuto";
        return id == 7;
    }
    bool IsCommandEnabled(UINT id) override { return id == 40001; }
    bool IsCommandChecked(UINT id) override { return id == 40002; }

    long lastMessage = 0;
};

class TickingWindow final : public Window {
  public:
    using Window::Window;
    void OnTimer(UINT_PTR time) override {
        ++ticks;
        lastTime = time;
    }
    int ticks = 0;
    UINT_PTR lastTime = 0;
};

class Operations : public FrameworkTest {
  protected:
    Operations() { child_.Create("KxFramework", "", GetModuleHandleA(nullptr), &child_, kStyle, 0, 10, 20, 100, 50); }

    // A window's place in the frame's client area.
    RECT Place(const Window& window) const {
        RECT area{};
        window.GetWindowRect(area);
        MapWindowPoints(nullptr, frame_.Handle(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    static constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL;

    WindowClass class_{&ThisLibrary(), "KxFramework", 0, 0, &services_};
    HeardWindow child_{&frame_};
};

template <long kBits>
long Bits(HWND window) {
    return GetWindowLongA(window, GWL_STYLE) & kBits;
}
long StaticEdge(HWND window) { return GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_STATICEDGE; }

// left, top, width and height in the parent, three digits each of the pair that is asked for.
template <int kFirst>
long Edges(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&area), 2);
    const LONG edges[] = {area.left, area.top, area.right - area.left, area.bottom - area.top};
    return edges[kFirst] * 1000 + edges[kFirst + 1];
}
long IsTop(HWND window) { return GetTopWindow(GetParent(window)) == window; }
long IsBottom(HWND window) { return GetWindow(window, GW_HWNDNEXT) == nullptr; }
long IsFocus(HWND window) { return GetFocus() == window; }
long IsCapture(HWND window) { return GetCapture() == window; }

SCROLLINFO Scroll(HWND window, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, bar, &info);
    return info;
}
template <int kBar>
long Maximum(HWND window) {
    return Scroll(window, kBar).nMax;
}
template <int kBar>
long Page(HWND window) {
    return static_cast<long>(Scroll(window, kBar).nPage);
}
template <int kBar>
long Position(HWND window) {
    return Scroll(window, kBar).nPos;
}

// message, wParam and lParam of the last one, two digits for the parameters.
long Heard(HWND window) {
    Pump();
    return static_cast<HeardWindow*>(Window::FromHandle(window))->lastMessage;
}

TEST_F(Operations, ChangeWhatTheSystemShows) {
    using W = Window;
    const struct {
        const char* name;
        long (*call)(W& window);
        long returned;
        long (*seen)(HWND window);
        long state;
    } rows[] = {
        {"Hide", [](W& w) { return w.Hide() + 0L; }, 1, Bits<WS_VISIBLE>, 0},
        {"Show", [](W& w) { return w.Show() + 0L; }, 0, Bits<WS_VISIBLE>, WS_VISIBLE},
        {"ShowNormal", [](W& w) { return w.Hide() * 2L + w.ShowNormal(); }, 2, Bits<WS_VISIBLE>, WS_VISIBLE},
        {"Enable off", [](W& w) { return w.Enable(false) + 0L; }, 0, Bits<WS_DISABLED>, WS_DISABLED},
        {"Enable on", [](W& w) { return w.Enable(true) + 0L; }, 1, Bits<WS_DISABLED>, 0},
        {"MoveTo", [](W& w) { return w.MoveTo(30, 40, 120, 60) + 0L; }, 1, Edges<0>, 30040},
        {"MoveTo", [](W& w) { return w.MoveTo(30, 40, 120, 60) + 0L; }, 1, Edges<2>, 120060},
        {"Resize", [](W& w) { return w.Resize(100, 50) + 0L; }, 1, Edges<2>, 100050},
        {"Resize", [](W& w) { return w.Resize(100, 50) + 0L; }, 1, Edges<0>, 30040},
        {"ToTop", [](W& w) { return w.ToTop() + 0L; }, 1, IsTop, 1},
        {"ToBottom", [](W& w) { return w.ToBottom() + 0L; }, 1, IsBottom, 1},
        {"BringToTop", [](W& w) { return w.BringToTop() + 0L; }, 1, IsTop, 1},
        {"SetMinimizeBox", [](W& w) { return w.SetMinimizeBox(true) + 0L; }, 1, Bits<WS_MINIMIZEBOX>, WS_MINIMIZEBOX},
        {"SetSystemMenu", [](W& w) { return w.SetSystemMenu(true) + 0L; }, 1, Bits<WS_SYSMENU>, WS_SYSMENU},
        {"SetThickFrame on", [](W& w) { return w.SetThickFrame(true) + 0L; }, 1, Bits<WS_THICKFRAME>, WS_THICKFRAME},
        {"SetThickFrame off", [](W& w) { return w.SetThickFrame(false) + 0L; }, 1, Bits<WS_THICKFRAME>, 0},
        {"SetCaption", [](W& w) { return w.SetCaption(true) + 0L; }, 1, Bits<WS_CAPTION>, WS_CAPTION},
        {"SetStaticEdge", [](W& w) { return w.SetStaticEdge(true) + 0L; }, 1, StaticEdge, WS_EX_STATICEDGE},
        {"SetStyles", [](W& w) { return w.SetStyles(kStyle, 0) + 0L; }, 1, Bits<WS_CAPTION>, 0},
        {"SetFocus", [](W& w) { return w.SetFocus(), w.HasFocus() + 0L; }, 1, IsFocus, 1},
        {"SetCapture", [](W& w) { return w.SetCapture(), 0L; }, 0, IsCapture, 1},
        {"ReleaseCapture", [](W&) { return W::ReleaseCapture() + 0L; }, 1, IsCapture, 0},
        {"HasScrollBar", [](W& w) { return w.HasScrollBar(true) * 2L + w.HasScrollBar(false); }, 3, Bits<WS_VSCROLL>, WS_VSCROLL},
        {"SetVRange", [](W& w) { return w.SetVRange(5, 100), w.GetVMinimum() + 0L; }, 5, Maximum<SB_VERT>, 100},
        {"SetHRange", [](W& w) { return w.SetHRange(6, 200), w.GetHMinimum() + 0L; }, 6, Maximum<SB_HORZ>, 200},
        {"SetVPage", [](W& w) { return w.SetVPage(9), static_cast<long>(w.GetVPage()); }, 9, Page<SB_VERT>, 9},
        {"SetHPage", [](W& w) { return w.SetHPage(8), static_cast<long>(w.GetHPage()); }, 8, Page<SB_HORZ>, 8},
        {"SetVPosition", [](W& w) { return w.SetVPosition(50, false), w.GetVPosition() + 0L; }, 50, Position<SB_VERT>, 50},
        {"SetHPosition", [](W& w) { return w.SetHPosition(500, true), w.GetHPosition() + 0L; }, 193, Position<SB_HORZ>, 193},
        {"PostUser", [](W& w) { return w.PostUser(3, 4) + 0L; }, 1, Heard, WM_USER * 100 + 34},
        {"PostCommand", [](W& w) { return w.PostCommand(5, 6) + 0L; }, 1, Heard, WM_COMMAND * 100 + 56},
        {"SendCommand", [](W& w) { return w.SendCommand(7, 8) + 0L; }, 21, Heard, WM_COMMAND * 100 + 78},
        {"SendDrawItem", [](W& w) { return w.SendDrawItem(9, nullptr) + 0L; }, 21, Heard, WM_DRAWITEM * 100 + 90},
        {"SendNotify", [](W& w) { return w.SendNotify(9, nullptr) + 0L; }, 0, Heard, WM_NOTIFY * 100 + 90},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.call(child_), row.returned) << row.name;
        EXPECT_EQ(row.seen(child_.Handle()), row.state) << row.name;
    }
}

TEST_F(Operations, CentreOverTheParentsWindow) {
    RECT outer{};
    frame_.GetWindowRect(outer);
    child_.MoveTo(30, 40, 100, 50);
    ASSERT_TRUE(child_.CenterHorizontally());
    RECT own{};
    child_.GetWindowRect(own);
    EXPECT_EQ(own.left - outer.left, (640 - 100) / 2);
    EXPECT_EQ(Place(child_).top, 40) << "the other coordinate stays";
    ASSERT_TRUE(child_.CenterVertically());
    child_.GetWindowRect(own);
    EXPECT_EQ(own.top - outer.top, (480 - 50) / 2);
    EXPECT_EQ(own.left - outer.left, (640 - 100) / 2);
    EXPECT_EQ(own.right - own.left, 100);
    // Without a parent: over 0, 0, 1024, 780.
    Window alone;
    alone.Create("STATIC", "", nullptr, nullptr, WS_POPUP, 0, 100, 80, 640, 480);
    ASSERT_TRUE(alone.CenterHorizontally() && alone.CenterVertically());
    alone.GetWindowRect(own);
    const RECT middle{(1024 - 640) / 2, (780 - 480) / 2, (1024 + 640) / 2, (780 + 480) / 2};
    EXPECT_TRUE(EqualRect(&own, &middle)) << own.left << ' ' << own.top;
    alone.Destroy();
}

TEST_F(Operations, ShowTextsAndNumbers) {
    const struct {
        const char* expected;
        void (*set)(Window& window);
    } rows[] = {
        {"Perch\xE9", [](Window& window) { window.SetText("Perch\xE9"); }},
        {"-7", [](Window& window) { window.SetNumber(-7); }},
        {"4000000000", [](Window& window) { window.SetUnsigned(4000000000); }},
        {"BEEF", [](Window& window) { window.SetHex(0xBEEF); }},
        {"2.2", [](Window& window) { window.SetFixed(2.25, 1); }},
        {"12.7", [](Window& window) { window.SetTenths(127); }},
        {"1.23", [](Window& window) { window.SetScaled(1, 1000, 2, 1234); }},
        {"175", [](Window& window) { window.SetScaled(254, 10000, 0, 6900); }},
        {"1:02:03", [](Window& window) { window.SetDuration(3723000); }},
    };
    for (const auto& row : rows) {
        row.set(child_);
        char text[64];
        child_.GetText(text, sizeof text);
        EXPECT_STREQ(text, row.expected);
    }
    char cut[4];
    EXPECT_EQ(child_.GetText(cut, sizeof cut), 3);
    EXPECT_STREQ(cut, "1:0");
    child_.SetText((std::string(62, ' ') + "1234").c_str());
    EXPECT_EQ(child_.GetNumberText(), 12) << "only the first 64 characters count";
    child_.SetText("BEEF");
    EXPECT_EQ(child_.GetHexText(), 0xBEEFu);
}

TEST_F(Operations, TickUntilTheTimerIsStopped) {
    const DWORD start = GetTickCount();
    TickingWindow ticking(child_.Handle(), nullptr, 0);
    ASSERT_TRUE(ticking.StartTimer(10));
    EXPECT_TRUE(ticking.IsTimerRunning());
    EXPECT_TRUE(PumpUntil(nullptr, [&] { return ticking.ticks > 0; }));
    EXPECT_LT(ticking.lastTime - start, 60000u) << "the system's time";
    ticking.StopTimer();
    EXPECT_FALSE(ticking.IsTimerRunning());
    ticking.ticks = 0;
    {
        TickingWindow gone(child_.Handle(), nullptr, 0);
        ASSERT_TRUE(gone.StartTimer(10));
        Sleep(30);
        // A tick is due, and its object is not there any more.
    }
    PumpUntil(
        nullptr, [] { return false; }, 50);
    EXPECT_EQ(ticking.ticks, 0);
}

TEST_F(Operations, AnswerMenusAndToolTipsByTheirHandlers) {
    const HMENU menu = CreatePopupMenu();
    for (const UINT id : {40001u, 40002u}) {
        AppendMenuA(menu, MF_STRING, id, "voce");
    }
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    child_.SendMsg(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu));
    EXPECT_EQ(GetMenuState(menu, 40001, MF_BYCOMMAND), UINT{MF_ENABLED | MF_UNCHECKED});
    EXPECT_EQ(GetMenuState(menu, 40002, MF_BYCOMMAND), UINT{MF_GRAYED | MF_CHECKED});
    DestroyMenu(menu);
    for (const UINT_PTR id : {7u, 8u}) {
        NMTTDISPINFOA request{};
        request.hdr = {child_.Handle(), id, static_cast<UINT>(TTN_NEEDTEXTA)};
        EXPECT_EQ(child_.SendMsg(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&request)), 0);
        EXPECT_STREQ(request.lpszText, id == 7 ? "Aiuto" : nullptr);
        EXPECT_EQ(request.hinst, id == 7 ? GetModuleHandleA(nullptr) : nullptr);
    }
}

TEST(WindowWithoutHandle, DoesNothing) {
    Window window;
    EXPECT_FALSE(window.Create("no such class", "", nullptr, nullptr, WS_POPUP, 0, 0, 0, 1, 1));
    EXPECT_FALSE(window.IsValid() || window.PostUser(1, 2) || window.PostToParent(WM_USER, 1, 2) || window.StartTimer(10));
    EXPECT_FALSE(window.Destroy() || window.Invalidate() || window.HasFocus() || window.UnregisterHotKey(1));
    EXPECT_EQ(window.RegisterHotKey("kx", 0, VK_F5), 0);
    EXPECT_EQ(window.SetFocus(), nullptr);
    EXPECT_EQ(window.SetCapture(), nullptr);
    char text[] = "old";
    EXPECT_EQ(window.GetText(text, sizeof text), 0);
    EXPECT_STREQ(text, "");
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_REMOVE)) << "the thread's queue gets nothing";
}

}  // namespace
}  // namespace kx::test
