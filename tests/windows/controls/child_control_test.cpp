#include "lib/windows/child_control.h"

#include <commctrl.h>

#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::ChildControl;

class ChildControlTest : public kx::test::ControlTest {};

TEST_F(ChildControlTest, RemembersItsLastNotification) {
    ChildControl control(0, "STATIC", module_, &parent_, 40, 0, 0, 9, 9, 0);
    NMHDR header{control.Handle(), 40, 0};
    LRESULT result = 5;
    EXPECT_EQ(control.LastNotification(), 0u);
    header.code = NM_CLICK;
    EXPECT_FALSE(control.OnChildNotify(40, &header, &result));
    EXPECT_EQ(control.LastNotification(), static_cast<std::uint32_t>(NM_CLICK));
    control.OnChildNotify(41, &header, &result);
    EXPECT_EQ(control.LastNotification(), 0u);
    EXPECT_EQ(result, 5);
    control.OnChildNotify(40, nullptr, nullptr);
    EXPECT_EQ(control.LastNotification(), 0u);
    EXPECT_EQ(kx::test::SlotOf(&ChildControl::OnChildNotify), 42u);
}

TEST_F(ChildControlTest, EndsItsWindowIfThatStillExists) {
    HWND window = nullptr;
    {
        const ChildControl control(0, "STATIC", module_, &parent_, 40, 0, 0, 9, 9, 0);
        window = control.Handle();
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
    {
        const ChildControl gone(0, "STATIC", module_, &parent_, 40, 0, 0, 9, 9, 0);
        DestroyWindow(gone.Handle());
        const ChildControl unknown(0, "no such class", module_, &parent_, 40, 0, 0, 9, 9, 0);
        EXPECT_EQ(unknown.Handle(), nullptr);
    }
    EXPECT_TRUE(parent_.IsValid());
}

}  // namespace
