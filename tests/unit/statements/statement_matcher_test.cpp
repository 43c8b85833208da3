#include "dialogs/statements/statement_matcher.h"

#include "dialogs/statements/case_fold.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Entry {
    const char* text;
    const char* code;
};

void Fill(StatementMatcher& matcher, std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) {
        ASSERT_TRUE(matcher.Add(entry.text, entry.code));
    }
}

std::vector<std::string> Matches(const StatementMatcher& matcher) {
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < matcher.MatchCount(); ++index) {
        texts.emplace_back(matcher.Match(index).text);
    }
    return texts;
}

TEST(CaseFold, KnowsTheCapitalsOfWindows1252) {
    const std::string capitals = "AZ\xC0\xC8\xD6\xD8\xDE\x8A\x8C\x8E\x9F";
    const std::string small = "az\xE0\xE8\xF6\xF8\xFE\x9A\x9C\x9E\xFF";
    EXPECT_TRUE(BeginsWithFolded(capitals, small));
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        if (capitals.find(character) == std::string::npos && (code < 'A' || code > 'Z') && (code < 0xC0 || code > 0xDE)) {
            EXPECT_EQ(Folded(character), code);
        }
    }
    EXPECT_EQ(Folded('\xD7'), 0xD7);  // the multiplication sign
    EXPECT_FALSE(BeginsWithFolded("e", "\xE8"));
    EXPECT_FALSE(BeginsWithFolded("ab", "abc"));
}

TEST(StatementMatcher, FindsThePrefixAtTheFirstWordThatBeginsAText) {
    StatementMatcher matcher;
    Fill(matcher, {{"Ritmo sinusale", "rs"}, {"sinusale e regolare", ""}, {"\xC8 presente", ""}, {"Onde Q", "q1"}});
    const struct {
        const char* line;
        bool found;
        std::size_t start;
        const char* prefix;
    } rows[] = {{"r", true, 0, "r"},
                {"RITMO SIN", true, 0, "RITMO SIN"},
                {"con ritmo", true, 4, "ritmo"},
                {"un sinu", true, 3, "sinu"},
                {"a  \t onde", true, 5, "onde"},  // several gaps
                {"si \xE8", true, 3, "\xE8"},
                {"ritmoo", false, 6, ""},
                {"ritmo ", true, 0, "ritmo "},
                {"xritmo", false, 6, ""},
                {"q1", true, 0, "q1"},    // the exact code at the start of the line, which no text begins with
                {"un q1", false, 5, ""},  // farther on it is a word like another
                {"", false, 0, ""}};
    for (const auto& row : rows) {
        for (const std::size_t lineStart : {std::size_t{0}, std::size_t{70}}) {
            EXPECT_EQ(matcher.Start(lineStart, row.line), row.found) << row.line;
            EXPECT_EQ(matcher.PrefixStart(), lineStart + row.start) << row.line;
            if (row.found) {
                EXPECT_EQ(matcher.Prefix(), row.prefix) << row.line;
            } else {
                EXPECT_EQ(matcher.MatchCount(), 0u) << row.line;
            }
        }
    }
}

TEST(StatementMatcher, ListsCodesBeforeTextsAndFiveInAll) {
    StatementMatcher matcher;
    Fill(matcher, {{"aa 1", ""}, {"z 1", "aab"}, {"AA 2", ""}, {"aa 3", "aac"}, {"aa 4", "q"}, {"z 2", "AAD"}, {"aa 5", ""}});
    ASSERT_TRUE(matcher.Start(0, "aa"));
    EXPECT_THAT(Matches(matcher), ElementsAre("z 1", "aa 3", "z 2", "aa 1", "AA 2"));
    EXPECT_FALSE(matcher.IsExactCode());
    ASSERT_TRUE(matcher.Extend(2, ' '));
    EXPECT_THAT(Matches(matcher), ElementsAre("aa 1", "AA 2", "aa 3", "aa 4", "aa 5"));
    ASSERT_TRUE(matcher.Extend(3, '4'));
    EXPECT_THAT(Matches(matcher), ElementsAre("aa 4"));
}

TEST(StatementMatcher, AnExactCodeStandsAlone) {
    StatementMatcher matcher;
    Fill(matcher, {{"Ritmo", "rsx"}, {"rs in V1", ""}, {"Ritmo sinusale", "Rs"}, {"second of the code", "rs"}});
    ASSERT_TRUE(matcher.Start(10, "r"));
    EXPECT_FALSE(matcher.IsExactCode());
    ASSERT_TRUE(matcher.Extend(11, 'S'));
    EXPECT_THAT(Matches(matcher), ElementsAre("Ritmo sinusale"));
    EXPECT_TRUE(matcher.IsExactCode());
    ASSERT_TRUE(matcher.Extend(12, 'x'));
    EXPECT_THAT(Matches(matcher), ElementsAre("Ritmo"));
    EXPECT_TRUE(matcher.IsExactCode());
    EXPECT_FALSE(matcher.Extend(13, 'x'));
    EXPECT_FALSE(matcher.IsExactCode());
}

TEST(StatementMatcher, ExtendWritesWithinThePrefixAndCutsItThere) {
    StatementMatcher matcher;
    Fill(matcher, {{"ritmo sinusale", ""}, {"rado", ""}});
    ASSERT_TRUE(matcher.Start(5, "ritmo"));
    EXPECT_TRUE(matcher.Extend(6, 'i'));  // the caret went back
    EXPECT_EQ(matcher.Prefix(), "ri");
    EXPECT_TRUE(matcher.Extend(6, 'A'));
    EXPECT_THAT(Matches(matcher), ElementsAre("rado"));
    for (const std::size_t outside : {std::size_t{0}, std::size_t{4}, std::size_t{8}, std::size_t{5000}}) {
        EXPECT_FALSE(matcher.Extend(outside, 'd')) << outside;
        EXPECT_EQ(matcher.Prefix(), "rA");
    }
    EXPECT_FALSE(matcher.Extend(7, 'x'));
    EXPECT_EQ(matcher.MatchCount(), 0u);
}

TEST(StatementMatcher, ComparesTextsToTheirEnd) {
    StatementMatcher matcher;
    const std::string longest(255, 'a');
    Fill(matcher, {{"Blocco AV di primo grado", ""}, {"Blocco AV di secondo grado", ""}});
    ASSERT_TRUE(matcher.Add(longest + "tail", "codes"));
    EXPECT_TRUE(matcher.Start(0, "BLOCCO AV DI SECONDO GRADO"));
    EXPECT_THAT(Matches(matcher), ElementsAre("Blocco AV di secondo grado"));
    EXPECT_FALSE(matcher.Start(0, "Blocco AV di secondo grado "));
    EXPECT_TRUE(matcher.Start(0, longest));
    EXPECT_STREQ(matcher.Match(0).code, "cod");
    EXPECT_FALSE(matcher.Extend(255, 'a'));  // the longest prefix
    EXPECT_FALSE(matcher.Start(0, longest + "a"));
    EXPECT_TRUE(matcher.Start(0, std::string(300, 'x') + " blocco"));
}

TEST(StatementMatcher, TakesTheStatementsOfALibrary) {
    StatementLibrary library;
    library.SetTitle(0, "A");
    library.SetText(0, 0, "uno");
    library.SetCode(0, 0, "1");
    library.SetText(0, 1, "X");
    library.SetText(5, 3, "uno e due");  // of a section without title
    library.SetCode(5, 3, "X");
    StatementMatcher matcher;
    RecordedReports log;
    matcher.AddStatements(library, &log);
    ASSERT_TRUE(matcher.Start(0, "uno"));
    EXPECT_THAT(Matches(matcher), ElementsAre("uno", "uno e due"));
    EXPECT_STREQ(matcher.Match(0).code, "1");
    EXPECT_STREQ(matcher.Match(1).code, "");
    EXPECT_THAT(log.Take(), IsEmpty());

    for (std::size_t section = 0; section < 17; ++section) {
        for (std::size_t entry = 0; entry < 64; ++entry) {
            library.SetText(section, entry, "riga");
        }
    }
    matcher.AddStatements(library, &log);
    EXPECT_EQ(matcher.EntryCount(), 1024u);
    EXPECT_THAT(log.Take(), ElementsAre("oem interp 1086 string limit 1024"));
    EXPECT_FALSE(matcher.Add("1025", ""));
}

}  // namespace
}  // namespace kx::test
