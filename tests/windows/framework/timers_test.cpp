// A timer that may outlive its window, and the operations of a window without a handle.
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

class TickingWindow final : public Window {
  public:
    using Window::Window;
    ~TickingWindow() { Destroy(); }
    void OnTimer(UINT_PTR) override { ++ticks; }

    int ticks = 0;
};

class Timers : public FrameworkTest {
  protected:
    WindowClass class_{&ThisLibrary(), "KxFramework", 0, 0, &services_};
};

TEST_F(Timers, TickUntilTheyAreStoppedOrTheirObjectIsGone) {
    TickingWindow window(&frame_);
    window.Create("KxFramework", "", GetModuleHandleA(nullptr), &window, WS_CHILD, 0, 10, 20, 100, 50);
    ASSERT_TRUE(window.StartTimer(10));
    EXPECT_TRUE(PumpUntil(nullptr, [&] { return window.ticks > 0; }));
    window.StopTimer();
    window.ticks = 0;
    {
        TickingWindow gone(nullptr);
        gone.Create("KxFramework", "", GetModuleHandleA(nullptr), &gone, WS_POPUP, 0, 0, 0, 9, 9);
        ASSERT_TRUE(gone.StartTimer(10));
        Sleep(30);
        // A tick is due, and its object is not there any more.
    }
    EXPECT_FALSE(PumpUntil(
        nullptr, [&] { return window.ticks > 0; }, 50));
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
