// Typing into the statement: what the completion proposes and inserts, and what it leaves alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Completion : public kx::test::InterpretationPane {
  protected:
    // The popup's window; null when there is none.
    static HWND Popup() { return FindWindowA("CompletionPopup", nullptr); }
    static HWND List() { return FindWindowExA(Popup(), nullptr, WC_LISTVIEWA, nullptr); }
    static bool IsProposing() { return Popup() != nullptr && IsWindowVisible(Popup()); }
    // The proposed texts; the rows carry their addresses.
    static std::vector<std::string> Proposed() {
        std::vector<std::string> texts;
        const auto rows = static_cast<int>(SendMessageA(List(), LVM_GETITEMCOUNT, 0, 0));
        for (int row = 0; row < rows; ++row) {
            LVITEMA item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            SendMessageA(List(), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
            texts.emplace_back(reinterpret_cast<const char*>(item.lParam));
        }
        return texts;
    }
    static int SelectedRow() {
        return static_cast<int>(
            SendMessageA(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    void ClickRow(int row) {
        RECT area{};
        area.left = LVIR_BOUNDS;
        SendMessageA(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
        const LPARAM point = MAKELPARAM(area.left + 20, (area.top + area.bottom) / 2);
        SendMessageA(List(), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageA(List(), WM_LBUTTONUP, 0, point);
        Pump();
    }
    void Select(int start, int end) { SendMessageA(Edit(), EM_SETSEL, static_cast<WPARAM>(start), end); }
    int Caret() {
        DWORD start = 0;
        SendMessageA(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        return static_cast<int>(start);
    }
};

TEST_F(Completion, ProposesAndKeepsTheFocus) {
    Open();
    Type("ri");
    ASSERT_TRUE(IsProposing());
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo sinusale.", "Ritmo giunzionale.", "Ritmo atriale."));
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_EQ(GetActiveWindow(), parent_.handle);
    EXPECT_EQ(Statement(), "ri");
    Type("tmo g");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo giunzionale."));
    Type("\r");
    EXPECT_FALSE(IsProposing());
    EXPECT_EQ(Statement(), "Ritmo giunzionale.");
    EXPECT_EQ(Caret(), 18);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_STREQ(record_->InterpretationText(nullptr, 0), "Ritmo giunzionale.");
    EXPECT_THAT(Reports(), IsEmpty());
}

// Codes of three entries and texts of others begin alike: the codes first, five in all.
TEST_F(Completion, ListsCodesBeforeTexts) {
    LayFile("resting.htm",
            "<body><H1>A</H1><P>ab uno</P><P>Zeta^ab1</P><P>AB due^q</P><P>Eta^aB2</P><P>ab tre</P>"
            "<P>ab quattro</P><P>Teta^abx</P></body>");
    Open();
    Type("Ab");
    EXPECT_THAT(Proposed(), ElementsAre("Zeta", "Eta", "Teta", "ab uno", "AB due"));
}

struct Typing {
    const char* name;
    const char* before;  // typed first; the popup is closed by Esc
    const char* typed;
    const char* statement;
    bool proposes;
};

TEST_F(Completion, FollowsTheTyping) {
    const Typing rows[] = {
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
        {"a text after words", "Normale: ", "asse\r", "Normale: Asse normale", false},
        {"a tab", "", "\t", "\t", false},
    };
    for (const Typing& row : rows) {
        Open();
        Type(row.before);
        Press(VK_ESCAPE);
        Type(row.typed);
        EXPECT_EQ(Statement(), row.statement) << row.name;
        EXPECT_EQ(IsProposing(), row.proposes) << row.name;
        EXPECT_EQ(record_->InterpretationText(nullptr, 0), Statement()) << row.name;
        Close();
        EXPECT_EQ(Popup(), nullptr) << row.name;
        record_->SetOriginalInterpretation(nullptr, "");
    }
}

TEST_F(Completion, BackspaceWidensTheMatch) {
    Open();
    Type("ritmo g");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo giunzionale."));
    Type("\b");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo sinusale.", "Ritmo giunzionale.", "Ritmo atriale."));
    Type("\b\b\b\b\b");
    EXPECT_EQ(Statement(), "r");
    EXPECT_TRUE(IsProposing());
    Type("\b");
    EXPECT_FALSE(IsProposing());
    EXPECT_EQ(Statement(), "");
}

TEST_F(Completion, KeysMoveInTheList) {
    Open();
    Type("ri");
    for (const int row : {1, 2, 2}) {
        Press(VK_DOWN);
        EXPECT_EQ(SelectedRow(), row);
    }
    Press(VK_UP);
    EXPECT_EQ(Caret(), 2) << "the caret stays";
    Type("\r");
    EXPECT_EQ(Statement(), "Ritmo giunzionale.");

    Type("\rri");
    EXPECT_TRUE(IsProposing());
    Press(VK_ESCAPE);
    EXPECT_FALSE(IsProposing());
    EXPECT_TRUE(IsWindowVisible(pane_));
    EXPECT_EQ(Statement(), "Ritmo giunzionale.\r\nri");
}

TEST_F(Completion, AClickChooses) {
    Open();
    Type("Oggi: ri");
    ASSERT_TRUE(IsProposing());
    ClickRow(2);
    EXPECT_EQ(Statement(), "Oggi: Ritmo atriale.");
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_FALSE(IsProposing());
}

TEST_F(Completion, InsertsBeforeWhatFollows) {
    record_->SetOriginalInterpretation(nullptr, "prima\r\n\r\ndopo");
    Open();
    Select(7, 7);
    Type("ri\r");
    EXPECT_EQ(Statement(), "prima\r\nRitmo sinusale.\r\ndopo");
    EXPECT_EQ(Caret(), 7 + 15);
}

TEST_F(Completion, ClosesWhenTheCaretLeaves) {
    const struct {
        const char* name;
        std::function<void()> act;
        bool open;
    } rows[] = {
        {"Home", [this] { Press(VK_HOME); }, true},  // before the first typed letter
        {"to the line above", [this] { Press(VK_LEFT), Press(VK_LEFT), Press(VK_LEFT); }, false},
        {"a selection", [this] { Select(0, 2), Press(VK_SHIFT); }, false},
        {"another control", [this] { SetFocus(kx::test::Item(pane_, IDC_INTERP_REVIEWER)); }, false},
        {"a change far away", [this] { Select(0, 0), Type("q"); }, false},
        {"a new size", [this] { SetWindowPos(pane_, nullptr, 0, 0, 760, 500, SWP_NOMOVE); }, false},
        {"Cancel", [this] { SendMessageA(pane_, WM_COMMAND, IDCANCEL, 0); }, false},
    };
    for (const auto& row : rows) {
        record_->SetOriginalInterpretation(nullptr, "x\r\n");
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
    const struct {
        const char* typed;
        const char* undone;
    } rows[] = {{"rs", "rs"}, {"ri\r", "ri"}};
    for (const auto& row : rows) {
        Open();
        Type(row.typed);
        EXPECT_EQ(Statement(), "Ritmo sinusale.");
        SendMessageA(Edit(), WM_CHAR, 'Z' - '@', 1);
        Pump();
        EXPECT_EQ(Statement(), row.undone);
        EXPECT_FALSE(IsProposing());
        EXPECT_STREQ(record_->InterpretationText(nullptr, 0), row.undone);
        Close();
        record_->SetOriginalInterpretation(nullptr, "");
    }
}

// A text that would not fit in what is looked at is left as it is, to its last character.
TEST_F(Completion, LeavesLongTextsWhole) {
    const struct {
        int before;
        int behind;
        bool inserted;
    } rows[] = {{0, 1008, true},  {0, 1009, false}, {1005, 0, true},
                {1018, 0, false}, {1100, 0, false}, {0, 4000, false}};
    for (const auto& row : rows) {
        const std::string before = row.before > 0 ? std::string(row.before - 2, 'x') + "\r\n" : "";
        const std::string behind(row.behind, 'y');
        record_->SetOriginalInterpretation(nullptr, (before + behind).c_str());
        Open();
        Select(row.before, row.before);
        Type("rs");
        EXPECT_EQ(Statement(), before + (row.inserted ? "Ritmo sinusale." : "rs") + behind)
            << row.before << " before, " << row.behind << " behind";
        EXPECT_FALSE(IsProposing());
        EXPECT_EQ(record_->InterpretationText(nullptr, 0), Statement());
        Close();
    }
}

TEST_F(Completion, TypesNoMoreThanARecordHolds) {
    record_->SetOriginalInterpretation(nullptr, std::string(4094, 'x').c_str());
    Open();
    Select(4094, 4094);
    Type("abc");
    EXPECT_EQ(Statement(), std::string(4094, 'x') + "a");
    EXPECT_EQ(record_->InterpretationText(nullptr, 0), Statement());
}

// Characters that come faster than the choice of their code: what was chosen meanwhile is not chosen.
TEST_F(Completion, ChoosesNothingFromAnotherList) {
    LayFile("resting.htm",
            "<BODY><H1>A</H1><P>Ritmo sinusale.^SR</P><P>Onda P assente.^OPA</P><P>Srotolato</P></BODY>");
    const struct {
        const char* burst;
        const char* statement;
    } rows[] = {{"sr", "Ritmo sinusale."}, {"sr on", "sr on"}, {"sr o", "sr o"}, {"sro", "sro"}};
    for (const auto& row : rows) {
        Open();
        for (const char* c = row.burst; *c != '\0'; ++c) {
            SendMessageA(Edit(), WM_CHAR, static_cast<unsigned char>(*c), 1);
        }
        Pump();
        EXPECT_EQ(Statement(), row.statement);
        Close();
        record_->SetOriginalInterpretation(nullptr, "");
    }
}

TEST_F(Completion, SeesAFileThatWasSavedMeanwhile) {
    Open();
    Type("ri\x1B");
    LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Ritmo nuovo e diverso.</P></BODY>");
    Type(" ri");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo nuovo e diverso."));
    Type("\r ");
    // The same size at another time.
    Sleep(20);
    LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Ritmo nuovo e medesimo</P></BODY>");
    Type("ri");
    EXPECT_THAT(Proposed(), ElementsAre("Ritmo nuovo e medesimo"));
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Completion, StandsAtItsWord) {
    const auto place = [] {
        RECT area{};
        GetWindowRect(Popup(), &area);
        return POINT{area.left, area.top};
    };
    std::string lines;
    for (int i = 0; i < 40; ++i) {
        lines += std::to_string(i) + "\r\n";
    }
    record_->SetOriginalInterpretation(nullptr, lines.c_str());
    Open();
    Select(15, 15);
    Type("ri");
    ASSERT_TRUE(IsProposing());
    const POINT before = place();
    RECT host{};
    GetWindowRect(static_cast<HWND>(parent_.handle), &host);
    const auto moveHost = [&](int x, int y) {
        SetWindowPos(static_cast<HWND>(parent_.handle), nullptr, static_cast<int>(host.left) + x,
                     static_cast<int>(host.top) + y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    moveHost(30, 20);
    EXPECT_EQ(place().x - before.x, 30);
    EXPECT_EQ(place().y - before.y, 20);
    moveHost(0, 0);
    EXPECT_EQ(place().y, before.y);
    SendMessageA(Edit(), EM_LINESCROLL, 0, 1);
    EXPECT_LT(place().y, before.y);
    SendMessageA(Edit(), EM_LINESCROLL, 0, -1);
    EXPECT_EQ(place().y, before.y);
    SendMessageA(Edit(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_FALSE(IsProposing()) << "the word is out of sight";
    Type("\x1B\b");
    ASSERT_TRUE(IsProposing());
    ShowWindow(pane_, SW_HIDE);
    EXPECT_FALSE(IsProposing());
    ShowWindow(pane_, SW_SHOWNA);
}

TEST_F(Completion, WorksWithoutStatements) {
    const struct {
        std::uint32_t type;
        std::vector<std::string> reports;
    } rows[] = {
        {KX_TEST_HIGH_RESOLUTION, {"LOGOEMERROR \"interp\" 1071 \"ptype invalid and !is_phys\""}},
        {KX_TEST_RESTING,
         {"LOGOEMERROR \"interp\" 299 \"no read\"", "LOGOEMERROR \"interp\" 1099 \"no read\""}},
    };
    RemoveFile("resting.htm");
    for (const auto& row : rows) {
        record_->SetTestType(row.type);
        Open();
        Reports();
        Type("ritmo");
        EXPECT_FALSE(IsProposing());
        EXPECT_EQ(Reports(), row.reports) << row.type;
        Close();
    }
}

TEST_F(Completion, MayEndThePane) {
    const struct {
        const char* name;
        std::function<void()> act;
    } rows[] = {
        {"by a code", [this] { Type("s"); }},
        {"by Enter", [this] { SendMessageA(Edit(), WM_CHAR, '\r', 1); }},
        {"by a click", [this] { ClickRow(1); }},
        {"by a line break of the program",
         [this] { SendMessageA(Edit(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("\r\n")); }},
    };
    for (const auto& row : rows) {
        record_->SetOriginalInterpretation(nullptr, "");
        Open();
        Type("r");
        ASSERT_TRUE(IsProposing()) << row.name;
        onChange_ = [this] {
            if (Statement().size() > 3) {
                onChange_ = nullptr;
                DestroyWindow(pane_);
            }
        };
        row.act();
        Pump();
        EXPECT_FALSE(IsWindow(pane_)) << row.name;
        EXPECT_EQ(Popup(), nullptr) << row.name;
        onChange_ = nullptr;
        EXPECT_GT(std::string(record_->InterpretationText(nullptr, 0)).size(), 3u) << row.name;
    }
}

}  // namespace
