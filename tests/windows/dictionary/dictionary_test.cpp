// The dialog that maintains a statement file, opened from the interpretation pane: what it shows and takes, what it writes, and when
// it does not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "dialogs/resources/dictionary_ids.h"
#include "dialogs/resources/interpretation_ids.h"
#include "tests/rig/pane.h"
#include "tests/rig/window_shot.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kFile[] =
    "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n"
    "\t<H1>Ritmo</H1>\r\n\t<P>Ritmo sinusale.^rs</P>\r\n\t<P>Fibrillazione atriale.^fa</P>\r\n"
    "\t<H1>Attivit\xE0</H1>\r\n\t<P>Attivit\xE0 pi\xF9 lenta.</P>\r\n</BODY>\r\n";

HWND Item(HWND dialog, int id) { return GetDlgItem(dialog, id); }
HWND Entry(HWND dialog, int index) { return GetDlgItem(dialog, 100 + index); }
std::string Caption(HWND dialog, int index) { return TextOf(Entry(dialog, index)); }
std::string ItemText(HWND dialog, int id) { return TextOf(Item(dialog, id)); }

std::string SectionText(HWND dialog, int index) {
    char text[256] = {};
    SendDlgItemMessageA(dialog, IDC_DICT_SECTION, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
    return text;
}
void ChooseSection(HWND dialog, int index) {
    SendDlgItemMessageA(dialog, IDC_DICT_SECTION, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_DICT_SECTION, CBN_SELCHANGE), 0);
}
void TypeOver(HWND dialog, int id, const std::string& text) {
    SetFocus(Item(dialog, id));
    SendDlgItemMessageA(dialog, id, EM_SETSEL, 0, -1);
    TypeText(dialog, text.empty() ? "\b" : text);
}
class Dictionary : public testing::Test {
  protected:
    Dictionary() { library_.LayFile("resting.htm", kFile); }

    std::string Written() {
        std::ifstream file(Beside("resting.htm"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Run(const std::function<void(HWND)>& script) {
        const Pane pane(KindOf("Interpretation"), host_, *record_, options_);
        suite_.TakeReports();
        EXPECT_TRUE(DriveModal([&] { pane.Click(IDC_INTERP_DICTIONARY); }, script));
    }
    // OK on a file that cannot be replaced: told once, and the edits are still there to be written.
    void ExpectRefusal(HWND dialog, const char* name) {
        ClickOn(dialog, Entry(dialog, 3));
        TypeOver(dialog, IDC_DICT_TEXT, "Nuovo");
        suite_.TakeReports();
        ClickOn(dialog, Item(dialog, IDOK));
        EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 337 \"no write\"",
                                                      "SHOWSYSTEMERROR \"Aggiorna Dizionario Utenti\" \"Could not write dictionary file\""))
            << name;
        EXPECT_TRUE(IsWindowVisible(dialog)) << name;
        EXPECT_EQ(Caption(dialog, 3), "Nuovo") << name;
    }

    SpyingSuite suite_;
    LibraryUse library_;
    HostWindow host_;
    std::unique_ptr<TestRecord> record_ = NewRecord();
    std::uint32_t options_[4] = {2};
};

TEST_F(Dictionary, ShowsTheSectionsAndStatementsOfTheTestsFile) {
    Run([&](HWND dialog) {
        EXPECT_EQ(SendDlgItemMessageA(dialog, IDC_DICT_SECTION, CB_GETCOUNT, 0, 0), 48);
        EXPECT_EQ(SectionText(dialog, 47), "X");
        EXPECT_EQ(Caption(dialog, 63), "X");
        // What goes into the edits is no typing: each statement keeps its own code.
        for (const int entry : {1, 0, 5, 1}) {
            ClickOn(dialog, Entry(dialog, entry));
            EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_TEXT));
            EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), Caption(dialog, entry));
        }
        EXPECT_TRUE(Shoot(dialog, "dictionary"));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "fa");
        ChooseSection(dialog, 1);
        EXPECT_EQ(Caption(dialog, 0), "Attivit\xE0 pi\xF9 lenta.");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_EQ(Written(), kFile);
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
    library_.LayFile("holter.htm", "<BODY><H1>Holter</H1></BODY>");
    record_->SetTestType(KX_TEST_HOLTER);
    Run([&](HWND dialog) { EXPECT_EQ(SectionText(dialog, 0), "Holter"); });
}

TEST_F(Dictionary, WritesWhatIsTypedAndNotHidden) {
    Run([&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 2));
        TypeText(dialog, "Bradicardia \xE8 lieve");  // over the "X"
        PressKey(dialog, VK_TAB);
        EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_CODE));
        TypeText(dialog, "brad");
        ClickOn(dialog, Entry(dialog, 1));
        TypeText(dialog, " Nota.");  // behind it
        EXPECT_EQ(Caption(dialog, 1), "Fibrillazione atriale. Nota.");
        ClickOn(dialog, Entry(dialog, 3));
        TypeText(dialog, std::string(200, 'w'));
        ClickOn(dialog, Entry(dialog, 0));
        TypeOver(dialog, IDC_DICT_TEXT, "");
        ChooseSection(dialog, 1);
        TypeOver(dialog, IDC_DICT_TEXT, "Conduzione");
        TypeOver(dialog, IDC_DICT_CODE, "abc");  // of no statement
        EXPECT_EQ(SectionText(dialog, 1), "Conduzione");
        ChooseSection(dialog, 2);
        TypeOver(dialog, IDC_DICT_TEXT, "Solo titolo");
        ChooseSection(dialog, 0);
        EXPECT_EQ(Caption(dialog, 0), "X");
        // A combo box without a choice takes nothing.
        SendDlgItemMessageA(dialog, IDC_DICT_SECTION, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_DICT_SECTION, CBN_SELCHANGE), 0);
        EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 589 \"idx -1\""));
        TypeOver(dialog, IDC_DICT_TEXT, "nowhere");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_EQ(Written(),
              "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n\t<H1>Ritmo</H1>\r\n"
              "\t<P>Fibrillazione atriale. Nota.^fa</P>\r\n\t<P>Bradicardia \xE8 lieve^bra</P>\r\n\t<P>" +
                  std::string(127, 'w') +
                  "</P>\r\n\t<H1>Conduzione</H1>\r\n\t<P>Attivit\xE0 pi\xF9 lenta.</P>\r\n\t<H1>Solo titolo</H1>\r\n</BODY>\r\n");
}

// What would be read back as something else does not get into a statement, however it comes.
TEST_F(Dictionary, RefusesTheMarksOfTheFile) {
    Run([&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 0));
        TypeText(dialog, "^");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "Ritmo sinusale.");
        EXPECT_THAT(ItemText(dialog, 200), HasSubstr("\"^\""));
        TypeText(dialog, "!");
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.!") << "the caret stays";
        EXPECT_EQ(ItemText(dialog, 200), "");
        TypeText(dialog, "</P>");
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.!</P");
        EXPECT_THAT(ItemText(dialog, 200), HasSubstr("\"</P>\""));
        TypeOver(dialog, IDC_DICT_TEXT, "QT < 440 ms");
        SetWindowTextA(Item(dialog, IDC_DICT_CODE), "a^b");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "rs");
        ChooseSection(dialog, 1);
        TypeOver(dialog, IDC_DICT_TEXT, "A^B");  // a title has no code
        EXPECT_EQ(SectionText(dialog, 1), "A^B");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_THAT(Written(), HasSubstr("<P>QT < 440 ms^rs</P>"));
}

TEST_F(Dictionary, WritesNothingUnlessItEndsWithOk) {
    const std::function<void(HWND)> ends[] = {
        [](HWND dialog) { ClickOn(dialog, Item(dialog, IDCANCEL)); },
        [](HWND dialog) { PressKey(dialog, VK_ESCAPE); },
        [](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0), Pump(dialog); },
        [](HWND dialog) { SendMessageA(dialog, WM_DESTROY, 0, 0), Pump(dialog); },
    };
    for (const auto& end : ends) {
        Run([&](HWND dialog) {
            ClickOn(dialog, Entry(dialog, 0));
            TypeText(dialog, "altro");
            end(dialog);
            EXPECT_FALSE(IsWindowVisible(dialog));
        });
        EXPECT_EQ(Written(), kFile);
    }
}

TEST_F(Dictionary, LosesNothingWhenItCannotWrite) {
    const std::string path = Beside("resting.htm");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    Run([&](HWND dialog) {
        ExpectRefusal(dialog, "read-only");
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        const HANDLE locked = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        ExpectRefusal(dialog, "in use");
        CloseHandle(locked);
        EXPECT_EQ(Written(), kFile);
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_THAT(Written(), HasSubstr("<P>Nuovo</P>"));

    // A file that could not be read holds statements that the dialog does not know; one that is not there is made.
    HANDLE locked = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    Run([&](HWND dialog) {
        EXPECT_EQ(Caption(dialog, 0), "X");
        CloseHandle(locked);
        ExpectRefusal(dialog, "unreadable before");
    });
    EXPECT_THAT(Written(), HasSubstr("Fibrillazione"));
    DeleteFileA(path.c_str());
    Run([&](HWND dialog) {
        EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGOEMERROR \"interp\" 299 \"no read\""));
        TypeOver(dialog, IDC_DICT_TEXT, "Primo");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_THAT(Written(), HasSubstr("\t<H1>Primo</H1>\r\n</BODY>\r\n"));
    for (const auto& file : std::filesystem::directory_iterator(ProgramFolder())) {
        EXPECT_NE(file.path().extension(), ".tmp") << file.path();
    }
}

TEST_F(Dictionary, KeepsWhatAnotherWorkstationHasSavedMeanwhile) {
    Run([&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 2));
        TypeText(dialog, "Di qui");
        library_.LayFile("resting.htm", "<BODY><H1>Ritmo</H1><P>Di l\xE0</P><P>Fibrillazione atriale.^fa</P><H1>Altra</H1></BODY>");
        ClickOn(dialog, Item(dialog, IDOK));
        EXPECT_FALSE(IsWindowVisible(dialog));
    });
    EXPECT_THAT(Written(), HasSubstr("<H1>Ritmo</H1>\r\n\t<P>Di l\xE0</P>\r\n\t<P>Fibrillazione atriale.^fa</P>\r\n\t<P>Di qui</P>\r\n"
                                     "\t<H1>Altra</H1>"));
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
}

}  // namespace
}  // namespace kx::test
