#include "dialogs/statements/statement_matcher.h"

#include <algorithm>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/fixed_text.h"

namespace kx {
namespace {

constexpr char kSource[] = "interp";
constexpr std::uint32_t kStringLimitLine = 1086;
constexpr std::size_t kTextKeyBytes = sizeof(std::uint64_t);
constexpr std::size_t kCodeKeyBytes = sizeof(std::uint32_t);

bool IsWordGap(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// The first bytes of a text without their case, the first one lowest; zeros behind its end.
template <typename Key>
Key FoldedKey(std::string_view text) {
    Key key = 0;
    for (std::size_t at = 0; at < std::min(text.size(), sizeof(Key)); ++at) {
        key |= static_cast<Key>(Key{Folded(text[at])} << (8 * at));
    }
    return key;
}

// The bits of a key that a prefix of that length decides.
template <typename Key>
constexpr Key PrefixMask(std::size_t length) {
    return length >= sizeof(Key) ? ~Key{0} : static_cast<Key>((Key{1} << (8 * length)) - 1);
}

// A prefix to compare with many texts.
class FoldedPrefix {
  public:
    explicit FoldedPrefix(std::string_view prefix)
        : prefix_(prefix),
          key_(FoldedKey<std::uint64_t>(prefix)),
          mask_(PrefixMask<std::uint64_t>(prefix.size())) {}

    bool Begins(std::uint64_t textKey, const char* text) const {
        return ((textKey ^ key_) & mask_) == 0 && (prefix_.size() <= kTextKeyBytes || BeginsBehindKey(text));
    }

  private:
    // The texts agree in as many bytes as a key has, so the text has no end there; its end differs from the
    // prefix.
    bool BeginsBehindKey(const char* text) const {
        for (std::size_t at = kTextKeyBytes; at < prefix_.size(); ++at) {
            if (Folded(text[at]) != Folded(prefix_[at])) {
                return false;
            }
        }
        return true;
    }

    std::string_view prefix_;
    std::uint64_t key_;
    std::uint64_t mask_;
};

}  // namespace

bool StatementMatcher::Add(std::string_view text, std::string_view code) {
    if (count_ == kMaxEntries) {
        return false;
    }
    if (entries_ == nullptr) {
        entries_ = std::make_unique<Entries>();
        textKeys_.reserve(kMaxEntries);
        codeKeys_.reserve(kMaxEntries);
    }
    CompletionEntry& entry = (*entries_)[count_++];
    StoreText(text, entry.text);
    StoreText(code, entry.code);
    textKeys_.push_back(FoldedKey<std::uint64_t>(entry.text));
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
                    log->LOGOEMERROR(kSource, kStringLimitLine, "string limit 1024");
                }
                return;
            }
        }
    }
}

bool StatementMatcher::SomeTextBeginsWith(std::string_view prefix) const {
    const FoldedPrefix folded(prefix);
    for (std::size_t index = 0; index < count_; ++index) {
        if (folded.Begins(textKeys_[index], (*entries_)[index].text)) {
            return true;
        }
    }
    return false;
}

bool StatementMatcher::SomeCodeIs(std::string_view code) const {
    return code.size() < kCodeKeyBytes &&
           std::find(codeKeys_.begin(), codeKeys_.end(), FoldedKey<std::uint32_t>(code)) != codeKeys_.end();
}

bool StatementMatcher::Start(std::size_t lineStart, std::string_view lineText) {
    matchCount_ = 0;
    exactCode_ = false;
    lineText = lineText.substr(0, lineText.find('\0'));
    for (std::size_t at = 0; at < lineText.size(); ++at) {
        if (at > 0 && (!IsWordGap(lineText[at - 1]) || IsWordGap(lineText[at]))) {
            continue;
        }
        const std::string_view prefix = lineText.substr(at);
        if (prefix.size() <= kMaxPrefix && (SomeTextBeginsWith(prefix) || (at == 0 && SomeCodeIs(prefix)))) {
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
    const std::string_view prefix = Prefix();
    matchCount_ = 0;
    exactCode_ = false;
    if (prefix.empty()) {
        return;
    }
    if (prefix.size() < kCodeKeyBytes) {
        const auto key = FoldedKey<std::uint32_t>(prefix);
        const auto mask = PrefixMask<std::uint32_t>(prefix.size());
        for (std::size_t index = 0; index < count_; ++index) {
            const std::uint32_t difference = codeKeys_[index] ^ key;
            if (difference == 0) {
                matches_[0] = static_cast<std::uint16_t>(index);
                matchCount_ = 1;
                exactCode_ = true;
                return;
            }
            if ((difference & mask) == 0 && matchCount_ < kMaxMatches) {
                matches_[matchCount_++] = static_cast<std::uint16_t>(index);
            }
        }
    }
    const std::size_t byCode = matchCount_;
    const FoldedPrefix folded(prefix);
    for (std::size_t index = 0; index < count_ && matchCount_ < kMaxMatches; ++index) {
        if (folded.Begins(textKeys_[index], (*entries_)[index].text) &&
            std::find(matches_.begin(), matches_.begin() + byCode, index) == matches_.begin() + byCode) {
            matches_[matchCount_++] = static_cast<std::uint16_t>(index);
        }
    }
}

}  // namespace kx
