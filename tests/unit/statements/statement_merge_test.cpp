#include "dialogs/statements/statement_merge.h"

#include <random>
#include <set>

namespace kx::test {
namespace {

constexpr std::size_t kFew = 3;  // sections that are used

std::set<std::string> TextsOf(const StatementLibrary& library) {
    std::set<std::string> texts;
    for (std::size_t i = 0; i < StatementLibrary::kSections * StatementLibrary::kEntries; ++i) {
        if (!IsHidden(library.Title(i / StatementLibrary::kEntries))) {
            texts.insert(library.Text(i / StatementLibrary::kEntries, i % StatementLibrary::kEntries));
        }
    }
    texts.erase(kHiddenText);
    return texts;
}

// A user's edits; what is written is written by nobody else.
StatementLibrary Edited(const StatementLibrary& base, std::mt19937& random, const std::string& user, bool renames) {
    StatementLibrary library = base.Copy();
    for (int i = 0; i < 5; ++i) {
        library.SetEntry(random() % kFew, random() % 8, random() % 3 == 0 ? "" : user + std::to_string(i), "");
    }
    if (renames) {
        library.SetTitle(random() % kFew, "Sezione di " + user);
    }
    return library;
}

TEST(StatementMerge, KeepsWhatBothHaveWrittenAndHidesWhatEitherHasHidden) {
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        StatementLibrary base;
        for (std::size_t section = 0; section < kFew; ++section) {
            base.SetTitle(section, "Sezione " + std::to_string(section));
            for (std::size_t entry = 0; entry < 6; ++entry) {
                base.SetEntry(section, entry, "base" + std::to_string(section) + std::to_string(entry), "c");
            }
        }
        const StatementLibrary mine = Edited(base, random, "a", round % 3 == 0), theirs = Edited(base, random, "b", round % 3 == 1);
        StatementLibrary merged = theirs.Copy(), alone = base.Copy();
        ASSERT_TRUE(MergeStatements(base, mine, merged) && MergeStatements(base, mine, alone));
        const std::set<std::string> ofMine = TextsOf(mine), ofTheirs = TextsOf(theirs);
        std::set<std::string> expected = ofMine;
        expected.insert(ofTheirs.begin(), ofTheirs.end());
        std::erase_if(expected,
                      [&](const std::string& text) { return text.starts_with("base") && ofMine.count(text) + ofTheirs.count(text) < 2; });
        EXPECT_EQ(TextsOf(merged), expected) << round;
        EXPECT_EQ(TextsOf(alone), ofMine) << round;
    }
}

TEST(StatementMerge, HidesNoSectionThatTheOtherWritesInAndSaysWhenThereIsNoPlace) {
    StatementLibrary base;
    base.SetTitle(0, "Ritmo");
    base.SetEntry(0, 0, "Sinusale", "n");
    base.SetTitle(1, "Asse");
    base.SetEntry(1, 0, "Normale", "n");
    StatementLibrary mine = base.Copy(), theirs = base.Copy();
    mine.SetTitle(0, "");
    mine.SetTitle(1, "");
    theirs.SetEntry(0, 1, "Atriale", "a");
    ASSERT_TRUE(MergeStatements(base, mine, theirs));
    EXPECT_THAT(TextsOf(theirs), testing::ElementsAre("Atriale", "Sinusale"));
    EXPECT_STREQ(theirs.Code(0, 1), "a");
    StatementLibrary one = base.Copy(), full = base.Copy();
    one.SetEntry(0, 1, "Uno in pi\xF9", "");
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        full.SetEntry(0, entry, "pieno " + std::to_string(entry), "");
    }
    EXPECT_FALSE(MergeStatements(base, one, full));
}

}  // namespace
}  // namespace kx::test
