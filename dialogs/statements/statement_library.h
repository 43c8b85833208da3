// The content of a statement file: sections of ready-made statements, each with a short code.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "dialogs/statements/fixed_text.h"

namespace kx {

// What stands for a title, a statement or a code that is empty; readers skip it. A text that reads so is
// hidden too.
inline constexpr char kHiddenText[] = "X";

// Whether a text of a library stands for nothing.
constexpr bool IsHidden(std::string_view text) {
    return text.empty() || text == kHiddenText;
}

// Texts are Windows-1252. Setters cut at the sizes below; an index outside the library reads as hidden and
// sets nothing.
class StatementLibrary {
  public:
    static constexpr std::size_t kSections = 48;
    static constexpr std::size_t kEntries = 64;  // of a section
    static constexpr std::size_t kTextSize = 128;
    static constexpr std::size_t kCodeSize = 4;

    // Every section and entry hidden.
    StatementLibrary();

    // The stored text, or kHiddenText where it is empty. Valid until the next change.
    const char* Title(std::size_t section) const;
    const char* Text(std::size_t section, std::size_t entry) const;
    const char* Code(std::size_t section, std::size_t entry) const;

    void SetTitle(std::size_t section, std::string_view title);
    void SetText(std::size_t section, std::size_t entry, std::string_view text);
    void SetCode(std::size_t section, std::size_t entry, std::string_view code);
    void SetEntry(std::size_t section, std::size_t entry, std::string_view text, std::string_view code);
    void Clear();
    StatementLibrary Copy() const;

  private:
    struct Entry {
        char text[kTextSize];
        char code[kCodeSize];
    };
    struct Section {
        char title[kTextSize];
        std::size_t reached;  // entries from here on hold nothing yet, not even an empty text
        std::array<Entry, kEntries> entries;
    };
    using Sections = std::array<Section, kSections>;

    const Entry* Find(std::size_t section, std::size_t entry) const;
    Entry* Reach(std::size_t section, std::size_t entry);

    std::unique_ptr<Sections> sections_;  // 412 KB: no object for a stack
};

// Here, because a file is read by thousands of these calls.
inline StatementLibrary::Entry* StatementLibrary::Reach(std::size_t section, std::size_t entry) {
    if (section >= kSections || entry >= kEntries) {
        return nullptr;
    }
    Section& reached = (*sections_)[section];
    for (; reached.reached <= entry; ++reached.reached) {
        reached.entries[reached.reached].text[0] = '\0';
        reached.entries[reached.reached].code[0] = '\0';
    }
    return &reached.entries[entry];
}

inline void StatementLibrary::SetEntry(std::size_t section, std::size_t entry, std::string_view text,
                                       std::string_view code) {
    if (Entry* const stored = Reach(section, entry)) {
        StoreText(text, stored->text);
        StoreText(code, stored->code);
    }
}

}  // namespace kx
