// DataFile on real files.
#include <gmock/gmock.h>
#include <windows.h>

#include "lib/fileutil.h"
#include "tests/rig/recorded_reports.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

class DataFileTest : public testing::Test {
  protected:
    std::string Path(const char* name = "a.txt") { return folder.Named(name); }
    // A file of these bytes, whose name `file` has.
    void Lay(std::string_view bytes) {
        WriteBytes(Path(), bytes);
        ASSERT_TRUE(file.SetName(Path().c_str()));
    }

    TempFolder folder;
    RecordedReports log;
    DataFile file;
};

TEST_F(DataFileTest, CreatesWritesAndReadsBack) {
    ASSERT_TRUE(file.SetName(Path().c_str()));
    ASSERT_TRUE(file.Create(false, &log));
    EXPECT_TRUE(file.Write("due\r\n", 5));
    DataFile other;
    ASSERT_TRUE(other.SetName(Path().c_str()));
    EXPECT_FALSE(other.ReadAll(0, 0, nullptr)) << "half written";
    EXPECT_TRUE(file.Seek(7, &log));  // beyond the end: the gap is filled with zeros
    EXPECT_TRUE(file.Write("x", 1));
    file.Close();
    EXPECT_TRUE(file.ReadAll(0, 0, &log));
    EXPECT_EQ(std::string(file.Content(), file.Length() + 1), std::string("due\r\n\0\0x\0", 9));
    char buffer[4] = {};
    EXPECT_EQ(file.ReadLine(0, buffer, 4), -1);
    EXPECT_TRUE(file.CopyOut(buffer, 6, 2));
    EXPECT_FALSE(file.CopyOut(buffer, 6, 3) || file.CopyOut(buffer, 0xFFFFFFFF, 2) || file.CopyOut(buffer, 9, 0));
    EXPECT_FALSE(file.Create(false, nullptr)) << "it exists";
    EXPECT_EQ(ReadBytes(Path()).size(), 8u);
    EXPECT_TRUE(file.CreateAlways(&log));
    file.Close();
    EXPECT_EQ(ReadBytes(Path()), "");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(DataFileTest, ReportsWhatCannotBeOpenedOrRead) {
    WriteBytes(Path("locked.txt"), "text");
    std::filesystem::create_directory(Path("folder"));
    const LockedFile lock(Path("locked.txt"));
    for (const char* name : {"missing.txt", "folder", "locked.txt", "a\"b?.txt"}) {
        ASSERT_TRUE(file.SetName(Path(name).c_str()));
        EXPECT_FALSE(file.ReadAll(0, 0, &log)) << name;
        EXPECT_THAT(log.Take(), ElementsAre("system Could not open File", EndsWith(" " + Path(name))));
        EXPECT_EQ(file.Content(), nullptr) << name;
    }
    char buffer[4];
    EXPECT_EQ(file.Read(4, buffer, &log), 0u);  // not open
    EXPECT_THAT(log.Take(), ElementsAre("system Could not read File", EndsWith("a\"b?.txt")));
    // A limit is no failure, but is told.
    Lay("0123456789");
    EXPECT_TRUE(file.ReadAll(0, 4, &log));
    EXPECT_STREQ(file.Content(), "0123");
    EXPECT_THAT(log.Take(), ElementsAre("system All records might not be read - buffer too small"));
    EXPECT_TRUE(file.ReadAll(0, 10, &log));
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(file.ReadAll(0, 0xFFFFFFFF, &log));  // more than the address space has
    EXPECT_THAT(log.Take(), ElementsAre(StartsWith("memory ..\\..\\lib\\fileutil ")));
    EXPECT_FALSE(file.IsOpen());
}

}  // namespace
}  // namespace kx::test
