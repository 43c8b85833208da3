#include "dialogs/statements/statement_library.h"

#include <cstring>

#include "dialogs/statements/fixed_text.h"

namespace kx {
namespace {

const char* OrHidden(const char* text) {
    return text[0] != '\0' ? text : kHiddenText;
}

}  // namespace

// Zero-initialised: every field empty.
StatementLibrary::StatementLibrary() : sections_(std::make_unique<Sections>()) {}

const char* StatementLibrary::Title(std::size_t section) const {
    return section < kSections ? OrHidden((*sections_)[section].title) : kHiddenText;
}

const char* StatementLibrary::Text(std::size_t section, std::size_t entry) const {
    return section < kSections && entry < kEntries ? OrHidden((*sections_)[section].entries[entry].text)
                                                   : kHiddenText;
}

const char* StatementLibrary::Code(std::size_t section, std::size_t entry) const {
    return section < kSections && entry < kEntries ? OrHidden((*sections_)[section].entries[entry].code)
                                                   : kHiddenText;
}

void StatementLibrary::SetTitle(std::size_t section, std::string_view title) {
    if (section < kSections) {
        StoreText(title, (*sections_)[section].title);
    }
}

void StatementLibrary::SetText(std::size_t section, std::size_t entry, std::string_view text) {
    if (section < kSections && entry < kEntries) {
        StoreText(text, (*sections_)[section].entries[entry].text);
    }
}

void StatementLibrary::SetCode(std::size_t section, std::size_t entry, std::string_view code) {
    if (section < kSections && entry < kEntries) {
        StoreText(code, (*sections_)[section].entries[entry].code);
    }
}

void StatementLibrary::Clear() {
    std::memset(static_cast<void*>(sections_.get()), 0, sizeof(Sections));
}

}  // namespace kx
