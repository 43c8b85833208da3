// Statement files on the disk: what can be read, and that replacing one never costs it.
#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "dialogs/statements/statement_files.h"
#include "lib/replacing_file.h"
#include "tests/rig/recorded_reports.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kOld[] = "<BODY>\r\n\t<H1>Vecchio</H1>\r\n</BODY>\r\n";
constexpr char kNew[] =
    "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n\t<H1>Nuovo</H1>\r\n"
    "\t<P>Attivit\xE0 sinusale^as</P>\r\n</BODY>\r\n";

class StatementFileTest : public testing::Test {
  protected:
    StatementFileTest() {
        library.SetTitle(0, "Nuovo");
        library.SetText(0, 0, "Attivit\xE0 sinusale");
        library.SetCode(0, 0, "as");
    }
    std::string Path(const char* name = "resting.htm") { return folder.Named(name); }
    bool Write(const std::string& path) { return WriteStatementFile(path.c_str(), library, &log); }
    bool Read(const std::string& path) { return ReadStatementFile(path.c_str(), library, &log); }

    TempFolder folder;
    RecordedReports log;
    StatementLibrary library;
};

TEST_F(StatementFileTest, WritesANewFileAndReplacesAnOldOne) {
    EXPECT_TRUE(Write(Path()));
    EXPECT_EQ(ReadBytes(Path()), kNew);
    WriteBytes(Path(), std::string(100000, 'x'));
    EXPECT_TRUE(Write(Path()));
    EXPECT_EQ(ReadBytes(Path()), kNew);
    EXPECT_EQ(folder.Listing(), "resting.htm");

    StatementLibrary again;
    EXPECT_TRUE(ReadStatementFile(Path().c_str(), again, &log));
    EXPECT_STREQ(again.Text(0, 0), "Attivit\xE0 sinusale");
    EXPECT_STREQ(again.Code(0, 0), "as");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(StatementFileTest, LeavesEverythingAsItWasWhenItCannotReplace) {
    WriteBytes(Path("locked.htm"), kOld);
    WriteBytes(Path("readonly.htm"), kOld);
    SetFileAttributesA(Path("readonly.htm").c_str(), FILE_ATTRIBUTE_READONLY);
    std::filesystem::create_directory(Path("folder.htm"));
    const std::string before = folder.Listing();
    for (const char* name : {"locked.htm", "readonly.htm", "folder.htm", "missing\\a.htm", "b?.htm"}) {
        {
            const LockedFile lock(Path("locked.htm"));
            EXPECT_FALSE(Write(Path(name))) << name;
        }
        EXPECT_THAT(log.Take(), ElementsAre("oem interp 337 no write")) << name;
        EXPECT_EQ(folder.Listing(), before) << name;
    }
    EXPECT_EQ(ReadBytes(Path("locked.htm")), kOld);
    EXPECT_EQ(ReadBytes(Path("readonly.htm")), kOld);
    EXPECT_FALSE(WriteStatementFile(nullptr, library, nullptr));
}

TEST_F(StatementFileTest, AFileThatSomebodyReadsIsNotPulledAway) {
    WriteBytes(Path(), kOld);
    {
        const LockedFile reader(Path(), FILE_SHARE_READ);
        EXPECT_FALSE(Write(Path()));
    }
    EXPECT_EQ(ReadBytes(Path()), kOld);
    EXPECT_TRUE(Write(Path()));
    EXPECT_EQ(ReadBytes(Path()), kNew);
}

// A disk that is full after a number of bytes.
class FullDisk final : public ReplacingFile {
  public:
    FullDisk(const std::string& path, std::uint32_t room) : ReplacingFile(path.c_str()), room_(room) {}

  protected:
    bool WriteThrough(void* file, const char* bytes, std::uint32_t count) override {
        return ReplacingFile::WriteThrough(file, bytes, std::min(count, room_)) && count <= room_;
    }

  private:
    std::uint32_t room_;
};

TEST_F(StatementFileTest, AFullDiskDoesNotCostTheOldFile) {
    WriteBytes(Path(), kOld);
    for (const std::uint32_t room : {0u, 3u, 9u}) {
        FullDisk disk(Path(), room);
        EXPECT_TRUE(disk.Write("0123456789", 10));
        EXPECT_FALSE(disk.Commit()) << room;
        EXPECT_EQ(ReadBytes(Path()), kOld) << room;
        EXPECT_EQ(folder.Listing(), "resting.htm") << room;
    }
    FullDisk disk(Path(), 10);
    EXPECT_TRUE(disk.Write("gone", 4));
    EXPECT_TRUE(disk.CreateAlways(nullptr));
    EXPECT_TRUE(disk.Write("0123456789", 10));
    EXPECT_EQ(ReadBytes(Path()), kOld);  // until it is committed
    EXPECT_TRUE(disk.Commit());
    EXPECT_EQ(ReadBytes(Path()), "0123456789");
    EXPECT_EQ(folder.Listing(), "resting.htm");
}

TEST_F(StatementFileTest, ReportsWhatCannotBeReadAndLeavesTheLibraryEmpty) {
    WriteBytes(Path("locked.htm"), kOld);
    std::filesystem::create_directory(Path("folder.htm"));
    const LockedFile lock(Path("locked.htm"));
    for (const char* name : {"locked.htm", "folder.htm", "missing.htm", "missing\\a.htm", ""}) {
        library.SetTitle(0, "Nuovo");
        EXPECT_FALSE(Read(*name != '\0' ? Path(name) : "")) << name;
        EXPECT_STREQ(library.Title(0), "X") << name;
        EXPECT_THAT(log.Take(), ElementsAre("oem interp 299 no read")) << name;
    }
    EXPECT_FALSE(ReadStatementFile(nullptr, library, nullptr));
}

TEST_F(StatementFileTest, ReadsWhateverIsInTheFile) {
    const struct {
        const char* row;
        std::string content;
        const char* title;
    } rows[] = {
        {"empty", "", "X"},
        {"10 MB of text", std::string(10u << 20, 'x'), "X"},
        {"10 MB before the body", std::string(10u << 20, '<') + kOld, "Vecchio"},
        {"binary", std::string("MZ\x90\0\x03\0\0\xFF\xFE<BO\0DY>", 16), "X"},
        {"a body", kOld, "Vecchio"},
        {"the byte that ended texts of old", std::string("\x1A") + kOld, "Vecchio"},
    };
    for (const auto& row : rows) {
        WriteBytes(Path(), row.content);
        EXPECT_TRUE(Read(Path())) << row.row;
        EXPECT_STREQ(library.Title(0), row.title) << row.row;
    }
    EXPECT_THAT(log.Take(), IsEmpty());
}

}  // namespace
}  // namespace kx::test
