// What the user dictionary writes, when it does not, and which file it is opened on.
#include "dialogs/dictionary/user_dictionary.h"
#include "tests/windows/dictionary/dictionary_fixture.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kNoWrite[] = "LOGOEMERROR \"interp\" 337 \"no write\"";
constexpr char kToldUser[] =
    "SHOWSYSTEMERROR \"Aggiorna Dizionario Utenti\" \"Could not write dictionary file\"";

TEST_F(DictionaryTest, WritesWhatIsNotHidden) {
    const bool ok = Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 0));
        TypeOver(dialog, IDC_DICT_TEXT, "");
        ClickOn(dialog, Entry(dialog, 2));
        TypeText(dialog, "Perch\xE9 no");
        ChooseSection(dialog, 2);
        TypeOver(dialog, IDC_DICT_TEXT, "Solo titolo");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_TRUE(ok);
    EXPECT_EQ(ReadBytes(Path()),
              "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n"
              "\t<H1>Ritmo</H1>\r\n\t<P>Fibrillazione atriale.^fa</P>\r\n\t<P>Perch\xE9 no</P>\r\n"
              "\t<H1>Attivit\xE0</H1>\r\n\t<P>Attivit\xE0 pi\xF9 lenta.</P>\r\n"
              "\t<H1>Solo titolo</H1>\r\n</BODY>\r\n");
    EXPECT_EQ(folder.Listing(), "resting.htm");
    EXPECT_THAT(dll.TakeLog(), IsEmpty());
}

TEST_F(DictionaryTest, WritesNothingUnlessItEndsWithOk) {
    const struct {
        const char* name;
        std::function<void(HWND)> end;
    } rows[] = {
        {"Cancella", [](HWND dialog) { ClickOn(dialog, Item(dialog, IDCANCEL)); }},
        {"Escape", [](HWND dialog) { PressKey(dialog, VK_ESCAPE); }},
        {"the caption's button",
         [](HWND dialog) {
             PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
             kx::test::Pump(dialog);
         }},
    };
    for (const auto& row : rows) {
        bool ended = false;
        const bool ok = Run(Path(), [&](HWND dialog) {
            ClickOn(dialog, Entry(dialog, 0));
            TypeText(dialog, "altro");
            row.end(dialog);
            ended = !IsWindowVisible(dialog);
        });
        EXPECT_FALSE(ok) << row.name;
        EXPECT_TRUE(ended) << row.name;
        EXPECT_EQ(ReadBytes(Path()), kDictionaryFile) << row.name;
    }
}

// OK on a file that cannot be replaced: told once, and the edits are still there to be written.
void ExpectRefusal(HWND dialog, LibraryUnderTest& dll, const char* name) {
    ClickOn(dialog, Entry(dialog, 3));
    TypeText(dialog, "Nuovo");
    dll.TakeLog();
    ClickOn(dialog, Item(dialog, IDOK));
    EXPECT_THAT(dll.TakeLog(), ElementsAre(kNoWrite, kToldUser)) << name;
    EXPECT_TRUE(IsWindowVisible(dialog)) << name;
    EXPECT_EQ(Caption(dialog, 3), "Nuovo") << name;
}

TEST_F(DictionaryTest, StaysOpenWithItsEditsWhenItCannotWrite) {
    const std::string path = Path();
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(Run(path, [&](HWND dialog) {
        ExpectRefusal(dialog, dll, "read-only");
        EXPECT_EQ(ReadBytes(path), kDictionaryFile);
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        ClickOn(dialog, Item(dialog, IDOK));
    }));
    EXPECT_THAT(ReadBytes(path), HasSubstr("<P>Nuovo</P>"));

    WriteBytes(path, kDictionaryFile);
    EXPECT_TRUE(Run(path, [&](HWND dialog) {
        {
            const LockedFile locked(path, FILE_SHARE_READ);
            ExpectRefusal(dialog, dll, "in use");
        }
        EXPECT_EQ(ReadBytes(path), kDictionaryFile);
        ClickOn(dialog, Item(dialog, IDOK));
    }));
    EXPECT_THAT(ReadBytes(path), HasSubstr("<P>Nuovo</P>"));

    CreateDirectoryA(Path("dir.htm").c_str(), nullptr);
    EXPECT_FALSE(Run(Path("dir.htm"), [&](HWND dialog) { ExpectRefusal(dialog, dll, "a directory"); }));
    EXPECT_FALSE(Run(folder.Named("missing\\a.htm"),
                     [&](HWND dialog) { ExpectRefusal(dialog, dll, "no such folder"); }));
    EXPECT_EQ(folder.Listing(), "dir.htm resting.htm");
}

TEST_F(DictionaryTest, OpensEmptyOnAFileThatIsNotThereAndMakesIt) {
    EXPECT_TRUE(Run(Path("new.htm"), [&](HWND dialog) {
        EXPECT_THAT(dll.TakeLog(), ElementsAre("LOGOEMERROR \"interp\" 299 \"no read\""));
        EXPECT_EQ(SectionText(dialog, 0), "X");
        EXPECT_EQ(Caption(dialog, 0), "X");
        TypeOver(dialog, IDC_DICT_TEXT, "Primo");
        ClickOn(dialog, Item(dialog, IDOK));
    }));
    EXPECT_THAT(ReadBytes(Path("new.htm")), HasSubstr("\t<H1>Primo</H1>\r\n</BODY>\r\n"));
}

// Its statements are not known to the dialog, and would be gone.
TEST_F(DictionaryTest, DoesNotReplaceAFileThatItCouldNotRead) {
    auto locked = std::make_unique<LockedFile>(Path());
    EXPECT_FALSE(Run(Path(), [&](HWND dialog) {
        EXPECT_EQ(Caption(dialog, 0), "X");
        locked.reset();
        ExpectRefusal(dialog, dll, "unreadable before");
    }));
    EXPECT_EQ(ReadBytes(Path()), kDictionaryFile);
}

TEST_F(DictionaryTest, OpensTheFileOfTheTestTypeBesideTheModule) {
    const struct {
        std::uint32_t type;
        const char* file;
    } rows[] = {{KX_TEST_STRESS, "stress.htm"},
                {KX_TEST_RESTING, "resting.htm"},
                {KX_TEST_HIGH_RESOLUTION, "hires.htm"},
                {KX_TEST_HOLTER, "holter.htm"},
                {KX_TEST_ABPM, "abpm.htm"},
                {KX_TEST_SPIROMETRY, "spiro.htm"}};
    char original[MAX_PATH] = {};
    GetModuleFileNameA(dll.Module(), original, MAX_PATH);
    const std::string copy = folder.Named("copy.dll");
    ASSERT_TRUE(CopyFileA(original, copy.c_str(), TRUE));
    for (const auto& row : rows) {
        WriteBytes(Path(row.file), std::string("<BODY><H1>") + row.file + "</H1></BODY>");
    }
    const HMODULE module = LoadLibraryA(copy.c_str());
    ASSERT_NE(module, nullptr);
    {
        const DialogLibrary beside(module);
        dll.TakeLog();
        for (const auto& row : rows) {
            bool ok = false;
            EXPECT_TRUE(DriveModal([&] { ok = EditUserDictionary(beside, &owner, row.type); },
                                   [&](HWND dialog) {
                                       EXPECT_EQ(SectionText(dialog, 0), row.file);
                                       EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
                                       ClickOn(dialog,
                                               Item(dialog, row.type == KX_TEST_ABPM ? IDOK : IDCANCEL));
                                   }));
            EXPECT_EQ(ok, row.type == KX_TEST_ABPM) << row.file;
        }
        EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
        EXPECT_THAT(dll.TakeLog(), IsEmpty());
    }
    FreeLibrary(module);
}

TEST_F(DictionaryTest, ReportsATypeWithoutAFileAndAModuleWithoutAFolder) {
    for (const std::uint32_t type : {1u, 7u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(EditUserDictionary(library, &owner, type));
        EXPECT_THAT(dll.TakeLog(), ElementsAre("LOGOEMERROR \"interp\" 1697 \"ptype\"")) << type;
    }
    // A module that is loaded for its resources alone has no path.
    char path[MAX_PATH] = {};
    GetModuleFileNameA(dll.Module(), path, MAX_PATH);
    CopyFileA(path, Path("data.dll").c_str(), TRUE);
    const HMODULE module = LoadLibraryExA(Path("data.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    {
        const DialogLibrary nowhere(module);
        dll.TakeLog();
        EXPECT_FALSE(EditUserDictionary(nowhere, &owner, KX_TEST_RESTING));
        EXPECT_THAT(dll.TakeLog(), ElementsAre("LOGOEMERROR \"interp\" 1687 \"\""));
    }
    FreeLibrary(module);
}

}  // namespace
}  // namespace kx::test
