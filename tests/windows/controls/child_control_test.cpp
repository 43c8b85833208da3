#include "lib/windows/child_control.h"

#include <commctrl.h>

#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::ChildControl;
using kx::ScrollingStyle;
using kx::WholeStyle;

class ChildControlTest : public kx::test::ControlTest {};

constexpr DWORD kScrollingBits =
    WS_VSCROLL | WS_HSCROLL | 0x40000 | 0x10000 | WS_BORDER | WS_VISIBLE | WS_CHILD;

TEST_F(ChildControlTest, IsCreatedWithTheStylesAskedFor) {
    const ChildControl plain(WS_EX_CLIENTEDGE, "STATIC", module_, &parent_, 40, 1, 2, 30, 40, SS_CENTER);
    EXPECT_EQ(kx::test::StyleOf(plain.Handle()), 0x56004000u | SS_CENTER);
    EXPECT_NE(kx::test::ExtendedStyleOf(plain.Handle()) & WS_EX_CLIENTEDGE, 0u);
    EXPECT_EQ(GetDlgCtrlID(plain.Handle()), 40);
    EXPECT_EQ(kx::test::TextOf(plain.Handle()), "");
    EXPECT_EQ(kx::test::PlaceOf(plain.Handle()).right, 31);

    const ChildControl placed(0, "STATIC", module_, &parent_, 41, SS_CENTER);
    EXPECT_EQ(kx::test::StyleOf(placed.Handle()), 0x56004000u | SS_CENTER);

    const ChildControl whole(0, "STATIC", module_, &parent_, 42, 0, 0, 9, 9, WholeStyle{WS_CHILD | SS_RIGHT});
    EXPECT_EQ(kx::test::StyleOf(whole.Handle()), static_cast<DWORD>(WS_CHILD | SS_RIGHT));
}

TEST_F(ChildControlTest, ScrollsAsAsked) {
    const struct {
        ScrollingStyle style;
        DWORD bits;
    } rows[] = {{{}, 0x50800000},
                {{.vertical = true}, 0x50A00000},
                {{.horizontal = true}, 0x50900000},
                {{.thickFrame = true}, 0x50840000},
                {{.tabStop = true}, 0x50810000},
                {{true, true, true, true}, 0x50B50000}};
    for (const auto& row : rows) {
        const ChildControl control("STATIC", module_, &parent_, 40, 0, 0, 90, 90, row.style);
        EXPECT_EQ(kx::test::StyleOf(control.Handle()) & kScrollingBits, row.bits);
        EXPECT_NE(kx::test::ExtendedStyleOf(control.Handle()) & WS_EX_CLIENTEDGE, 0u);
    }
}

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
