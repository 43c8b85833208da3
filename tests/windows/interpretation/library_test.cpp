// The comment library and what is inserted from it and from the automatic interpretation.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogs/resources/dictionary_ids.h"
#include "lib/annotation_store.h"
#include "tests/rig/input.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CommentLibrary : public kx::test::InterpretationPane {
  protected:
    HWND Tree() { return kx::test::Item(pane_, IDC_INTERP_LIBRARY); }
    HTREEITEM Next(UINT which, HTREEITEM item) {
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(Tree(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    }
    std::string Label(HTREEITEM item) {
        char text[256] = {};
        TVITEMA asked{};
        asked.mask = TVIF_TEXT;
        asked.hItem = item;
        asked.pszText = text;
        asked.cchTextMax = sizeof text;
        SendMessageA(Tree(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&asked));
        return text;
    }
    // The sections, and behind each after a blank its entries.
    std::vector<std::string> Labels() {
        std::vector<std::string> labels;
        for (HTREEITEM section = Next(TVGN_ROOT, nullptr); section != nullptr;
             section = Next(TVGN_NEXT, section)) {
            labels.push_back(Label(section));
            for (HTREEITEM entry = Next(TVGN_CHILD, section); entry != nullptr;
                 entry = Next(TVGN_NEXT, entry)) {
                labels.push_back(" " + Label(entry));
            }
        }
        return labels;
    }
    void Choose(const std::string& label) {
        for (HTREEITEM section = Next(TVGN_ROOT, nullptr); section != nullptr;
             section = Next(TVGN_NEXT, section)) {
            for (HTREEITEM item = section; item != nullptr;
                 item = Next(item == section ? TVGN_CHILD : TVGN_NEXT, item)) {
                if (Label(item) == label) {
                    SendMessageA(Tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
                    return;
                }
            }
        }
        FAIL() << label;
    }
    void Select(int start, int end) { SendMessageA(Edit(), EM_SETSEL, static_cast<WPARAM>(start), end); }
    void Notify(UINT code) {
        NMHDR header{Tree(), IDC_INTERP_LIBRARY, code};
        SendMessageA(pane_, WM_NOTIFY, IDC_INTERP_LIBRARY, reinterpret_cast<LPARAM>(&header));
        Pump();
    }
    std::string Stored() { return record_->InterpretationText(nullptr, 0); }
};

TEST_F(CommentLibrary, ShowsTheStatementFile) {
    std::string many = "<BODY><H1>Molti</H1>";
    for (int i = 0; i < 70; ++i) {
        many += "<P>" + std::to_string(i) + "</P>";
    }
    std::vector<std::string> first64{"Molti"};
    for (int i = 0; i < 64; ++i) {
        first64.push_back(" " + std::to_string(i));
    }
    const struct {
        const char* name;
        std::string file;
        std::vector<std::string> labels;
    } rows[] = {
        {"sections",
         "<BODY><H1>A</H1><P>T^C</P><P>U</P><H1>Qualit\xE0</H1><P>V^^D</P></BODY>",
         {"A", " T [C]", " U", "Qualit\xE0", " V"}},
        {"small letters", "<body><H1>A</H1>", {"A"}},
        {"no body", "<H1>A</H1><P>T</P>", {}},
        {"hidden", "<BODY><H1>X</H1><P>T</P><H1>B</H1><P>X^C</P><P></P><P>W^X</P>", {"B", " W"}},
        {"70 entries", many, first64},
        {"empty", "", {}},
    };
    for (const auto& row : rows) {
        LayFile("resting.htm", row.file);
        Open();
        EXPECT_EQ(Labels(), row.labels) << row.name;
        EXPECT_THAT(Reports(), IsEmpty()) << row.name;
        Close();
    }
}

TEST_F(CommentLibrary, ReportsWhatItCannotShow) {
    LayFile("holter.htm", "<BODY><H1>H</H1>");
    const struct {
        std::uint32_t type;
        std::vector<std::string> reports;
    } rows[] = {
        {KX_TEST_HOLTER, {}},
        {KX_TEST_NEW, {"LOGOEMERROR \"interp\" 690 \"ptype\""}},
        {KX_TEST_HIGH_RESOLUTION, {"LOGOEMERROR \"interp\" 690 \"ptype\""}},
        {77, {"LOGOEMERROR \"interp\" 690 \"ptype\""}},
        {KX_TEST_RESTING,
         {"LOGOEMERROR \"interp\" 299 \"no read\"", "LOGOEMERROR \"interp\" 727 \"no read\""}},
    };
    RemoveFile("resting.htm");
    for (const auto& row : rows) {
        record_->SetTestType(row.type);
        ASSERT_NE(Open(), nullptr);
        EXPECT_EQ(Reports(), row.reports) << row.type;
        EXPECT_EQ(Labels().empty(), row.type != KX_TEST_HOLTER) << row.type;
        Close();
    }
}

// 32000 bytes of texts: what finds no room is left out, and a shorter one behind it finds some.
TEST_F(CommentLibrary, LeavesOutWhatThePoolCannotHold) {
    std::string file = "<BODY>";
    for (int section = 0; section < 5; ++section) {
        file += "<H1>" + std::string(127, static_cast<char>('a' + section)) + "</H1>";
        for (int entry = 0; entry < 49; ++entry) {
            file += "<P>" + std::string(127, 'e') + "</P>";
        }
    }
    // 250 texts of 128 bytes fill the pool but for nothing.
    LayFile("resting.htm", file + "<P>" + std::string(127, 'f') + "</P><H1>S</H1>");
    Open();
    EXPECT_EQ(Labels().size(), 250u);
    EXPECT_THAT(Reports(), ElementsAre("LOGMEMORYERROR \"interp\" 720", "LOGMEMORYERROR \"interp\" 723"));
    Close();
    LayFile("resting.htm", file.substr(0, file.size() - 8) + "</P><P>gggg</P><P>h</P>");
    Open();
    EXPECT_EQ(Labels().size(), 251u);
    EXPECT_EQ(Labels().back(), " h");
    EXPECT_THAT(Reports(), ElementsAre("LOGMEMORYERROR \"interp\" 720"));
}

TEST_F(CommentLibrary, InsertsTheSelectedEntry) {
    const struct {
        const char* name;
        std::function<void()> act;
        bool focusesTree = false;  // which selects the first section then
    } rows[] = {
        {"the button", [this] { Click(IDC_INTERP_INSERT_LIBRARY_ENTRY); }},
        {"a double click", [this] { Notify(static_cast<UINT>(NM_DBLCLK)); }},
        {"Enter", [this] { SendMessageA(Tree(), WM_KEYDOWN, VK_RETURN, 1), Pump(); }},
        {"Enter as the dialog manager tells it",
         [this] { SetFocus(Tree()), SendMessageA(pane_, WM_COMMAND, IDOK, 0), Pump(); }, true},
    };
    for (const auto& row : rows) {
        record_->SetOriginalInterpretation(nullptr, "Oggi ieri domani");
        Open();
        if (!row.focusesTree) {
            row.act();
            EXPECT_EQ(Statement(), "Oggi ieri domani") << row.name << ": nothing is selected yet";
        }
        Select(5, 9);
        Choose("Ritmo giunzionale. [RG]");
        SetFocus(Tree());
        row.act();
        EXPECT_EQ(Statement(), "Oggi Ritmo giunzionale.  domani") << row.name;
        EXPECT_EQ(Stored(), Statement()) << row.name;
        EXPECT_TRUE(record_->IsOverread()) << row.name;
        EXPECT_EQ(GetFocus(), Edit()) << row.name;
        SendMessageA(Edit(), EM_UNDO, 0, 0);
        EXPECT_EQ(Statement(), "Oggi ieri domani") << row.name;
        Close();
    }
}

TEST_F(CommentLibrary, InsertsEveryKindOfItem) {
    LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Nota [v1] a</P><P>Senza codice</P>");
    const struct {
        const char* label;
        const char* inserted;
    } rows[] = {{"Ritmo", "Ritmo "}, {"Nota [v1] a", "Nota "}, {"Senza codice", "Senza codice "}};
    Open();
    for (const auto& row : rows) {
        Choose(row.label);
        Select(0, -1);
        Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
        EXPECT_EQ(Statement(), row.inserted);
    }
}

TEST_F(CommentLibrary, InsertsNoPartOfAText) {
    record_->SetOriginalInterpretation(nullptr, std::string(4081, 'x').c_str());
    Open();
    Choose("Asse normale");
    Select(4081, 4081);
    Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
    EXPECT_EQ(Statement(), std::string(4081, 'x') + "Asse normale ");
    Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
    EXPECT_EQ(Statement(), std::string(4081, 'x') + "Asse normale ") << "one character is not all of it";
    Select(0, 12);
    Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
    EXPECT_EQ(Statement(), "Asse normale " + std::string(4069, 'x') + "Asse normale ");
    EXPECT_EQ(Stored(), Statement());
}

TEST_F(CommentLibrary, InsertsTheAutomaticText) {
    record_->AddEpisode(0, 12, 600, 1000, 1000)->durationSeconds = 10;
    record_->SetEcg("ecg", 3);
    record_->CreateAnnotations(4);
    hostOptions_[0] = 0;
    answers_.interpret = [](KxMeasurementSet*, KxInterpretationResult* result, void*, std::uint32_t) {
        static_cast<kx::InterpretationResult*>(result)->SetText("Ritmo\r\nAsse");
        return 1u;
    };
    record_->SetOriginalInterpretation(nullptr, "Prima.");
    Open();
    Select(6, 6);
    Click(IDC_INTERP_INSERT_AUTOMATIC);
    EXPECT_EQ(Statement(), "Prima.Ritmo\r\nAsse");
    EXPECT_EQ(Stored(), Statement());
    EXPECT_EQ(FindWindowA("CompletionPopup", nullptr), nullptr) << "what is inserted is not typed";
    SendMessageA(Edit(), EM_UNDO, 0, 0);
    EXPECT_EQ(Statement(), "Prima.");
}

TEST_F(CommentLibrary, MayEndThePane) {
    Open();
    Choose("Asse normale");
    SetFocus(kx::test::Item(pane_, IDC_INTERP_INSERT_LIBRARY_ENTRY));
    onChange_ = [this] {
        onChange_ = nullptr;
        DestroyWindow(pane_);
    };
    Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
    EXPECT_FALSE(IsWindow(pane_));
    EXPECT_EQ(Stored(), "Asse normale ");
}

TEST_F(CommentLibrary, ShowsWhatTheDictionaryHasWritten) {
    LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Vecchio</P>");
    const struct {
        const char* name;
        int button;
        std::vector<std::string> labels;
    } rows[] = {{"Cancel", IDCANCEL, {"Ritmo", " Vecchio"}}, {"OK", IDOK, {"Ritmo", " Nuovo [nu]"}}};
    Open();
    for (const auto& row : rows) {
        EXPECT_TRUE(kx::test::DriveModal([&] { Click(IDC_INTERP_DICTIONARY); },
                                         [&](HWND dialog) {
                                             SendDlgItemMessageA(dialog, 100, BM_CLICK, 0, 0);
                                             SetDlgItemTextA(dialog, IDC_DICT_TEXT, "Nuovo");
                                             SetDlgItemTextA(dialog, IDC_DICT_CODE, "nu");
                                             SendDlgItemMessageA(dialog, row.button, BM_CLICK, 0, 0);
                                         }))
            << row.name;
        EXPECT_EQ(Labels(), row.labels) << row.name;
        Pump();
        EXPECT_EQ(GetFocus(), Edit()) << row.name;
    }
    // The completion proposes it as well: its code typed becomes its text.
    SetFocus(Edit());
    for (const char key : {'n', 'u'}) {
        SendMessageA(Edit(), WM_CHAR, static_cast<WPARAM>(key), 0);
        Pump();
    }
    EXPECT_EQ(Statement(), "Nuovo");
}

TEST_F(CommentLibrary, OutlivesThePaneBehindTheDictionary) {
    Open();
    EXPECT_TRUE(kx::test::DriveModal([&] { Click(IDC_INTERP_DICTIONARY); },
                                     [&](HWND dialog) {
                                         DestroyWindow(pane_);
                                         SendDlgItemMessageA(dialog, IDOK, BM_CLICK, 0, 0);
                                     }));
    EXPECT_FALSE(IsWindow(pane_));
}

}  // namespace
