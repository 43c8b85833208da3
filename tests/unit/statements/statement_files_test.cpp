#include "dialogs/statements/statement_files.h"

#include "dialogs/statements/statement_insertion.h"

namespace kx::test {
namespace {

TEST(StatementFiles, NamesAFileForEachTestType) {
    std::string names;
    for (const std::uint32_t testType : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 0xFFFFFFFFu}) {
        for (const auto use : {StatementUse::kLibrary, StatementUse::kDictionary}) {
            const char* name = StatementFileName(testType, use);
            names += name != nullptr ? name : " -";
        }
    }
    EXPECT_EQ(names,
              "\\stress.htm\\stress.htm - -\\resting.htm\\resting.htm -\\hires.htm\\holter.htm\\holter.htm\\abpm.htm\\abpm.htm"
              "\\spiro.htm\\spiro.htm - - - -");
}

TEST(StatementFiles, StandBesideTheModule) {
    char path[24];
    EXPECT_TRUE(StatementFilePath("C:\\suite\\kxdialogs.dll", "\\stress.htm", path, sizeof path));
    EXPECT_STREQ(path, "C:\\suite\\stress.htm");
    EXPECT_TRUE(StatementFilePath("\\kxdialogs.dll", "\\abpm.htm", path, sizeof path));
    EXPECT_STREQ(path, "\\abpm.htm");
    EXPECT_FALSE(StatementFilePath("kxdialogs.dll", "\\abpm.htm", path, sizeof path));
    EXPECT_STREQ(path, "");
    EXPECT_FALSE(StatementFilePath("C:\\suites\\and\\kxdialogs.dll", "\\abpm.htm", path, 22));
    EXPECT_TRUE(StatementFilePath("C:\\suites\\and\\kxdialogs.dll", "\\abpm.htm", path, 23));
    EXPECT_FALSE(StatementFilePath("C:\\a.dll", "\\abpm.htm", path, 0));
}

TEST(StatementInsertion, CutsALibraryItemBeforeItsCode) {
    EXPECT_EQ(LibraryInsertion("Ritmo sinusale [rs]"), "Ritmo sinusale ");
    EXPECT_EQ(LibraryInsertion("Ritmo sinusale"), "Ritmo sinusale ");
    EXPECT_EQ(LibraryInsertion("[rs]"), "");
    EXPECT_EQ(LibraryInsertion(""), " ");
}

TEST(StatementInsertion, PutsTheChosenTextInPlaceOfThePrefix) {
    const struct {
        const char* text;
        std::size_t start;
        std::size_t length;
        const char* chosen;
        std::size_t caret;
        const char* expected;
    } rows[] = {{"rs", 0, 2, "Ritmo", 5, "Ritmo"},
                {"a rs b", 2, 2, "Ri", 4, "a Ri b"},
                {"a rs b", 2, 2, "", 2, "a  b"},
                {"a rs bcd", 2, 2, "123456789", 11, "a 123456789 bcd"},      // fits exactly
                {"a rs bcd", 2, 2, "1234567890", kNoInsertion, "a rs bcd"},  // one too many
                {"a", 2, 0, "x", kNoInsertion, "a"},
                {"a", 1, static_cast<std::size_t>(-1), "x", kNoInsertion, "a"}};
    for (const auto& row : rows) {
        char text[16] = {};
        std::string(row.text).copy(text, 15);
        EXPECT_EQ(InsertCompletion(text, sizeof text, row.start, row.length, row.chosen), row.caret) << row.chosen;
        EXPECT_STREQ(text, row.expected);
    }
}

}  // namespace
}  // namespace kx::test
