// DataFile on real files.
#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "lib/fileutil.h"
#include "tests/rig/recorded_reports.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

class DataFileTest : public testing::Test {
  protected:
    std::string Path(const char* name = "a.txt") { return folder.Named(name); }
    void Name(const std::string& path) { ASSERT_TRUE(file.SetName(path.c_str())); }

    TempFolder folder;
    RecordedReports log;
    DataFile file;
};

constexpr char kNameLine[] = R"(oem \.\.\\\.\.\\lib\\fileutil \d+ )";

TEST_F(DataFileTest, ReportsEachOperationThatHasNoName) {
    EXPECT_EQ(file.FileName(0), nullptr);
    EXPECT_FALSE(file.Create(true, &log));
    EXPECT_FALSE(file.OpenRead(&log));
    EXPECT_FALSE(file.OpenReadWrite(&log));
    EXPECT_FALSE(file.ReadAll(0, 0, &log));
    const auto noName = MatchesRegex(std::string(kNameLine) + "Filename NULL");
    EXPECT_THAT(log.Take(), ElementsAre(noName, noName, noName, noName));
    EXPECT_FALSE(file.Create(true, nullptr));
    EXPECT_FALSE(file.Delete(0));
    EXPECT_FALSE(file.MoveTo(0, Path().c_str()));
    EXPECT_FALSE(file.CopyNamedTo(0, Path().c_str()));
    EXPECT_FALSE(file.SetName(nullptr));
    EXPECT_FALSE(file.SetName(std::string(kNamesSize - 1, 'x').c_str()));
    EXPECT_TRUE(file.SetName(std::string(kNamesSize - 2, 'x').c_str()));
}

TEST_F(DataFileTest, CreatesWritesAndReadsBack) {
    Name(Path());
    ASSERT_TRUE(file.Create(false, &log));
    EXPECT_TRUE(file.Write("due\r\n", 5));
    EXPECT_TRUE(file.Seek(7, &log));  // beyond the end: the gap is filled with zeros
    EXPECT_TRUE(file.Write("x", 1));
    file.Close();
    EXPECT_EQ(ReadBytes(Path()), std::string("due\r\n\0\0x", 8));

    EXPECT_TRUE(file.ReadAll(0, 0, &log));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(std::string(file.Content(), file.Length() + 1), std::string("due\r\n\0\0x\0", 9));
    char line[8];
    EXPECT_EQ(file.ReadLine(0, line, sizeof line), 5);
    EXPECT_STREQ(line, "due");

    EXPECT_FALSE(file.Create(false, nullptr));  // it exists
    EXPECT_EQ(ReadBytes(Path()).size(), 8u);
    EXPECT_TRUE(file.CreateAlways(&log));
    file.Close();
    EXPECT_EQ(ReadBytes(Path()), "");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(DataFileTest, ReportsAFileThatCannotBeOpened) {
    WriteBytes(Path("locked.txt"), "text");
    std::filesystem::create_directory(Path("folder"));
    const LockedFile lock(Path("locked.txt"));
    for (const char* name : {"missing.txt", "folder", "locked.txt", "a\"b?.txt"}) {
        Name(Path(name));
        EXPECT_FALSE(file.ReadAll(0, 0, &log)) << name;
        EXPECT_FALSE(file.OpenRead(nullptr)) << name;
        const auto lines = log.Take();
        ASSERT_EQ(lines.size(), 2u) << name;
        EXPECT_EQ(lines[0], "system Could not open File") << name;
        EXPECT_THAT(lines[1], StartsWith("oem ..\\..\\lib\\fileutil ")) << name;
        EXPECT_THAT(lines[1], testing::EndsWith(" " + Path(name))) << name;
        EXPECT_EQ(file.Content(), nullptr) << name;
        EXPECT_EQ(file.Length(), 0u) << name;
    }
}

TEST_F(DataFileTest, ReportsAReadThatFails) {
    WriteBytes(Path(), "text");
    Name(Path());
    char buffer[4];
    EXPECT_EQ(file.Read(4, buffer, &log), 0u);  // not open
    const auto lines = log.Take();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "system Could not read File");
    EXPECT_THAT(lines[1], testing::EndsWith(" " + Path()));

    ASSERT_TRUE(file.OpenRead(&log));
    EXPECT_EQ(file.Length(), 4u);
    EXPECT_EQ(file.Content(), nullptr);
    EXPECT_EQ(file.ReadLine(0, buffer, 4), -1);
    EXPECT_EQ(file.Read(3, buffer, &log), 3u);
    EXPECT_EQ(file.Read(3, buffer, &log), 1u);
    EXPECT_EQ(file.Read(3, buffer, &log), 0u);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(DataFileTest, LimitsWhatIsReadAndSaysSo) {
    WriteBytes(Path(), "0123456789");
    Name(Path());
    EXPECT_TRUE(file.ReadAll(0, 4, &log));
    EXPECT_STREQ(file.Content(), "0123");
    EXPECT_EQ(file.Length(), 4u);
    EXPECT_THAT(log.Take(), ElementsAre("system All records might not be read - buffer too small"));
    EXPECT_TRUE(file.ReadAll(0, 10, &log));
    EXPECT_TRUE(file.ReadAll(0, 20, &log));
    EXPECT_STREQ(file.Content(), "0123456789");
    EXPECT_THAT(log.Take(), IsEmpty());
    // More than the address space has.
    EXPECT_FALSE(file.ReadAll(0, 0xFFFFFFFF, &log));
    EXPECT_THAT(log.Take(), ElementsAre(StartsWith("memory ..\\..\\lib\\fileutil ")));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(file.ReadAll(1, 0, nullptr));  // there is one name
}

TEST_F(DataFileTest, CopiesOutOfTheContentOnly) {
    WriteBytes(Path(), "0123456789");
    Name(Path());
    char buffer[16] = {};
    EXPECT_FALSE(file.CopyOut(buffer, 0, 1));
    ASSERT_TRUE(file.ReadAll(0, 20, nullptr));
    EXPECT_TRUE(file.CopyOut(buffer, 8, 2));
    EXPECT_STREQ(buffer, "89");
    EXPECT_FALSE(file.CopyOut(buffer, 8, 3));
    EXPECT_FALSE(file.CopyOut(buffer, 0xFFFFFFFF, 2));
    EXPECT_FALSE(file.CopyOut(buffer, 11, 0));
}

TEST_F(DataFileTest, EditsTheContentAndTheFile) {
    WriteBytes(Path(), "0123456789");
    Name(Path());
    EXPECT_FALSE(file.DeleteRange(0, 1));
    EXPECT_FALSE(file.InsertAt(0, "x", 1));
    ASSERT_TRUE(file.ReadAll(0, 0, &log));
    EXPECT_FALSE(file.InsertAt(0, "x", 1));  // no room without a limit
    ASSERT_TRUE(file.ReadAll(0, 14, &log));
    EXPECT_FALSE(file.DeleteRange(3, 3));
    EXPECT_FALSE(file.DeleteRange(0, 11));
    EXPECT_TRUE(file.DeleteRange(2, 5));
    EXPECT_EQ(file.Length(), 7u);
    EXPECT_STREQ(file.Content(), "0156789");
    EXPECT_FALSE(file.InsertAt(8, "x", 1));
    EXPECT_FALSE(file.InsertAt(0, "x", 0));
    EXPECT_FALSE(file.InsertAt(0, "x", -1));
    EXPECT_FALSE(file.InsertAt(0, nullptr, 1));
    EXPECT_FALSE(file.InsertAt(0, "1234567", 7));  // 14 is not below the limit
    EXPECT_TRUE(file.InsertAt(2, "abcdef", 6));
    EXPECT_STREQ(file.Content(), "01abcdef56789");
    file.Close();
    EXPECT_EQ(ReadBytes(Path()), "01abcdef56789");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(DataFileTest, KeepsItsEditWhenTheFileIsTaken) {
    WriteBytes(Path(), "0123456789");
    Name(Path());
    ASSERT_TRUE(file.ReadAll(0, 20, &log));
    file.Close();
    EXPECT_FALSE(file.DeleteRange(0, 1));  // closed: no length
    ASSERT_TRUE(file.ReadAll(0, 20, &log));
    {
        const LockedFile lock(Path(), FILE_SHARE_READ);
        EXPECT_FALSE(file.DeleteRange(0, 5));
        EXPECT_STREQ(file.Content(), "56789");
        EXPECT_EQ(file.Length(), 5u);
    }
    EXPECT_EQ(ReadBytes(Path()), "0123456789");
    EXPECT_TRUE(file.DeleteRange(0, 1));
    file.Close();
    EXPECT_EQ(ReadBytes(Path()), "6789");
}

TEST_F(DataFileTest, IsNotReadWhileItIsWritten) {
    Name(Path());
    ASSERT_TRUE(file.Create(true, &log));
    ASSERT_TRUE(file.Write("half", 4));
    DataFile other;
    ASSERT_TRUE(other.SetName(Path().c_str()));
    EXPECT_FALSE(other.ReadAll(0, 0, nullptr));
    file.Close();
    EXPECT_TRUE(other.ReadAll(0, 0, nullptr));
}

}  // namespace
}  // namespace kx::test
