#include "dialogs/statements/statement_matcher.h"

#include <algorithm>
#include <utility>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/fixed_text.h"
#include "dialogs/statements/interp_report.h"

namespace kx {
namespace {

constexpr std::uint32_t kStringLimitLine = 1086;
constexpr std::size_t kTextKeyBytes = sizeof(std::uint64_t);
constexpr std::size_t kLongestCode = sizeof(CompletionEntry::code) - 1;

bool IsWordGap(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// The first bytes of a text without their case, so that keys compare as texts do; zeros behind its end.
template <typename Key>
Key FoldedKey(std::string_view text) {
    Key key = 0;
    for (std::size_t at = 0; at < sizeof(Key); ++at) {
        key = static_cast<Key>(key << 8) | (at < text.size() ? Folded(text[at]) : Key{0});
    }
    return key;
}

// The bits of a key that a prefix of that length leaves open.
template <typename Key>
constexpr Key OpenBits(std::size_t length) {
    return length >= sizeof(Key) ? Key{0} : static_cast<Key>(~Key{0} >> (8 * length));
}

// Less than, equal to or greater than 0 as text is before, at its beginning equal to, or behind the prefix.
int CompareFolded(const char* text, std::string_view prefix) {
    for (const char character : prefix) {
        const int difference = Folded(*text++) - Folded(character);
        if (difference != 0) {
            return difference;
        }
    }
    return 0;
}

}  // namespace

bool StatementMatcher::Add(std::string_view text, std::string_view code) {
    if (count_ == kMaxEntries) {
        return false;
    }
    if (entries_ == nullptr) {
        entries_ = std::make_unique<Entries>();
        codeKeys_.reserve(kMaxEntries);
    }
    CompletionEntry& entry = (*entries_)[count_++];
    StoreText(text, entry.text);
    StoreText(code, entry.code);
    codeKeys_.push_back(FoldedKey<std::uint32_t>(entry.code));
    return true;
}

void StatementMatcher::AddStatements(const StatementLibrary& library, Reporter* log) {
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            const std::string_view text = library.Text(section, entry);
            const std::string_view code = library.Code(section, entry);
            if (!IsHidden(text) && !Add(text, IsHidden(code) ? std::string_view() : code)) {
                if (log != nullptr) {
                    log->LOGOEMERROR(kInterpSource, kStringLimitLine, "string limit 1024");
                }
                return;
            }
        }
    }
}

void StatementMatcher::SortTexts() {
    if (order_.size() == count_) {
        return;
    }
    std::vector<std::pair<std::uint64_t, std::uint16_t>> texts(count_);
    for (std::size_t index = 0; index < count_; ++index) {
        texts[index] = {FoldedKey<std::uint64_t>((*entries_)[index].text), static_cast<std::uint16_t>(index)};
    }
    std::sort(texts.begin(), texts.end(), [this](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first
                                  : CompareFolded((*entries_)[a.second].text, (*entries_)[b.second].text) < 0;
    });
    order_.resize(count_);
    textKeys_.resize(count_);
    for (std::size_t place = 0; place < count_; ++place) {
        textKeys_[place] = texts[place].first;
        order_[place] = texts[place].second;
    }
}

StatementMatcher::Range StatementMatcher::TextsBeginningWith(std::string_view prefix) const {
    const auto key = FoldedKey<std::uint64_t>(prefix);
    const auto lowest = std::lower_bound(textKeys_.begin(), textKeys_.end(), key);
    const auto highest =
        std::upper_bound(lowest, textKeys_.end(), key | OpenBits<std::uint64_t>(prefix.size()));
    auto first = order_.begin() + (lowest - textKeys_.begin());
    auto end = order_.begin() + (highest - textKeys_.begin());
    if (prefix.size() > kTextKeyBytes) {
        first = std::lower_bound(first, end, prefix, [this](std::uint16_t index, std::string_view wanted) {
            return CompareFolded((*entries_)[index].text, wanted) < 0;
        });
        end = std::upper_bound(first, end, prefix, [this](std::string_view wanted, std::uint16_t index) {
            return CompareFolded((*entries_)[index].text, wanted) > 0;
        });
    }
    return {static_cast<std::size_t>(first - order_.begin()), static_cast<std::size_t>(end - order_.begin())};
}

bool StatementMatcher::SomeCodeIs(std::string_view code) const {
    return code.size() <= kLongestCode &&
           std::find(codeKeys_.begin(), codeKeys_.end(), FoldedKey<std::uint32_t>(code)) != codeKeys_.end();
}

bool StatementMatcher::Start(std::size_t lineStart, std::string_view lineText) {
    SortTexts();
    matchCount_ = 0;
    exactCode_ = false;
    lineText = lineText.substr(0, lineText.find('\0'));
    for (std::size_t at = 0; at < lineText.size(); ++at) {
        if (at > 0 && (!IsWordGap(lineText[at - 1]) || IsWordGap(lineText[at]))) {
            continue;
        }
        const std::string_view prefix = lineText.substr(at);
        if (prefix.size() > kMaxPrefix) {
            continue;
        }
        const Range texts = TextsBeginningWith(prefix);
        if (texts.first < texts.end || (at == 0 && SomeCodeIs(prefix))) {
            StoreText(prefix, prefix_);
            prefixLength_ = prefix.size();
            prefixStart_ = lineStart + at;
            Refresh();
            return matchCount_ > 0;
        }
    }
    prefixStart_ = lineStart + lineText.size();
    return false;
}

bool StatementMatcher::Extend(std::size_t position, char character) {
    const std::size_t at = position - prefixStart_;
    if (position < prefixStart_ || at > prefixLength_ || at >= kMaxPrefix || character == '\0') {
        return false;
    }
    prefix_[at] = character;
    prefix_[at + 1] = '\0';
    prefixLength_ = at + 1;
    Refresh();
    return matchCount_ > 0;
}

void StatementMatcher::Refresh() {
    matchCount_ = 0;
    exactCode_ = false;
    if (prefixLength_ > 0 && CollectCodes()) {
        CollectTexts();
    }
}

bool StatementMatcher::CollectCodes() {
    if (prefixLength_ > kLongestCode) {
        return true;
    }
    const auto key = FoldedKey<std::uint32_t>(Prefix());
    const auto open = OpenBits<std::uint32_t>(prefixLength_);
    for (std::size_t index = 0; index < count_; ++index) {
        const std::uint32_t difference = codeKeys_[index] ^ key;
        if ((difference & ~open) != 0) {
            continue;
        }
        if (difference == 0) {
            matches_[0] = static_cast<std::uint16_t>(index);
            matchCount_ = 1;
            exactCode_ = true;
            return false;
        }
        if (matchCount_ < kMaxMatches) {
            matches_[matchCount_++] = static_cast<std::uint16_t>(index);
        }
    }
    return true;
}

void StatementMatcher::CollectTexts() {
    const auto codesEnd = matches_.begin() + static_cast<std::ptrdiff_t>(matchCount_);
    const Range texts = TextsBeginningWith(Prefix());
    for (std::size_t place = texts.first; place < texts.end; ++place) {
        const std::uint16_t index = order_[place];
        auto end = matches_.begin() + static_cast<std::ptrdiff_t>(matchCount_);
        // The range is in the order of the alphabet, the list in the order of the entries.
        const auto behind = std::upper_bound(codesEnd, end, index);
        if (std::find(matches_.begin(), codesEnd, index) != codesEnd || behind == matches_.end()) {
            continue;
        }
        if (matchCount_ < kMaxMatches) {
            ++matchCount_;
            ++end;
        }
        std::move_backward(behind, end - 1, end);
        *behind = index;
    }
}

}  // namespace kx
