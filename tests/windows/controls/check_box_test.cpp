#include "lib/windows/check_box.h"

#include "tests/rig/gui_objects.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::CheckBox;
using kx::test::Command;

class CheckBoxTest : public kx::test::ControlTest {};

TEST_F(CheckBoxTest, TellsItsClickFromOtherCommands) {
    NewItem("BUTTON", BS_AUTOCHECKBOX, 59008);
    const CheckBox& box = *new CheckBox(&parent_, 59008);
    const struct {
        WPARAM wParam;
        bool clicked;
    } rows[] = {
        {Command(59008, BN_CLICKED), true},   {Command(59008, BN_DOUBLECLICKED), false},
        {Command(59008, BN_SETFOCUS), false}, {Command(59008, 1), false},  // an accelerator
        {Command(59009, BN_CLICKED), false},  {Command(0, BN_CLICKED), false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(box.IsClicked(row.wParam), row.clicked) << std::hex << row.wParam;
    }
}

TEST_F(CheckBoxTest, IsDeletedOnceWithItsControl) {
    NewItem("BUTTON", BS_AUTOCHECKBOX, 1);
    NewItem("BUTTON", BS_AUTOCHECKBOX, 2);
    CheckBox* const alone = new CheckBox(&parent_, 1);
    CheckBox* const withParent = new CheckBox(&parent_, 2);
    CheckBox* const created = new CheckBox(module_, &parent_, 3, 0, 0, 10, 10);
    for (const CheckBox* box : {alone, withParent, created}) {
        kx::test::WatchDeletion(box);
    }
    DestroyWindow(alone->Handle());
    EXPECT_EQ(kx::test::Deletions(alone), 1);
    EXPECT_EQ(kx::test::Deletions(withParent), 0);
    DestroyParent();
    for (const CheckBox* box : {alone, withParent, created}) {
        EXPECT_EQ(kx::test::Deletions(box), 1);
    }
}

TEST_F(CheckBoxTest, GivesTheControlBackWhenDeletedBefore) {
    const HWND item = NewItem("BUTTON", BS_AUTOCHECKBOX, 1);
    const LONG_PTR before = GetWindowLongPtrA(item, GWLP_WNDPROC);
    delete new CheckBox(&parent_, 1);
    EXPECT_EQ(GetWindowLongPtrA(item, GWLP_WNDPROC), before);
    EXPECT_EQ(GetWindowLongPtrA(item, GWLP_USERDATA), 0);
    SendMessageA(item, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageA(item, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(CheckBoxTest, StaysItsOwnersWithoutControl) {
    kx::Window nowhere;
    CheckBox* const boxes[] = {new CheckBox(&parent_, 77), new CheckBox(nullptr, 77),
                               new CheckBox(&nowhere, 77), new CheckBox(module_, &nowhere, 77, 0, 0, 10, 10)};
    for (CheckBox* box : boxes) {
        kx::test::WatchDeletion(box);
        EXPECT_EQ(box->Handle(), nullptr);
        EXPECT_FALSE(box->DeletesItself());
        box->Check();
        box->SetIndeterminate();
        EXPECT_FALSE(box->IsChecked());
        EXPECT_FALSE(box->SetIcon({}));
        box->SetBackground(0x123456);
        EXPECT_EQ(box->OnCtlColor(nullptr, nullptr), nullptr);
    }
    DestroyParent();
    for (CheckBox* box : boxes) {
        EXPECT_EQ(kx::test::Deletions(box), 0);
        delete box;
    }
}

kx::UniqueIcon NewIcon() {
    const BYTE bits[16 * 16 / 8] = {};
    return kx::UniqueIcon(CreateIcon(nullptr, 16, 16, 1, 1, bits, bits));
}

TEST_F(CheckBoxTest, KeepsItsIconUntilTheNextOne) {
    const HWND item = NewItem("BUTTON", BS_PUSHBUTTON | BS_ICON, 1);
    CheckBox& box = *new CheckBox(&parent_, 1);
    ICONINFO info{};
    const HICON first = NewIcon().release();
    EXPECT_TRUE(box.SetIcon(kx::UniqueIcon(first)));
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageA(item, BM_GETIMAGE, IMAGE_ICON, 0)), first);
    const HICON second = NewIcon().release();
    EXPECT_TRUE(box.SetIcon(kx::UniqueIcon(second)));
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageA(item, BM_GETIMAGE, IMAGE_ICON, 0)), second);
    EXPECT_FALSE(GetIconInfo(first, &info));
    DestroyParent();
    EXPECT_FALSE(GetIconInfo(second, &info));
}

TEST_F(CheckBoxTest, LeavesNoObjectsBehind) {
    kx::test::GuiObjects before{};
    for (int i = 0; i < 80; ++i) {
        CheckBox& box = *new CheckBox(module_, &parent_, 5, 0, 0, 10, 10);
        box.SetBackground(static_cast<COLORREF>(i));
        box.SetBackground(static_cast<COLORREF>(i + 1));
        box.SetIcon(NewIcon());
        box.Destroy();
        if (i == 20) {
            before = kx::test::CountGuiObjects();
        }
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
}

}  // namespace
