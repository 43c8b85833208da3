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

TEST(WindowLayout, HandlersStandInTheirSlots) {
    const int slots[] = {
        Slot(&Window::WindowProc),
        Slot(&Window::OnPaint),
        Slot(&Window::OnEraseBackground),
        Slot(&Window::OnInitMenuPopup),
        Slot(&Window::OnSize),
        Slot(&Window::OnCreate),
        Slot(&Window::OnClose),
        Slot(&Window::OnDestroy),
        Slot(&Window::OnNotify),
        Slot(&Window::OnCommand),
        Slot(&Window::OnMenuCommand),
        Slot(&Window::OnControlCommand),
        Slot(&Window::OnKeyDown),
        Slot(&Window::OnKeyUp),
        Slot(&Window::OnSetFocus),
        Slot(&Window::OnKillFocus),
        Slot(&Window::OnTimer),
        Slot(&Window::OnQueryNewPalette),
        Slot(&Window::OnPaletteChanged),
        Slot(&Window::OnHScroll),
        Slot(&Window::OnVScroll),
        Slot(&Window::OnLButtonDown),
        Slot(&Window::OnLButtonUp),
        Slot(&Window::OnLButtonDblClk),
        Slot(&Window::OnRButtonDown),
        Slot(&Window::OnRButtonUp),
        Slot(&Window::OnRButtonDblClk),
        Slot(&Window::OnMouseMove),
        Slot(&Window::OnSetCursor),
        Slot(&Window::OnNcHitTest),
        Slot(&Window::OnWindowPosChanged),
        Slot(&Window::OnMoving),
        Slot(&Window::OnSizing),
        Slot(&Window::OnMeasureItem),
        Slot(&Window::OnDrawItem),
        Slot(&Window::OnCtlColorStatic),
        Slot(&Window::OnExitSizeMove),
        Slot(&Window::OnGetDlgCode),
        Slot(&Window::OnDeviceChange),
        Slot(&Window::GetToolTipText),
        Slot(&Window::IsCommandEnabled),
        Slot(&Window::IsCommandChecked),
        Slot(&Dialog::DialogProc),
        Slot(&Dialog::OnInitDialog),
        Slot(&Dialog::OnDialogCommand),
        Slot(&Dialog::OnDialogHotKey),
        Slot(&Dialog::OnDialogNotify),
        Slot(&Dialog::OnOK),
        Slot(&Dialog::OnCancel),
    };
    int expected = 0;
    for (const int slot : slots) {
        EXPECT_EQ(slot, expected) << "handler of slot " << expected;
        ++expected;
    }
    EXPECT_EQ(expected, 49);
    // One slot for the destructor, in this compiler's tables two.
    EXPECT_EQ(Slot(&kx::WindowClass::CreateWindowObject), 2);
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
