#include "lib/windows/edit_box.h"

#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::EditBox;

class EditBoxTest : public kx::test::ControlTest {};

TEST_F(EditBoxTest, AppendsAtTheEnd) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    edit.SetText("Ritmo");
    edit.SetSelection(0, 2);
    edit.Append(" sinusale");
    EXPECT_EQ(kx::test::TextOf(edit.Handle()), "Ritmo sinusale");
    EXPECT_EQ(edit.GetSelection().start, 14);
    EXPECT_EQ(edit.GetSelection().end, 14);
    EXPECT_TRUE(edit.SendMsg(EM_CANUNDO));
    edit.SendMsg(EM_UNDO);
    EXPECT_EQ(kx::test::TextOf(edit.Handle()), "Ritmo");
}

TEST_F(EditBoxTest, LeavesATextAloneThatItShowsAlready) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    const std::string longText(300, 'x');
    for (const char* text : {"412", "412 ms\r\n-73 uV", longText.c_str()}) {
        edit.ShowText(text);
        EXPECT_EQ(kx::test::TextOf(edit.Handle()), text);
    }
    edit.ShowNumber(-412);
    // Setting a text takes the selection away.
    edit.SetSelection(1, 3);
    edit.ShowNumber(-412);
    EXPECT_EQ(edit.GetSelection().end, 3);
    edit.ShowNumber(-41);
    EXPECT_EQ(kx::test::TextOf(edit.Handle()), "-41");
}

TEST_F(EditBoxTest, EndsItsControl) {
    HWND window = nullptr;
    {
        const EditBox edit(module_, &parent_, 5, 1, 2, 100, 20);
        window = edit.Handle();
    }
    EXPECT_FALSE(IsWindow(window));
    EditBox missing(&parent_, 5);
    missing.Append("nowhere");
    EXPECT_FALSE(missing.SetBold());
    EXPECT_EQ(missing.GetSelection().end, 0);
}

}  // namespace
