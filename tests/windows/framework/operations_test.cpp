// The operations of a window on a real one.
#include <gtest/gtest.h>

#include <string>

#include "tests/windows/framework/test_library.h"

namespace {

using kx::Window;
using kx::test::HostFrame;
using kx::test::PumpMessages;

// A child of a frame.
class Operations : public testing::Test {
  protected:
    Operations() : child_(&frame_, 40001) {
        child_.CreateControl("EDIT", "", nullptr, WS_CHILD | WS_VISIBLE | ES_MULTILINE, 0, 10, 20, 100, 50);
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

    HostFrame frame_;
    Window child_;
};

void ExpectRect(const RECT& area, int left, int top, int right, int bottom) {
    EXPECT_EQ(area.left, left);
    EXPECT_EQ(area.top, top);
    EXPECT_EQ(area.right, right);
    EXPECT_EQ(area.bottom, bottom);
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

TEST_F(Operations, TextAndNumbers) {
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
        EXPECT_EQ(Text(), row.expected);
    }
    char cut[4];
    EXPECT_EQ(child_.GetText(cut, sizeof cut), 3);
    EXPECT_STREQ(cut, "1:0");
    child_.SetText((std::string(62, ' ') + "1234").c_str());
    EXPECT_EQ(child_.GetNumberText(), 12) << "only the first 64 characters count";
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
    EXPECT_FALSE(window.PostUser(1, 2));
    EXPECT_FALSE(window.PostToParent(WM_USER, 1, 2));
    EXPECT_FALSE(window.StartTimer(10));
    EXPECT_FALSE(window.Destroy());
    char text[] = "old";
    EXPECT_EQ(window.GetText(text, sizeof text), 0);
    EXPECT_STREQ(text, "");
    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_USER, WM_USER, PM_REMOVE))
        << "the thread's queue gets nothing";
}

}  // namespace
