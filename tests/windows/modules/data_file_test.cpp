// DataFile on real files.
#include <gmock/gmock.h>
#include <windows.h>

#include <cstring>
#include <functional>

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

// One after the other, each on the file that the one before has left.
TEST_F(DataFileTest, OperationsThatNoPaneCallsWorkOnTheFile) {
    Lay("0123456789");
    char read[4] = {};
    const SYSTEMTIME leapDay{2020, 2, 6, 29, 12, 30, 15, 500};
    SYSTEMTIME time{};
    const std::string copy = Path("copy");
    const auto load = [&] { return file.ReadAll(0, 20, &log); };
    const struct {
        const char* name;
        std::function<bool()> works;
        const char* bytes;
    } rows[] = {
        {"OpenRead", [&] { return file.OpenRead(&log) && file.Length() == 10 && file.Read(4, read, &log) == 4 && *read == '0'; },
         "0123456789"},
        {"OpenReadWrite", [&] { return file.OpenReadWrite(&log) && file.Seek(2, &log) && file.Write("X", 1); }, "01X3456789"},
        {"SetFileTimes", [&] { return file.OpenReadWrite(&log) && file.SetFileTimes(leapDay) && file.LastWriteTime(&time); }, "01X3456789"},
        {"DeleteRange", [&] { return load() && !file.DeleteRange(4, 4) && !file.DeleteRange(4, 11) && file.DeleteRange(2, 4); },
         "01456789"},
        {"InsertAt", [&] { return load() && !file.InsertAt(9, "ab", 2) && file.InsertAt(8, "ab", 2); }, "01456789ab"},
        {"InsertAt without room", [&] { return file.ReadAll(0, 0, &log) && !file.InsertAt(0, "ab", 2); }, "01456789ab"},
        {"CopyTo", [&] { return load() && file.CopyTo(0, copy.c_str()) && ReadBytes(copy) == "01456789ab"; }, "01456789ab"},
        {"CopyTo of none open", [&] { return !file.CopyTo(0, copy.c_str()); }, "01456789ab"},
        {"IsReadOnly", [&] { return SetFileAttributesA(Path().c_str(), FILE_ATTRIBUTE_READONLY) && file.IsReadOnly(); }, "01456789ab"},
        {"ClearReadOnly", [&] { return file.ClearReadOnly() && !file.IsReadOnly(); }, "01456789ab"},
        {"MoveTo", [&] { return file.CopyNamedTo(0, copy.c_str()) && file.MoveTo(0, Path("moved").c_str()); }, "(none)"},
        {"MakeTempName", [&] { return file.MakeTempName(folder.Path().c_str(), "kx") && file.Delete(0); }, "(none)"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(row.works()) << row.name;
        file.Close();
        EXPECT_EQ(ReadBytes(Path()), row.bytes) << row.name;
    }
    EXPECT_EQ(std::memcmp(&time, &leapDay, sizeof time), 0);
    FileFinder finder;
    bool isFolder = true;
    EXPECT_STREQ(finder.First(Path("m*").c_str(), &isFolder), "moved");
    EXPECT_TRUE(!isFolder && finder.Next() == nullptr && finder.First(Path("x*").c_str()) == nullptr);
}

}  // namespace
}  // namespace kx::test
