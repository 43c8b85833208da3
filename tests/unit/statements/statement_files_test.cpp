#include "dialogs/statements/statement_files.h"

#include "dialogs/statements/statement_insertion.h"

namespace kx::test {
namespace {

TEST(StatementFiles, StandBesideTheModule) {
    char path[24];
    EXPECT_TRUE(StatementFilePath("C:\\suite\\kxdialogs.dll", "\\stress.htm", path, sizeof path));
    EXPECT_STREQ(path, "C:\\suite\\stress.htm");
    EXPECT_FALSE(StatementFilePath("kxdialogs.dll", "\\abpm.htm", path, sizeof path));
    EXPECT_STREQ(path, "");
    EXPECT_TRUE(StatementFilePath("C:\\suites\\and\\kxdialogs.dll", "\\abpm.htm", path, 23));
    EXPECT_FALSE(StatementFilePath("C:\\suites\\and\\kxdialogs.dll", "\\abpm.htm", path, 22));
    EXPECT_FALSE(StatementFilePath("C:\\a.dll", "\\abpm.htm", path, 0));
    EXPECT_EQ(LibraryInsertion("Ritmo [rs]") + LibraryInsertion("Ritmo") + LibraryInsertion("[rs]"), "Ritmo Ritmo ");
}

TEST(StatementInsertion, PutsTheChosenTextInPlaceOfThePrefix) {
    char text[16] = "a rs bcd";
    EXPECT_EQ(InsertCompletion(text, sizeof text, 2, 2, "1234567890"), kNoInsertion) << "one too many";
    EXPECT_EQ(InsertCompletion(text, sizeof text, 9, 0, "x"), kNoInsertion);
    EXPECT_EQ(InsertCompletion(text, sizeof text, 1, static_cast<std::size_t>(-1), "x"), kNoInsertion);
    EXPECT_STREQ(text, "a rs bcd");
    EXPECT_EQ(InsertCompletion(text, sizeof text, 2, 2, "123456789"), 11u) << "fits exactly";
    EXPECT_STREQ(text, "a 123456789 bcd");
    EXPECT_EQ(InsertCompletion(text, sizeof text, 2, 9, "Ri"), 4u);
    EXPECT_STREQ(text, "a Ri bcd");
}

}  // namespace
}  // namespace kx::test
