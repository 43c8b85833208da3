#include "lib/windows/edit_box.h"

#include <richedit.h>

#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::EditBox;
using kx::test::Command;

class EditBoxTest : public kx::test::ControlTest {};

TEST_F(EditBoxTest, IsCreatedAsMultiLineEdit) {
    const EditBox edit(module_, &parent_, 33831, 1, 2, 100, 50);
    EXPECT_EQ(kx::test::ClassOf(edit.Handle()), "Edit");
    // The class takes the border for itself when it has a client edge.
    EXPECT_EQ(kx::test::StyleOf(edit.Handle()) | WS_BORDER, 0x50810044u);
    EXPECT_NE(kx::test::ExtendedStyleOf(edit.Handle()) & WS_EX_CLIENTEDGE, 0u);
    EXPECT_EQ(kx::test::TextOf(edit.Handle()), "");
    EXPECT_EQ(GetDlgCtrlID(edit.Handle()), 33831);
}

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

TEST_F(EditBoxTest, SelectsAndLocates) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    edit.SetText("abcdef");
    edit.SetSelection(2, 4);
    EXPECT_EQ(edit.GetSelection().start, 2);
    EXPECT_EQ(edit.GetSelection().end, 4);
    edit.SetSelection(0, -1);
    EXPECT_EQ(edit.GetSelection().end, 6);
    edit.Deselect();
    EXPECT_EQ(edit.GetSelection().start, edit.GetSelection().end);
    const POINT first = edit.PositionOfChar(0);
    const POINT fourth = edit.PositionOfChar(3);
    EXPECT_GT(fourth.x, first.x);
    EXPECT_EQ(fourth.y, first.y);
    EXPECT_EQ(edit.PositionOfChar(100).x, -1);
    EXPECT_EQ(edit.PositionOfChar(100).y, -1);
}

TEST_F(EditBoxTest, BecomesReadOnlyAndBack) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    EXPECT_TRUE(edit.SetReadOnly(true));
    EXPECT_NE(kx::test::StyleOf(edit.Handle()) & ES_READONLY, 0u);
    EXPECT_TRUE(edit.SetReadOnly(false));
    EXPECT_EQ(kx::test::StyleOf(edit.Handle()) & ES_READONLY, 0u);
}

// A control that takes formats, and keeps the last one.
struct ReceivedFormat {
    WPARAM scope;
    CHARFORMATA format;
};
ReceivedFormat g_received;

LRESULT CALLBACK TakeFormat(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == EM_SETCHARFORMAT) {
        g_received = {wParam, *reinterpret_cast<const CHARFORMATA*>(lParam)};
        return TRUE;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(EditBoxTest, FormatsTheSelection) {
    const HWND item = NewItem("STATIC", 0, 8);
    SetWindowLongPtrA(item, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TakeFormat));
    EditBox edit(&parent_, 8);
    const struct {
        const char* name;
        bool (*set)(EditBox&);
        DWORD mask;
        DWORD effects;
        COLORREF color;
    } rows[] = {
        {"bold", [](EditBox& e) { return e.SetBold(); }, 1, 1, 0},
        {"plain", [](EditBox& e) { return e.SetPlain(); }, 0, 0, 0},
        {"underline", [](EditBox& e) { return e.SetUnderline(); }, 4, 4, 0},
        {"colour", [](EditBox& e) { return e.SetColor(0x0000FF); }, 0x40000000, 0, 0x0000FF},
    };
    for (const auto& row : rows) {
        g_received = {};
        EXPECT_TRUE(row.set(edit)) << row.name;
        EXPECT_EQ(g_received.scope, static_cast<WPARAM>(SCF_SELECTION)) << row.name;
        EXPECT_EQ(g_received.format.cbSize, 60u) << row.name;
        EXPECT_EQ(g_received.format.dwMask, row.mask) << row.name;
        EXPECT_EQ(g_received.format.dwEffects, row.effects) << row.name;
        EXPECT_EQ(g_received.format.crTextColor, row.color) << row.name;
    }
}

TEST_F(EditBoxTest, TellsItsNotifications) {
    const EditBox edit(module_, &parent_, 33831, 0, 0, 10, 10);
    const struct {
        unsigned code;
        bool (EditBox::*test)(WPARAM) const;
    } rows[] = {{0x100, &EditBox::IsSetFocus},
                {0x200, &EditBox::IsKillFocus},
                {0x300, &EditBox::IsChange},
                {0x400, &EditBox::IsUpdate}};
    for (const auto& row : rows) {
        for (unsigned code = 0; code <= 0x500; code += 0x100) {
            EXPECT_EQ((edit.*row.test)(Command(33831, code)), code == row.code) << row.code << " at " << code;
        }
        EXPECT_FALSE((edit.*row.test)(Command(33830, row.code)));
    }
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
