// Typing into the statement: what the completion proposes and inserts, and what it leaves alone.
#include "tests/windows/interpretation/interpretation_pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Completion : public InterpretationTest {
  protected:
    static HWND Popup() { return FindWindowA("CompletionPopup", nullptr); }
    static HWND List() { return FindWindowExA(Popup(), nullptr, WC_LISTVIEWA, nullptr); }
    static bool IsProposing() { return Popup() != nullptr && IsWindowVisible(Popup()); }
    // The proposed texts; the rows carry their addresses.
    static std::vector<std::string> Proposed() {
        std::vector<std::string> texts;
        for (int row = 0; row < static_cast<int>(SendMessageA(List(), LVM_GETITEMCOUNT, 0, 0)); ++row) {
            LVITEMA item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            SendMessageA(List(), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
            texts.emplace_back(reinterpret_cast<const char*>(item.lParam));
        }
        return texts;
    }
    static int SelectedRow() { return static_cast<int>(SendMessageA(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)); }
    int Caret() { return LOWORD(SendMessageA(Edit(), EM_GETSEL, 0, 0)); }
};

TEST_F(Completion, ProposesKeepsTheFocusAndInserts) {
    SetStatement("prima\r\n\r\ndopo");
    Open();
    Select(7, 7);
    Type("ri");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo sinusale.", "Ritmo giunzionale.", "Ritmo atriale."));
    EXPECT_EQ(SendMessageA(List(), LVM_GETCOLUMNWIDTH, 0, 0), 230);
    EXPECT_EQ(SendMessageA(List(), LVM_GETCOLUMNWIDTH, 1, 0), -1);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_EQ(GetActiveWindow(), HostWindow::Frame());
    Type("tmo g");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo giunzionale."));
    Type("\b");
    EXPECT_EQ(Proposed().size(), 3u);
    for (const int row : {1, 2, 2}) {
        Press(VK_DOWN);
        EXPECT_EQ(SelectedRow(), row);
    }
    Press(VK_UP);
    Type("\r");
    EXPECT_EQ(Statement(), "prima\r\nRitmo giunzionale.\r\ndopo");
    EXPECT_EQ(Caret(), 7 + 18);
    EXPECT_EQ(Popup(), nullptr);
    EXPECT_EQ(Stored(), Statement());
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
}

TEST_F(Completion, FollowsTheTyping) {
    const struct {
        const char* name;
        const char* before;  // typed first; the popup is closed by Esc
        const char* typed;
        const char* statement;
        bool proposes;
    } rows[] = {
        {"a code", "", "rs", "Ritmo sinusale.", false},
        {"a code in capitals", "", "RG", "Ritmo giunzionale.", false},
        {"a code on a later line", "x\r", "ra", "x\r\nRitmo atriale.", false},
        {"a code after a text", "x ", "rs", "x Ritmo sinusale.", false},
        {"a text that no entry has", "", "zz", "zz", false},
        {"a blank", "", " ", " ", false},
        {"a blank that ends the match", "", "ri ", "ri ", false},
        {"a blank of the text", "", "Asse ", "Asse ", true},
        {"Enter without popup", "zz", "\r", "zz\r\n", false},
        {"Enter chooses the first", "", "ri\r", "Ritmo sinusale.", false},
        {"all taken back", "", "ri\b\b", "", false},
    };
    for (const auto& row : rows) {
        SetStatement("");
        Open();
        Type(row.before);
        Press(VK_ESCAPE);
        EXPECT_FALSE(IsProposing());
        Type(row.typed);
        EXPECT_EQ(Statement(), row.statement) << row.name;
        EXPECT_EQ(IsProposing(), row.proposes) << row.name;
        EXPECT_EQ(Stored(), Statement()) << row.name;
        Close();
        EXPECT_EQ(Popup(), nullptr) << row.name;
    }
}

// Characters that come faster than the choice of their code: what was chosen meanwhile is not chosen.
TEST_F(Completion, ChoosesNothingFromAnotherList) {
    library_.LayFile("resting.htm", "<BODY><H1>A</H1><P>Ritmo sinusale.^SR</P><P>Onda P assente.^OPA</P><P>Srotolato</P></BODY>");
    const struct {
        const char* burst;
        const char* statement;
    } rows[] = {{"sr", "Ritmo sinusale."}, {"sr on", "sr on"}, {"sr o", "sr o"}, {"sro", "sro"}};
    for (const auto& row : rows) {
        SetStatement("");
        Open();
        for (const char* c = row.burst; *c != '\0'; ++c) {
            SendMessageA(Edit(), WM_CHAR, static_cast<unsigned char>(*c), 1);
        }
        Pump();
        EXPECT_EQ(Statement(), row.statement);
        Close();
    }
}

TEST_F(Completion, SeesAFileThatWasSavedMeanwhile) {
    Open();
    Type("ri\x1B");
    library_.LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Ritmo nuovo e diverso.</P></BODY>");
    Type(" ri");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo nuovo e diverso."));
    Type("\r ");
    Sleep(20);  // the same size at another time
    library_.LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Ritmo nuovo e medesimo</P></BODY>");
    Type("ri");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo nuovo e medesimo"));
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
    Type("\x1B ");
    DeleteFileA(Beside("resting.htm").c_str());
    Type("ri ri");
    EXPECT_FALSE(IsProposing());
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 299 \"no read\"", "LOGOEMERROR \"interp\" 1099 \"no read\""));
}

TEST_F(Completion, ClosesWhenTheCaretLeaves) {
    const struct {
        const char* name;
        std::function<void()> act;
        bool open;
    } rows[] = {
        {"before the first typed letter", [this] { Press(VK_HOME); }, true},
        {"to the line above", [this] { Press(VK_LEFT), Press(VK_LEFT), Press(VK_LEFT); }, false},
        {"a selection", [this] { Select(0, 2), Press(VK_SHIFT); }, false},
        {"another control", [this] { SetFocus(pane_->Item(IDC_INTERP_REVIEWER)); }, false},
        {"a change far away", [this] { Select(0, 0), Type("q"); }, false},
        {"a new size", [this] { SetWindowPos(*pane_, nullptr, 0, 0, 760, 500, SWP_NOMOVE); }, false},
        {"Cancel", [this] { SendMessageA(*pane_, WM_COMMAND, IDCANCEL, 0); }, false},
    };
    for (const auto& row : rows) {
        SetStatement("x\r\n");
        Open();
        Select(3, 3);
        Type("ri");
        ASSERT_TRUE(IsProposing()) << row.name;
        row.act();
        Pump();
        EXPECT_EQ(IsProposing(), row.open) << row.name;
        Close();
    }
}

// Undo gives back what was typed and does not complete it again.
TEST_F(Completion, IsUndone) {
    for (const char* const typed : {"rs", "ri\r"}) {
        SetStatement("");
        Open();
        Type(typed);
        EXPECT_EQ(Statement(), "Ritmo sinusale.");
        Type("\x1A");
        EXPECT_EQ(Statement(), std::string(typed, 2));
        EXPECT_FALSE(IsProposing());
        EXPECT_EQ(Stored(), Statement());
        Close();
    }
}

// A text that would not fit in what is looked at, or in the record, is left as it is, to its last character.
TEST_F(Completion, LeavesLongTextsWhole) {
    const struct {
        int before;
        int behind;
        bool inserted;
    } rows[] = {{0, 1008, true}, {0, 1009, false}, {1005, 0, true}, {1018, 0, false}, {1100, 0, false}, {0, 4000, false}};
    for (const auto& row : rows) {
        const std::string before = row.before > 0 ? std::string(row.before - 2, 'x') + "\r\n" : "";
        const std::string behind(row.behind, 'y');
        SetStatement(before + behind);
        Open();
        Select(row.before, row.before);
        Type("rs");
        EXPECT_EQ(Statement(), before + (row.inserted ? "Ritmo sinusale." : "rs") + behind) << row.before << " " << row.behind;
        EXPECT_EQ(Stored(), Statement());
        Close();
    }
    SetStatement(std::string(4094, 'x'));
    Open();
    Select(4094, 4094);
    Type("abc");
    EXPECT_EQ(Stored(), std::string(4094, 'x') + "a");
}

}  // namespace
}  // namespace kx::test
