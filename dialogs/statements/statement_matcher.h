// Which statements or names the user may be about to write: the portable half of typing completion.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "dialogs/statements/statement_library.h"
#include "lib/reporter.h"

namespace kx {

struct CompletionEntry {
    char text[256];
    char code[4];
};
static_assert(sizeof(CompletionEntry) == 260);

// Texts are Windows-1252 and compared without regard to case (case_fold.h). Positions are characters from the
// start of the edit whose text is completed.
class StatementMatcher {
  public:
    static constexpr std::size_t kMaxEntries = 1024;
    static constexpr std::size_t kMaxMatches = 5;
    static constexpr std::size_t kMaxPrefix = 255;

    // ---- what can be completed

    // Adds an entry behind the others, its text cut at 255 and its code at 3 characters. False when there are
    // kMaxEntries already. Addresses of entries stay valid as long as the matcher.
    bool Add(std::string_view text, std::string_view code);
    // Adds every statement of the library that is not hidden, in its order. Stops at the first that finds no
    // room, with a report ("string limit 1024") to log, which may be null.
    void AddStatements(const StatementLibrary& library, Reporter* log);

    // ---- what the user types

    // Looks for what is being typed in a line from its start at position lineStart to the caret, and
    // refreshes the matches. From the first word of the line on, the rest of the line that begins at a word
    // is taken as the prefix when the text of an entry begins with it. At the first word, the exact code of
    // an entry is taken as well: a code typed at the start of a line is always understood, also where no text
    // begins with its letters; farther on, words of free text are often spelled like a code. False when
    // nothing is found; PrefixStart() is then the line's end and the prefix stays as it was, and there are no
    // matches.
    bool Start(std::size_t lineStart, std::string_view lineText);
    // Takes the character that now stands at `position`, which ends the prefix, and refreshes the matches.
    // False when the position lies outside the prefix and the place behind it (the prefix is then unchanged),
    // and when nothing matches: the completion is over.
    bool Extend(std::size_t position, char character);

    std::string_view Prefix() const { return {prefix_, prefixLength_}; }
    std::size_t PrefixStart() const { return prefixStart_; }

    // ---- what matches

    // At most kMaxMatches entries in the order of their list: the first entry whose code is the prefix,
    // alone; else those whose code begins with it and then those whose text does, each in the order in which
    // they were added.
    std::size_t MatchCount() const { return matchCount_; }
    // index below MatchCount().
    const CompletionEntry& Match(std::size_t index) const { return (*entries_)[matches_[index]]; }
    // Whether the one match is there by its exact code, which means that the user has chosen it.
    bool IsExactCode() const { return exactCode_; }

  private:
    using Entries = std::array<CompletionEntry, kMaxEntries>;

    // Places in order_ of the texts that begin with a prefix.
    struct Range {
        std::size_t first;
        std::size_t end;
    };

    void SortTexts();
    Range TextsBeginningWith(std::string_view prefix) const;
    bool SomeCodeIs(std::string_view code) const;
    void Refresh();
    // False: the prefix is a code, which is the one match.
    bool CollectCodes();
    void CollectTexts();

    std::unique_ptr<Entries> entries_;
    std::size_t count_ = 0;
    // The codes without their case, in the order of the entries.
    std::vector<std::uint32_t> codeKeys_;
    // The texts by the alphabet, and beside them their first letters: a line of many words is searched at
    // each keystroke.
    std::vector<std::uint16_t> order_;
    std::vector<std::uint64_t> textKeys_;
    std::array<std::uint16_t, kMaxMatches> matches_{};
    std::size_t matchCount_ = 0;
    bool exactCode_ = false;
    char prefix_[kMaxPrefix + 1] = {};
    std::size_t prefixLength_ = 0;
    std::size_t prefixStart_ = 0;
};

}  // namespace kx
