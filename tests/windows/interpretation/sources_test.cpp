// What can be put into the statement: the comment library and the automatic interpretation.
#include <cstring>

#include "dialogs/resources/dictionary_ids.h"
#include "lib/annotation_store.h"
#include "tests/windows/interpretation/interpretation_pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Sources : public InterpretationTest {
  protected:
    HWND Tree() { return pane_->Item(IDC_INTERP_LIBRARY); }
    HTREEITEM Next(UINT which, HTREEITEM item) {
        return reinterpret_cast<HTREEITEM>(SendMessageA(Tree(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
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
    // Sections, and behind each its entries in brackets. chosen: the item with this label is selected.
    std::string Labels(const std::string& chosen = "none") {
        std::string labels;
        const auto take = [&](HTREEITEM item) {
            if (Label(item) == chosen) {
                SendMessageA(Tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
            }
            return Label(item);
        };
        for (HTREEITEM section = Next(TVGN_ROOT, nullptr); section != nullptr; section = Next(TVGN_NEXT, section)) {
            labels += take(section) + "(";
            for (HTREEITEM entry = Next(TVGN_CHILD, section); entry != nullptr; entry = Next(TVGN_NEXT, entry)) {
                labels += take(entry) + ";";
            }
            labels += ")";
        }
        return labels;
    }
    void Choose(const std::string& label) { Labels(label); }
    std::string Automatic() { return pane_->Text(IDC_INTERP_AUTOMATIC); }
};

TEST_F(Sources, ShowTheStatementFile) {
    const struct {
        const char* file;
        const char* labels;
    } rows[] = {
        {"<BODY><H1>A</H1><P>T^C</P><P>U</P><H1>Qualit\xE0</H1><P>V^^D</P></BODY>", "A(T [C];U;)Qualit\xE0(V;)"},
        {"<BODY><H1>X</H1><P>T</P><H1>B</H1><P>X^C</P><P></P><P>W^X</P>", "B(W;)"},
        {"", ""},
    };
    for (const auto& row : rows) {
        library_.LayFile("resting.htm", row.file);
        Open();
        EXPECT_EQ(Labels(), row.labels);
        EXPECT_THAT(suite_.TakeReports(), IsEmpty());
        Close();
    }
    DeleteFileA(Beside("resting.htm").c_str());
    Open();
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 299 \"no read\"", "LOGOEMERROR \"interp\" 727 \"no read\""));
}

// 32000 bytes of texts: what finds no room is left out, and a shorter one behind it finds some.
TEST_F(Sources, LeaveOutWhatThePoolCannotHold) {
    std::string file = "<BODY>";
    for (int section = 0; section < 5; ++section) {
        file += "<H1>" + std::string(127, static_cast<char>('a' + section)) + "</H1>";
        for (int entry = 0; entry < 49; ++entry) {
            file += "<P>" + std::string(section == 4 && entry == 48 ? 123 : 127, 'e') + "</P>";
        }
    }
    library_.LayFile("resting.htm", file + "<P>gggg</P><P>hhh</P><H1>S</H1>");
    Open();
    EXPECT_EQ(SendMessageA(Tree(), TVM_GETCOUNT, 0, 0), 251);
    EXPECT_THAT(Labels(), testing::EndsWith(";hhh;)"));
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGMEMORYERROR \"interp\" 720", "LOGMEMORYERROR \"interp\" 723"));
}

TEST_F(Sources, InsertTheSelectedEntry) {
    const struct {
        const char* name;
        std::function<void()> act;
    } rows[] = {
        {"the button", [this] { pane_->Click(IDC_INTERP_INSERT_LIBRARY_ENTRY); }},
        {"a double click",
         [this] {
             NMHDR header{Tree(), IDC_INTERP_LIBRARY, static_cast<UINT>(NM_DBLCLK)};
             SendMessageA(*pane_, WM_NOTIFY, IDC_INTERP_LIBRARY, reinterpret_cast<LPARAM>(&header));
         }},
        {"Enter", [this] { SendMessageA(Tree(), WM_KEYDOWN, VK_RETURN, 1); }},
        {"Enter as the dialog manager tells it", [this] { SendMessageA(*pane_, WM_COMMAND, IDOK, 0); }},
    };
    for (const auto& row : rows) {
        SetStatement("Oggi ieri domani");
        Open();
        row.act();
        EXPECT_EQ(Statement(), "Oggi ieri domani") << row.name << ": nothing is selected yet";
        Select(5, 9);
        Choose("Ritmo giunzionale. [RG]");
        SetFocus(Tree());
        row.act();
        Pump();
        EXPECT_EQ(Statement(), "Oggi Ritmo giunzionale.  domani") << row.name;
        EXPECT_EQ(Stored(), Statement()) << row.name;
        EXPECT_TRUE(record_->IsOverread()) << row.name;
        EXPECT_EQ(GetFocus(), Edit()) << row.name;
        SendMessageA(Edit(), EM_UNDO, 0, 0);
        EXPECT_EQ(Statement(), "Oggi ieri domani") << row.name;
        Close();
    }
    // No part of a text that finds no room.
    SetStatement(std::string(4081, 'x'));
    Open();
    Choose("Asse");
    for (int i = 0; i < 3; ++i) {
        Select(4096, 4096);
        pane_->Click(IDC_INTERP_INSERT_LIBRARY_ENTRY);
    }
    EXPECT_EQ(Stored(), std::string(4081, 'x') + "Asse Asse ");
}

TEST_F(Sources, ShowWhatTheDictionaryHasWritten) {
    library_.LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Vecchio</P>");
    Open();
    for (const int button : {IDCANCEL, IDOK}) {
        EXPECT_TRUE(DriveModal([&] { pane_->Click(IDC_INTERP_DICTIONARY); },
                               [&](HWND dialog) {
                                   SendDlgItemMessageA(dialog, 100, BM_CLICK, 0, 0);
                                   SetDlgItemTextA(dialog, IDC_DICT_TEXT, "Nuovo");
                                   SetDlgItemTextA(dialog, IDC_DICT_CODE, "nu");
                                   SendDlgItemMessageA(dialog, button, BM_CLICK, 0, 0);
                               }));
        EXPECT_EQ(Labels(), button == IDOK ? "Ritmo(Nuovo [nu];)" : "Ritmo(Vecchio;)");
        Pump();
        EXPECT_EQ(GetFocus(), Edit());
    }
    Type("nu");
    EXPECT_EQ(Statement(), "Nuovo");
}

TEST_F(Sources, AskTheEngine) {
    options_[0] = 0;
    suite_.On("INTERPRET", [&](auto a) {
        EXPECT_EQ(Address<KxMeasurementSet>(a[0]), &record_->Episode(0)->measurements);
        EXPECT_EQ(Address<void>(a[2]), record_->annotations);
        EXPECT_EQ(a[3] | a[4] | a[5], 0u);
        auto* const result = Address<InterpretationResult>(a[1]);
        result->SetText("Ritmo\r\nAsse");
        return 1u;
    });
    SetStatement("Prima.");
    Open();
    EXPECT_EQ(Automatic(), "Ritmo\r\nAsse");
    EXPECT_TRUE(record_->IsOriginal());
    Select(6, 6);
    pane_->Click(IDC_INTERP_INSERT_AUTOMATIC);
    EXPECT_EQ(Stored(), "Prima.Ritmo\r\nAsse");
    EXPECT_EQ(FindWindowA("CompletionPopup", nullptr), nullptr) << "what is inserted is not typed";
    Close();
    suite_.On("INTERPRET", [](auto a) {
        std::memset(Address<KxInterpretationResult>(a[1])->text, 'a', 1024 + 4);  // no terminator
        return 1u;
    });
    Open();
    EXPECT_EQ(Automatic(), std::string(1023, 'a'));
}

TEST_F(Sources, LeaveATestWithoutAutomaticText) {
    const struct {
        const char* name;
        std::function<void()> take;
        std::vector<std::string> reports;
    } rows[] = {
        {"left out by the host", [this] { options_[0] = 2, record_->ecg = nullptr; }, {}},
        {"no signal nor episode",
         [this] { record_->ecg = nullptr, record_->ReleaseEpisodes(); },
         {"LOGOEMERROR \"interp\" 1644 \"no ECG\""}},
        {"no episode", [this] { record_->ReleaseEpisodes(); }, {"LOGOEMERROR \"interp\" 1643 \"no cpx\""}},
        {"no length", [this] { record_->Episode(0)->durationSeconds = 0; }, {"LOGOEMERROR \"interp\" 1643 \"no cpx\""}},
        {"no annotations", [this] { record_->ReplaceAnnotations(nullptr); }, {}},
        {"the engine fails", [this] { suite_.On("INTERPRET", [](auto) { return 0u; }); }, {"LOGSYSTEMERROR \"\""}},
        {"another type", [this] { record_->SetTestType(KX_TEST_HOLTER); }, {}},
    };
    library_.LayFile("holter.htm", "<BODY>");
    for (const auto& row : rows) {
        record_ = NewRecord();
        options_[0] = 0;
        void* const signal = record_->ecg;
        row.take();
        Open();
        EXPECT_EQ(Automatic(), "") << row.name;
        EXPECT_EQ(suite_.TakeReports(), row.reports) << row.name;
        Close();
        record_->ecg = signal;
    }
    suite_.Lay("kxinterp.dll", Sibling::kMissing);
    record_ = NewRecord();
    options_[0] = 0;
    Open();
    EXPECT_THAT(suite_.TakeReports(), ElementsAre(testing::HasSubstr("kxinterp.dll")));
}

TEST_F(Sources, RunTheScript) {
    record_->SetTestType(KX_TEST_STRESS);
    library_.LayFile("stress.htm", "<BODY>");
    const std::string script = "linea 1\r\n" + std::string(300000, 's');
    library_.LayFile("stress.scr", script);
    suite_.On("CREATETEXT", [&](auto a) {
        EXPECT_EQ(Address<char>(a[0]), script);
        EXPECT_EQ(a[2], script.size() + 4096);
        EXPECT_EQ(Address<KxTestRecord>(a[3]), record_.get());
        std::memset(Address<char>(a[1]), 't', a[2]);  // to the last byte, without a terminator
        return 1u;
    });
    Open();
    // An edit takes minutes for a line that is long enough.
    EXPECT_LT(Automatic().size(), 40000u);
    EXPECT_EQ(Automatic().substr(0, 16000), std::string(16000, 't'));
    EXPECT_THAT(Automatic(), testing::HasSubstr("304104"));
    pane_->Click(IDC_INTERP_INSERT_AUTOMATIC);
    EXPECT_EQ(Statement(), std::string(4095, 't'));
    Close();
    DeleteFileA(Beside("stress.scr").c_str());
    Open();
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 1672 \"" + Beside("stress.scr") + "\""));
}

}  // namespace
}  // namespace kx::test
