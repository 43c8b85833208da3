// What the host and the library share of a window object: the order of its virtual operations and its fields.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "lib/windows/dialog.h"
#include "lib/windows/window.h"
#include "lib/windows/window_class.h"
#include "tests/windows/framework/templates.h"
#include "tests/windows/framework/test_library.h"

namespace {

using kx::Dialog;
using kx::Window;
using kx::test::HostFrame;
using kx::test::ThisLibrary;

// The slot that a pointer to a virtual member names: its offset in the table plus 1.
template <class Member>
int Slot(Member member) {
    std::uint32_t offset = 0;
    static_assert(sizeof member >= sizeof offset);
    std::memcpy(&offset, &member, sizeof offset);
    return offset % 4 == 1 ? static_cast<int>(offset / 4) : -1;
}

// The member function whose code a table entry leads to.
template <class Member>
Member MemberAt(void* entry) {
    void* const words[2] = {entry, nullptr};
    Member member;
    static_assert(sizeof member == sizeof words);
    std::memcpy(&member, words, sizeof member);
    return member;
}

TEST(WindowLayout, HandlersStandInTheirSlots) {
    const struct {
        int slot;
        int is;
    } rows[] = {
        {0, Slot(&Window::WindowProc)},
        {1, Slot(&Window::OnPaint)},
        {2, Slot(&Window::OnEraseBackground)},
        {3, Slot(&Window::OnInitMenuPopup)},
        {4, Slot(&Window::OnSize)},
        {5, Slot(&Window::OnCreate)},
        {6, Slot(&Window::OnClose)},
        {7, Slot(&Window::OnDestroy)},
        {8, Slot(&Window::OnNotify)},
        {9, Slot(&Window::OnCommand)},
        {10, Slot(&Window::OnMenuCommand)},
        {11, Slot(&Window::OnControlCommand)},
        {12, Slot(&Window::OnKeyDown)},
        {13, Slot(&Window::OnKeyUp)},
        {14, Slot(&Window::OnSetFocus)},
        {15, Slot(&Window::OnKillFocus)},
        {16, Slot(&Window::OnTimer)},
        {17, Slot(&Window::OnQueryNewPalette)},
        {18, Slot(&Window::OnPaletteChanged)},
        {19, Slot(&Window::OnHScroll)},
        {20, Slot(&Window::OnVScroll)},
        {21, Slot(&Window::OnLButtonDown)},
        {22, Slot(&Window::OnLButtonUp)},
        {23, Slot(&Window::OnLButtonDblClk)},
        {24, Slot(&Window::OnRButtonDown)},
        {25, Slot(&Window::OnRButtonUp)},
        {26, Slot(&Window::OnRButtonDblClk)},
        {27, Slot(&Window::OnMouseMove)},
        {28, Slot(&Window::OnSetCursor)},
        {29, Slot(&Window::OnNcHitTest)},
        {30, Slot(&Window::OnWindowPosChanged)},
        {31, Slot(&Window::OnMoving)},
        {32, Slot(&Window::OnSizing)},
        {33, Slot(&Window::OnMeasureItem)},
        {34, Slot(&Window::OnDrawItem)},
        {35, Slot(&Window::OnCtlColorStatic)},
        {36, Slot(&Window::OnExitSizeMove)},
        {37, Slot(&Window::OnGetDlgCode)},
        {38, Slot(&Window::OnDeviceChange)},
        {39, Slot(&Window::GetToolTipText)},
        {40, Slot(&Window::IsCommandEnabled)},
        {41, Slot(&Window::IsCommandChecked)},
        {42, Slot(&Dialog::DialogProc)},
        {43, Slot(&Dialog::OnInitDialog)},
        {44, Slot(&Dialog::OnDialogCommand)},
        {45, Slot(&Dialog::OnDialogHotKey)},
        {46, Slot(&Dialog::OnDialogNotify)},
        {47, Slot(&Dialog::OnOK)},
        {48, Slot(&Dialog::OnCancel)},
        {2, Slot(&Dialog::OnEraseBackground)},
        {6, Slot(&Dialog::OnClose)},
        {7, Slot(&Dialog::OnDestroy)},
        {33, Slot(&Dialog::OnMeasureItem)},
        {34, Slot(&Dialog::OnDrawItem)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.is, row.slot) << "handler of slot " << row.slot;
    }
    // One slot for the destructor, in this compiler's tables two.
    EXPECT_EQ(Slot(&kx::WindowClass::CreateWindowObject), 2);
}

// An object is called by its table as another program of the suite does it.
TEST(WindowLayout, IsCalledThroughTheRawTable) {
    class Checked final : public Window {
      public:
        bool IsCommandChecked(UINT id) override { return id == 77; }
        void OnTimer(UINT_PTR id) override { timer = id; }
        UINT_PTR timer = 0;
    } checked;
    void** const table = *reinterpret_cast<void***>(&checked);
    const auto isChecked = MemberAt<bool (Window::*)(UINT)>(table[41]);
    const auto onTimer = MemberAt<void (Window::*)(UINT_PTR)>(table[16]);
    EXPECT_TRUE((checked.*isChecked)(77));
    EXPECT_FALSE((checked.*isChecked)(78));
    (checked.*onTimer)(5);
    EXPECT_EQ(checked.timer, 5u);
}

TEST(WindowLayout, FieldsFollowTheTable) {
    HostFrame frame;
    Window window(frame.Handle(), &frame, 0x1234);
    std::uint32_t words[6];
    static_assert(sizeof words == sizeof window);
    ASSERT_TRUE(window.StartTimer(10000));
    std::memcpy(words, static_cast<const void*>(&window), sizeof words);
    EXPECT_EQ(words[1], reinterpret_cast<std::uintptr_t>(frame.Handle()));
    EXPECT_EQ(words[2], reinterpret_cast<std::uintptr_t>(&frame));
    EXPECT_EQ(words[3], 0x1234u);
    EXPECT_EQ(words[4], 0u);
    EXPECT_NE(words[5], 0u);
    window.StopTimer();
    std::memcpy(words, static_cast<const void*>(&window), sizeof words);
    EXPECT_EQ(words[5], 0u);
}

// The host's object may be of another compiler: only its second word is used.
TEST(WindowLayout, UsesOnlyTheHandleOfAHostsObject) {
    class Pane final : public Dialog {
      public:
        using Dialog::Dialog;
    };
    HostFrame frame;
    std::uint32_t hostObject[6] = {1, 0, 0xDEAD0001, 0xDEAD0002, 0xDEAD0003, 0xDEAD0004};
    hostObject[1] = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(frame.Handle()));
    std::uint32_t before[6];
    std::memcpy(before, hostObject, sizeof before);
    Pane pane(ThisLibrary(), reinterpret_cast<Window*>(hostObject), nullptr, nullptr);
    pane.CreateModeless(IDD_PANE, &pane);
    ASSERT_TRUE(pane.IsValid());
    EXPECT_EQ(GetParent(pane.Handle()), frame.Handle());
    EXPECT_TRUE(pane.CenterHorizontally());
    EXPECT_TRUE(pane.PostToParent(WM_NULL, 0, 0));
    pane.Destroy();
    EXPECT_EQ(std::memcmp(before, hostObject, sizeof before), 0);
}

}  // namespace
