#include "dialogs/statements/statement_library.h"

namespace kx {
namespace {

const char* OrHidden(const char* text) {
    return text[0] != '\0' ? text : kHiddenText;
}

}  // namespace

StatementLibrary::StatementLibrary() : sections_(std::make_unique_for_overwrite<Sections>()) {
    Clear();
}

const StatementLibrary::Entry* StatementLibrary::Find(std::size_t section, std::size_t entry) const {
    return section < kSections && entry < (*sections_)[section].reached
               ? &(*sections_)[section].entries[entry]
               : nullptr;
}

const char* StatementLibrary::Title(std::size_t section) const {
    return section < kSections ? OrHidden((*sections_)[section].title) : kHiddenText;
}

const char* StatementLibrary::Text(std::size_t section, std::size_t entry) const {
    const Entry* const found = Find(section, entry);
    return found != nullptr ? OrHidden(found->text) : kHiddenText;
}

const char* StatementLibrary::Code(std::size_t section, std::size_t entry) const {
    const Entry* const found = Find(section, entry);
    return found != nullptr ? OrHidden(found->code) : kHiddenText;
}

void StatementLibrary::SetTitle(std::size_t section, std::string_view title) {
    if (section < kSections) {
        StoreText(title, (*sections_)[section].title);
    }
}

void StatementLibrary::SetText(std::size_t section, std::size_t entry, std::string_view text) {
    if (Entry* const stored = Reach(section, entry)) {
        StoreText(text, stored->text);
    }
}

void StatementLibrary::SetCode(std::size_t section, std::size_t entry, std::string_view code) {
    if (Entry* const stored = Reach(section, entry)) {
        StoreText(code, stored->code);
    }
}

StatementLibrary StatementLibrary::Copy() const {
    StatementLibrary copy;
    *copy.sections_ = *sections_;
    return copy;
}

void StatementLibrary::Clear() {
    for (Section& section : *sections_) {
        section.title[0] = '\0';
        section.reached = 0;
    }
}

}  // namespace kx
