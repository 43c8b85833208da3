#include "dialogs/statements/statement_merge.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace kx::test {
namespace {

constexpr std::size_t kFew = 3;  // sections that are used

std::set<std::string> TextsOf(const StatementLibrary& library) {
    std::set<std::string> texts;
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries && !IsHidden(library.Title(section)); ++entry) {
            texts.insert(library.Text(section, entry));
        }
    }
    texts.erase(kHiddenText);
    return texts;
}

// A user's edits; what is written is written by nobody else.
StatementLibrary Edited(const StatementLibrary& base, std::mt19937& random, const std::string& user, bool renames) {
    StatementLibrary library = base.Copy();
    for (int i = 0; i < 5; ++i) {
        const std::size_t section = random() % kFew;
        const std::string text = random() % 3 == 0 ? "" : user + std::to_string(i);
        library.SetEntry(section, random() % 8, text, "");
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
        const StatementLibrary mine = Edited(base, random, "a", round % 3 == 0);
        const StatementLibrary theirs = Edited(base, random, "b", round % 3 == 1);
        StatementLibrary merged = theirs.Copy();
        ASSERT_TRUE(MergeStatements(base, mine, merged));
        const std::set<std::string> ofMine = TextsOf(mine);
        const std::set<std::string> ofTheirs = TextsOf(theirs);
        std::set<std::string> expected = ofMine;
        expected.insert(ofTheirs.begin(), ofTheirs.end());
        std::erase_if(expected,
                      [&](const std::string& text) { return text.rfind("base", 0) == 0 && ofMine.count(text) + ofTheirs.count(text) < 2; });
        EXPECT_EQ(TextsOf(merged), expected) << round;
        StatementLibrary alone = base.Copy();
        ASSERT_TRUE(MergeStatements(base, mine, alone));
        EXPECT_EQ(TextsOf(alone), ofMine) << round;
    }
}

TEST(StatementMerge, HidesNoSectionThatTheOtherWritesIn) {
    StatementLibrary base;
    for (const std::size_t section : {0u, 1u}) {
        base.SetTitle(section, section == 0 ? "Ritmo" : "Asse");
        base.SetEntry(section, 0, section == 0 ? "Sinusale" : "Normale", "n");
    }
    StatementLibrary mine = base.Copy();
    mine.SetTitle(0, "");
    mine.SetTitle(1, "");
    StatementLibrary theirs = base.Copy();
    theirs.SetEntry(0, 1, "Atriale", "a");
    ASSERT_TRUE(MergeStatements(base, mine, theirs));
    EXPECT_THAT(TextsOf(theirs), testing::ElementsAre("Atriale", "Sinusale"));
    EXPECT_STREQ(theirs.Code(0, 1), "a");
}

TEST(StatementMerge, SaysWhenThereIsNoPlace) {
    StatementLibrary base;
    base.SetTitle(0, "Ritmo");
    StatementLibrary mine = base.Copy();
    mine.SetEntry(0, 0, "Uno in pi\xF9", "");
    StatementLibrary theirs = base.Copy();
    for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
        theirs.SetEntry(0, entry, "pieno " + std::to_string(entry), "");
    }
    EXPECT_FALSE(MergeStatements(base, mine, theirs));
}

}  // namespace
}  // namespace kx::test
