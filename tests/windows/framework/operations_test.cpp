// The operations of a window on a real one.
#include <gtest/gtest.h>

#include <string>

#include "lib/windows/menu.h"
#include "lib/windows/registry_key.h"
#include "lib/windows/window_debug.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Window;
using kx::test::HostFrame;
using kx::test::PumpMessages;

// A child of a frame, with both scroll bars.
class Operations : public testing::Test {
  protected:
    Operations() : child_(&frame_, 40001) {
        child_.CreateControl("EDIT", "", nullptr,
                             WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE, 0, 10, 20, 100,
                             50);
    }

    std::string Text() const {
        char text[64];
        child_.GetText(text, sizeof text);
        return text;
    }
    // The child's window in the frame's client area.
    RECT Place() const {
        RECT area{};
        child_.GetWindowRect(area);
        MapWindowPoints(nullptr, frame_.Handle(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    DWORD Style(int index) const { return static_cast<DWORD>(GetWindowLongA(child_.Handle(), index)); }

    HostFrame frame_;
    Window child_;
};

void ExpectRect(const RECT& area, int left, int top, int right, int bottom) {
    EXPECT_EQ(area.left, left);
    EXPECT_EQ(area.top, top);
    EXPECT_EQ(area.right, right);
    EXPECT_EQ(area.bottom, bottom);
}

TEST_F(Operations, AControlHasItsIdAndParent) {
    EXPECT_EQ(GetDlgCtrlID(child_.Handle()), 40001);
    EXPECT_EQ(GetParent(child_.Handle()), frame_.Handle());
    EXPECT_EQ(Window(&frame_, 40001).Handle(), child_.Handle());
}

TEST_F(Operations, ShowAndEnable) {
    child_.Hide();
    EXPECT_FALSE(IsWindowVisible(child_.Handle()));
    child_.Show();
    EXPECT_TRUE(IsWindowVisible(child_.Handle()));
    child_.Enable(false);
    EXPECT_FALSE(IsWindowEnabled(child_.Handle()));
    EXPECT_TRUE(child_.Enable(true)) << "it was disabled before";
    frame_.Maximize();
    EXPECT_TRUE(IsZoomed(frame_.Handle()));
    frame_.ShowNormal();
    EXPECT_FALSE(IsZoomed(frame_.Handle()));
}

TEST_F(Operations, Place) {
    EXPECT_TRUE(child_.MoveTo(30, 40, 120, 60));
    ExpectRect(Place(), 30, 40, 150, 100);
    EXPECT_TRUE(child_.Resize(50, 20));
    ExpectRect(Place(), 30, 40, 80, 60);
    RECT client{};
    EXPECT_TRUE(frame_.GetClientRect(client));
    EXPECT_EQ(client.left, 0);
    EXPECT_GT(client.right, 500);
}

TEST_F(Operations, CentersOverTheParentsWindow) {
    RECT outer{};
    frame_.GetWindowRect(outer);
    child_.MoveTo(30, 40, 100, 50);
    ASSERT_TRUE(child_.CenterHorizontally());
    RECT own{};
    child_.GetWindowRect(own);
    EXPECT_EQ(own.left - outer.left, (640 - 100) / 2);
    EXPECT_EQ(Place().top, 40) << "the other coordinate stays";
    ASSERT_TRUE(child_.CenterVertically());
    child_.GetWindowRect(own);
    EXPECT_EQ(own.top - outer.top, (480 - 50) / 2);
    EXPECT_EQ(own.left - outer.left, (640 - 100) / 2);
    EXPECT_EQ(own.right - own.left, 100);

    // Without a parent: over 0, 0, 1024, 780.
    ASSERT_TRUE(frame_.CenterHorizontally());
    ASSERT_TRUE(frame_.CenterVertically());
    frame_.GetWindowRect(own);
    ExpectRect(own, (1024 - 640) / 2, (780 - 480) / 2, (1024 + 640) / 2, (780 + 480) / 2);
}

TEST_F(Operations, OrderAndTopmost) {
    Window second(&frame_, 40002);
    second.CreateControl("STATIC", "", nullptr, WS_CHILD, 0, 0, 0, 5, 5);
    const auto first = [this] { return GetWindow(frame_.Handle(), GW_CHILD); };
    second.ToTop();
    EXPECT_EQ(first(), second.Handle());
    second.ToBottom();
    EXPECT_EQ(first(), child_.Handle());
    second.BringToTop();
    EXPECT_EQ(first(), second.Handle());
    frame_.BringToTopmost();
    EXPECT_NE(GetWindowLongA(frame_.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST_F(Operations, StyleBits) {
    const struct {
        const char* name;
        bool (Window::*set)(bool);
        int index;
        DWORD bits;
    } rows[] = {
        {"minimize box", &Window::SetMinimizeBox, GWL_STYLE, 0x20000},
        {"caption", &Window::SetCaption, GWL_STYLE, 0xC00000},
        {"thick frame", &Window::SetThickFrame, GWL_STYLE, 0x40000},
        {"system menu", &Window::SetSystemMenu, GWL_STYLE, 0x80000},
        {"static edge", &Window::SetStaticEdge, GWL_EXSTYLE, 0x20000},
    };
    for (const auto& row : rows) {
        const DWORD before = Style(row.index);
        EXPECT_TRUE((child_.*row.set)(true)) << row.name;
        EXPECT_EQ(Style(row.index), before | row.bits) << row.name;
        EXPECT_TRUE((child_.*row.set)(false)) << row.name;
        EXPECT_EQ(Style(row.index), before & ~row.bits) << row.name;
    }
    EXPECT_TRUE(child_.SetStyles(WS_CHILD | WS_BORDER, WS_EX_STATICEDGE));
    EXPECT_EQ(Style(GWL_STYLE), DWORD{WS_CHILD | WS_BORDER});
    EXPECT_EQ(Style(GWL_EXSTYLE), DWORD{WS_EX_STATICEDGE});
}

TEST_F(Operations, TextAndNumbers) {
    child_.SetText("Perch\xE9");
    EXPECT_EQ(Text(), "Perch\xE9");
    EXPECT_EQ(child_.GetTextLength(), 6);
    char cut[4];
    EXPECT_EQ(child_.GetText(cut, sizeof cut), 3);
    EXPECT_STREQ(cut, "Per");
    child_.SetNumber(-7);
    EXPECT_EQ(Text(), "-7");
    child_.SetUnsigned(4000000000);
    EXPECT_EQ(Text(), "4000000000");
    child_.SetHex(0xBEEF);
    EXPECT_EQ(Text(), "BEEF");
    EXPECT_EQ(child_.GetHexText(), 0xBEEFu);
    child_.SetFixed(2.25, 1);
    EXPECT_EQ(Text(), "2.2");
    child_.SetTenths(127);
    EXPECT_EQ(Text(), "12.7");
    child_.SetScaled(1, 1000, 2, 1234);
    EXPECT_EQ(Text(), "1.23");
    child_.SetScaled(254, 10000, 0, 6900);
    EXPECT_EQ(Text(), "175");
    EXPECT_EQ(child_.GetNumberText(), 175);
    child_.SetDuration(3723000);
    EXPECT_EQ(Text(), "1:02:03");
    // Only the first 64 characters count.
    child_.SetText((std::string(62, ' ') + "1234").c_str());
    EXPECT_EQ(child_.GetNumberText(), 12);
}

TEST_F(Operations, ScrollBars) {
    EXPECT_TRUE(child_.HasScrollBar(true));
    EXPECT_TRUE(child_.HasScrollBar(false));
    EXPECT_FALSE(frame_.HasScrollBar(true));
    child_.SetVRange(5, 200);
    child_.SetVPage(20);
    child_.SetVPosition(50, true);
    child_.SetHRange(7, 400);
    child_.SetHPage(30);
    child_.SetHPosition(60, false);
    EXPECT_EQ(child_.GetVMinimum(), 5);
    EXPECT_EQ(child_.GetVPage(), 20u);
    EXPECT_EQ(child_.GetVPosition(), 50);
    EXPECT_EQ(child_.GetHMinimum(), 7);
    EXPECT_EQ(child_.GetHPage(), 30u);
    EXPECT_EQ(child_.GetHPosition(), 60);
    EXPECT_EQ(child_.GetVTrackPosition(), 50) << "at rest the thumb is at the position";
    EXPECT_EQ(child_.GetHTrackPosition(), 60);
}

TEST_F(Operations, PostedMessages) {
    const struct {
        const char* name;
        bool posted;
        HWND window;
        UINT message;
    } rows[] = {
        {"user", child_.PostUser(3, 4), child_.Handle(), WM_USER},
        {"command", child_.PostCommand(3, 4), child_.Handle(), WM_COMMAND},
        {"to the parent", child_.PostToParent(WM_APP, 3, 4), frame_.Handle(), WM_APP},
    };
    for (const auto& row : rows) {
        MSG message{};
        EXPECT_TRUE(row.posted) << row.name;
        ASSERT_NE(PeekMessageA(&message, row.window, row.message, row.message, PM_REMOVE), 0) << row.name;
        EXPECT_EQ(message.wParam, 3u) << row.name;
        EXPECT_EQ(message.lParam, 4) << row.name;
    }
}

TEST_F(Operations, FontMenuAndCapture) {
    const auto font = static_cast<HFONT>(GetStockObject(ANSI_VAR_FONT));
    child_.SetFont(font, true);
    EXPECT_EQ(child_.GetFont(), font);
    EXPECT_FALSE(frame_.SetMenu(kx::Menu(nullptr)));
    EXPECT_TRUE(frame_.SetMenu(kx::Menu(CreateMenu())));
    child_.SetCapture();
    EXPECT_EQ(GetCapture(), child_.Handle());
    EXPECT_TRUE(Window::ReleaseCapture());
    EXPECT_EQ(GetCapture(), nullptr);
    frame_.SetForeground();
    child_.SetFocus();
    EXPECT_EQ(child_.HasFocus(), GetFocus() == child_.Handle());
}

TEST_F(Operations, HotKeys) {
    const ATOM atom = frame_.RegisterHotKey("KxFrameworkHotKey", MOD_CONTROL | MOD_ALT, VK_F9);
    ASSERT_NE(atom, 0);
    EXPECT_EQ(GlobalFindAtomA("KxFrameworkHotKey"), atom);
    EXPECT_EQ(frame_.RegisterHotKey("KxFrameworkOther", MOD_CONTROL | MOD_ALT, VK_F9), 0)
        << "the key is taken";
    EXPECT_EQ(GlobalFindAtomA("KxFrameworkOther"), 0) << "its name is not kept";
    EXPECT_TRUE(frame_.UnregisterHotKey(atom));
    EXPECT_EQ(GlobalFindAtomA("KxFrameworkHotKey"), 0);
    EXPECT_FALSE(frame_.UnregisterHotKey(0));
}

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

void WaitForTimers() {
    for (int i = 0; i < 10; ++i) {
        Sleep(10);
        PumpMessages();
    }
}

TEST_F(Operations, TimerTicksUntilStopped) {
    TickingWindow window(child_.Handle(), nullptr, 0);
    const DWORD start = GetTickCount();
    ASSERT_TRUE(window.StartTimer(10));
    EXPECT_TRUE(window.IsTimerRunning());
    WaitForTimers();
    EXPECT_GT(window.ticks, 0);
    EXPECT_LT(window.lastTime - start, 5000u) << "the system's time";
    window.StopTimer();
    EXPECT_FALSE(window.IsTimerRunning());
    window.ticks = 0;
    WaitForTimers();
    EXPECT_EQ(window.ticks, 0);
    {
        TickingWindow gone(child_.Handle(), nullptr, 0);
        ASSERT_TRUE(gone.StartTimer(10));
        Sleep(30);
        // A tick is due, and its object is not there any more.
    }
    WaitForTimers();
}

TEST(WindowWithoutHandle, DoesNothing) {
    Window window;
    EXPECT_FALSE(window.Create("no such class", "", nullptr, nullptr, WS_POPUP, 0, 0, 0, 1, 1));
    EXPECT_FALSE(window.IsValid());
    EXPECT_FALSE(window.Invalidate());
    EXPECT_FALSE(window.PostUser(1, 2));
    EXPECT_FALSE(window.PostToParent(WM_USER, 1, 2));
    EXPECT_FALSE(window.StartTimer(10));
    EXPECT_FALSE(window.HasFocus());
    EXPECT_EQ(window.SetFocus(), nullptr);
    EXPECT_EQ(window.RegisterHotKey("KxFrameworkHotKey", MOD_CONTROL, VK_F9), 0);
    EXPECT_EQ(window.GetVPosition(), 0);
    EXPECT_EQ(window.SendMsg(WM_GETTEXTLENGTH), 0);
    EXPECT_FALSE(window.Destroy());
    EXPECT_FALSE(window.CenterVertically());
    RECT area{1, 2, 3, 4};
    EXPECT_FALSE(window.GetClientRect(area));
    char text[] = "old";
    EXPECT_EQ(window.GetText(text, sizeof text), 0);
    EXPECT_STREQ(text, "");
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_REMOVE))
        << "the thread's queue gets nothing";
}

TEST(WindowDebug, TracesMessages) {
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* line;
    } rows[] = {
        {WM_MOVE, 1, 0x20003, "T: 1234 WM_MOVE 00000001 00020003\r\n"},
        {WM_CTLCOLORSTATIC, 0xAB, 0, "T: 1234 WM_CTLCOLORSTATIC 000000AB 00000000\r\n"},
        {WM_COMMAND, 0x10002, 3 * 4096 + 5, "T: 1234 WM_COMMAND 00010002 3 5\r\n"},
        {WM_TIMER, 2, 0, "T: 1234 0113 00000002 00000000\r\n"},
    };
    for (const auto& row : rows) {
        char line[128];
        kx::FormatMessageTrace(line, sizeof line, "T", reinterpret_cast<HWND>(0x1234), row.message,
                               row.wParam, row.lParam);
        EXPECT_STREQ(line, row.line);
        kx::TraceMessage("T", nullptr, row.message, row.wParam, row.lParam);
    }
}

TEST(WindowDebug, CountsWindows) {
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\VDS DEBUG");
    HostFrame first;
    HostFrame second;
    kx::CountWindow(first);
    kx::CountWindow(second);
    kx::RegistryKey key("Software\\VDS DEBUG");
    std::uint32_t value = 0;
    EXPECT_TRUE(key.GetDword("Window Count", &value));
    EXPECT_EQ(value, 2u);
    char name[16];
    std::snprintf(name, sizeof name, "%X", static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(&second)));
    {
        kx::RegistryKey object("Software\\VDS DEBUG", name);
        EXPECT_TRUE(object.GetDword("New", &value));
        EXPECT_EQ(value, 2u);
        EXPECT_TRUE(object.GetDword("hwnd", &value));
        EXPECT_EQ(value, reinterpret_cast<std::uintptr_t>(second.Handle()));
    }
    kx::UncountWindow(second);
    kx::UncountWindow(first);
    kx::UncountWindow(first);
    EXPECT_TRUE(key.GetDword("Window Count", &value));
    EXPECT_EQ(value, 0u);
    char left[16];
    EXPECT_FALSE(key.SubkeyName(0, left, sizeof left));
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\VDS DEBUG");
}

}  // namespace
