// The library panel of the editor.
#include <cstring>

#include "tests/windows/statement_editor/editor_fixture.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditorPanel : public StatementEditorTest {
  protected:
    static HWND Tree(HWND editor) { return Item(editor, kPanelId); }
    static HTREEITEM Next(HWND editor, UINT code, HTREEITEM item) {
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(Tree(editor), TVM_GETNEXTITEM, code, reinterpret_cast<LPARAM>(item)));
    }
    // The first section and its statements, opened.
    static HTREEITEM FirstStatement(HWND editor) {
        const HTREEITEM section = Next(editor, TVGN_ROOT, nullptr);
        SendMessageA(Tree(editor), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(section));
        return Next(editor, TVGN_CHILD, section);
    }
    static POINT MiddleOf(HWND editor, HTREEITEM item) {
        RECT area{};
        std::memcpy(&area, &item, sizeof item);
        SendMessageA(Tree(editor), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    }
    static void TogglePanel(HWND editor) { ClickOn(editor, Item(editor, kPanelButtonId)); }
};

TEST_F(EditorPanel, OpensOnTheRightOfTheEditAndWidensTheWindowToTheLeft) {
    Run(kStatementMode, [&](HWND editor) {
        const RECT closed = ScreenPlaceOf(editor);
        TogglePanel(editor);
        const RECT opened = ScreenPlaceOf(editor);
        EXPECT_EQ(opened, (RECT{closed.left - 300, closed.top, closed.right, closed.bottom}));
        EXPECT_EQ(PlaceOf(editor, Item(editor, kEditId)), (RECT{0, 0, 370, 160}));
        EXPECT_EQ(PlaceOf(editor, Tree(editor)), (RECT{370, 0, 670, 160}));
        EXPECT_EQ(PlaceOf(editor, Item(editor, IDOK)), (RECT{670, 0, 700, 20}));
        EXPECT_EQ(PlaceOf(editor, Item(editor, IDCANCEL)), (RECT{670, 20, 700, 40}));
        EXPECT_EQ(PlaceOf(editor, Item(editor, kPanelButtonId)), (RECT{670, 140, 700, 160}));
        EXPECT_EQ(ItemText(editor, kPanelButtonId), "<<");
        EXPECT_EQ(SendMessageA(Tree(editor), TVM_GETCOUNT, 0, 0), 6);

        TogglePanel(editor);
        EXPECT_EQ(ScreenPlaceOf(editor), closed);
        EXPECT_EQ(Tree(editor), nullptr);
        EXPECT_EQ(PlaceOf(editor, Item(editor, IDOK)), (RECT{370, 0, 400, 20}));
        EXPECT_EQ(PlaceOf(editor, Item(editor, kPanelButtonId)), (RECT{370, 140, 400, 160}));
        EXPECT_EQ(ItemText(editor, kPanelButtonId), ">>");
    });
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(EditorPanel, InsertsTheEntryThatIsDoubleClicked) {
    Run(kStatementMode, [&](HWND editor) {
        TypeText(editor, " Con ");
        TogglePanel(editor);
        const HTREEITEM statement = FirstStatement(editor);
        DoubleClickAt(editor, Tree(editor), MiddleOf(editor, statement));
        EXPECT_EQ(EditText(editor), "Testo di prima. Con Ritmo sinusale. ");
        EXPECT_EQ(GetFocus(), Item(editor, kEditId));

        // Enter in the panel is no OK.
        SetFocus(Tree(editor));
        SendMessageA(Tree(editor), TVM_SELECTITEM, TVGN_CARET,
                     reinterpret_cast<LPARAM>(Next(editor, TVGN_NEXT, statement)));
        PressKey(editor, VK_RETURN);
        EXPECT_TRUE(IsWindowVisible(editor));
        EXPECT_EQ(EditText(editor), "Testo di prima. Con Ritmo sinusale. Ritmo giunzionale. ");
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0),
                 "Testo di prima. Con Ritmo sinusale. Ritmo giunzionale. ");
    EXPECT_TRUE(record_->IsOverread());
}

TEST_F(EditorPanel, CompletesNothingWhileItIsOpen) {
    Run(kStatementMode, [&](HWND editor) {
        TogglePanel(editor);
        SetFocus(Item(editor, kEditId));
        TypeText(editor, "\rrit");
        EXPECT_FALSE(IsProposing());
        TogglePanel(editor);
        SetFocus(Item(editor, kEditId));
        SendMessageA(Item(editor, kEditId), EM_SETSEL, 8192, 8192);
        TypeText(editor, "m");
        EXPECT_TRUE(IsProposing());
    });
}

TEST_F(EditorPanel, ReportsATextOfItsButtonThatItDoesNotKnow) {
    const struct {
        const char* text;
        const char* report;
    } rows[] = {{">", "LOGOEMERROR \"interp\" 2052 \"GetText\""},
                {"", "LOGOEMERROR \"interp\" 2052 \"GetText\""},
                {">>>>>>>>>>>>", "LOGOEMERROR \"interp\" 2052 \"GetText\""},
                {"><", "LOGOEMERROR \"interp\" 2051 \"GetText value\""}};
    Run(kStatementMode, [&](HWND editor) {
        for (const auto& row : rows) {
            SetWindowTextA(Item(editor, kPanelButtonId), row.text);
            TogglePanel(editor);
            EXPECT_THAT(Reports(), ElementsAre(row.report)) << row.text;
            EXPECT_EQ(Tree(editor), nullptr);
        }
    });
}

}  // namespace
}  // namespace kx::test
