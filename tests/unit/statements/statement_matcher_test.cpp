#include "dialogs/statements/statement_matcher.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

struct Matcher : StatementMatcher {
    Matcher(std::initializer_list<std::pair<std::string, const char*>> entries) {
        for (const auto& [text, code] : entries) {
            EXPECT_TRUE(Add(text, code));
        }
    }
};

std::vector<std::string> Matches(const StatementMatcher& matcher) {
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < matcher.MatchCount(); ++index) {
        texts.emplace_back(matcher.Match(index).text);
    }
    return texts;
}

TEST(StatementMatcher, FindsThePrefixAtTheFirstWordThatBeginsAText) {
    Matcher matcher{{"Ritmo sinusale", "rs"}, {"sinusale e regolare", ""}, {"\xC8 presente", ""}, {"Onde Q", "q1"}};
    const struct {
        const char* line;
        bool found;
        std::size_t start;
        const char* prefix;
    } rows[] = {{"un sinu", true, 3, "sinu"},
                {"a  \t onde", true, 5, "onde"},  // several gaps
                {"ritmoo", false, 6, ""},
                {"q1", true, 0, "q1"},    // the exact code at the start of the line, which no text begins with
                {"un q1", false, 5, ""},  // farther on it is a word like another
                {"", false, 0, ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(matcher.Start(70, row.line), row.found) << row.line;
        EXPECT_EQ(matcher.PrefixStart(), 70 + row.start) << row.line;
        EXPECT_TRUE(row.found ? matcher.Prefix() == row.prefix : matcher.MatchCount() == 0) << row.line;
    }
}

TEST(StatementMatcher, ListsCodesBeforeTextsAndFiveInAllButAnExactCodeAlone) {
    Matcher matcher{{"aa 1", ""}, {"z 1", "aab"}, {"AA 2", ""}, {"aa 3", "aac"}, {"aa 4", "q"}, {"z 2", "AAD"}, {"aa 5", ""}};
    ASSERT_TRUE(matcher.Start(0, "aa"));
    EXPECT_THAT(Matches(matcher), ElementsAre("z 1", "aa 3", "z 2", "aa 1", "AA 2"));
    EXPECT_FALSE(matcher.IsExactCode());
    ASSERT_TRUE(matcher.Extend(2, ' '));
    EXPECT_THAT(Matches(matcher), ElementsAre("aa 1", "AA 2", "aa 3", "aa 4", "aa 5"));

    Matcher exact{{"Ritmo", "rsx"}, {"rs in V1", ""}, {"Ritmo sinusale", "Rs"}, {"second of the code", "rs"}};
    ASSERT_TRUE(exact.Start(10, "r") && !exact.IsExactCode());
    ASSERT_TRUE(exact.Extend(11, 'S') && exact.IsExactCode());
    EXPECT_THAT(Matches(exact), ElementsAre("Ritmo sinusale"));
    ASSERT_TRUE(exact.Extend(12, 'x') && exact.IsExactCode());
    EXPECT_THAT(Matches(exact), ElementsAre("Ritmo"));
    EXPECT_FALSE(exact.Extend(13, 'x') || exact.IsExactCode());
}

TEST(StatementMatcher, ExtendWritesWithinThePrefixAndCutsItThere) {
    Matcher matcher{{"ritmo sinusale", ""}, {"rado", ""}};
    ASSERT_TRUE(matcher.Start(5, "ritmo"));
    EXPECT_TRUE(matcher.Extend(6, 'i') && matcher.Prefix() == "ri") << "the caret went back";
    EXPECT_TRUE(matcher.Extend(6, 'A'));
    EXPECT_THAT(Matches(matcher), ElementsAre("rado"));
    for (const std::size_t outside : {std::size_t{0}, std::size_t{4}, std::size_t{8}, std::size_t{5000}}) {
        EXPECT_TRUE(!matcher.Extend(outside, 'd') && matcher.Prefix() == "rA") << outside;
    }
    EXPECT_TRUE(!matcher.Extend(7, 'x') && matcher.MatchCount() == 0);
}

TEST(StatementMatcher, ComparesTextsToTheirEnd) {
    const std::string longest(255, 'a');
    Matcher matcher{{"Blocco AV di primo grado", ""}, {"Blocco AV di secondo grado", ""}, {longest + "tail", "codes"}};
    EXPECT_TRUE(matcher.Start(0, "BLOCCO AV DI SECONDO GRADO"));
    EXPECT_THAT(Matches(matcher), ElementsAre("Blocco AV di secondo grado"));
    EXPECT_FALSE(matcher.Start(0, "Blocco AV di secondo grado "));
    EXPECT_TRUE(matcher.Start(0, longest));
    EXPECT_STREQ(matcher.Match(0).code, "cod");
    EXPECT_FALSE(matcher.Extend(255, 'a') || matcher.Start(0, longest + "a")) << "the longest prefix";
    EXPECT_TRUE(matcher.Start(0, std::string(300, 'x') + " blocco"));
}

}  // namespace
}  // namespace kx::test
