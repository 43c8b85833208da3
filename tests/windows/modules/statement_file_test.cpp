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
        WriteBytes(Path("locked.htm"), kOld);
        std::filesystem::create_directory(Path("folder.htm"));
    }
    std::string Path(const char* name = "resting.htm") { return folder.Named(name); }
    bool Write(const std::string& path) { return WriteStatementFile(path.c_str(), library, &log); }
    bool Read(const std::string& path) { return ReadStatementFile(path.c_str(), library, &log); }

    TempFolder folder;
    RecordedReports log;
    StatementLibrary library;
};

TEST_F(StatementFileTest, WritesANewFileAndReplacesAnOldOneOrLeavesEverythingAsItWas) {
    EXPECT_TRUE(Write(Path()));
    EXPECT_EQ(ReadBytes(Path()), kNew);
    WriteBytes(Path(), std::string(100000, 'x'));
    EXPECT_TRUE(Write(Path()));
    EXPECT_EQ(ReadBytes(Path()), kNew);
    EXPECT_THAT(log.Take(), IsEmpty());
    WriteBytes(Path("readonly.htm"), kOld);
    SetFileAttributesA(Path("readonly.htm").c_str(), FILE_ATTRIBUTE_READONLY);
    const auto before = folder.Listing();
    // One that somebody reads is not pulled away.
    for (const DWORD shared : {0ul, static_cast<DWORD>(FILE_SHARE_READ)}) {
        for (const char* name : {"locked.htm", "readonly.htm", "folder.htm", "missing\\a.htm", "b?.htm"}) {
            {
                const LockedFile lock(Path("locked.htm"), shared);
                EXPECT_FALSE(Write(Path(name))) << name;
            }
            EXPECT_THAT(log.Take(), ElementsAre("oem interp 337 no write")) << name;
            EXPECT_EQ(folder.Listing(), before) << name;
        }
    }
    EXPECT_EQ(ReadBytes(Path("locked.htm")), kOld);
    EXPECT_EQ(ReadBytes(Path("readonly.htm")), kOld);
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
    const auto before = folder.Listing();
    for (const std::uint32_t room : {0u, 3u, 9u, 10u}) {
        FullDisk disk(Path(), room);
        EXPECT_TRUE(disk.Write("gone", 4));
        EXPECT_TRUE(disk.CreateAlways(nullptr));
        EXPECT_TRUE(disk.Write("0123456789", 10));
        EXPECT_EQ(ReadBytes(Path()), kOld) << "until it is committed";
        EXPECT_EQ(disk.Commit(), room == 10);
        EXPECT_EQ(ReadBytes(Path()), room == 10 ? "0123456789" : kOld) << room;
        EXPECT_EQ(folder.Listing(), before) << room;
    }
}

TEST_F(StatementFileTest, ReadsWhateverIsInTheFileOrReportsIt) {
    const std::pair<std::string, const char*> rows[] = {
        {"", "X"},
        {std::string(10u << 20, 'x'), "X"},
        {std::string(10u << 20, '<') + kOld, "Vecchio"},
        {std::string("MZ\x90\0\x03\0\0\xFF\xFE<BO\0DY>", 16), "X"},
        {std::string("\x1A") + kOld, "Vecchio"},  // the byte that ended texts of old
    };
    for (const auto& [content, title] : rows) {
        WriteBytes(Path(), content);
        EXPECT_TRUE(Read(Path())) << content.size();
        EXPECT_STREQ(library.Title(0), title) << content.size();
    }
    EXPECT_THAT(log.Take(), IsEmpty());
    const LockedFile lock(Path("locked.htm"));
    for (const char* name : {"locked.htm", "folder.htm", "missing.htm", "missing\\a.htm"}) {
        library.SetTitle(0, "Nuovo");
        EXPECT_FALSE(Read(Path(name))) << name;
        EXPECT_STREQ(library.Title(0), "X") << name;
        EXPECT_THAT(log.Take(), ElementsAre("oem interp 299 no read")) << name;
    }
    EXPECT_FALSE(ReadStatementFile(nullptr, library, nullptr) || WriteStatementFile(nullptr, library, nullptr));
}

}  // namespace
}  // namespace kx::test
