#include "suite/kxdb/archive/folded_text.h"

namespace kx::db {

namespace {

// The base letters of Windows-1252 from 0xC0 on.
constexpr std::string_view kBaseLetters =
    "aaaaaaaceeeeiiii"
    "dnooooo ouuuuyts"
    "aaaaaaaceeeeiiii"
    "dnooooo ouuuuyty";
static_assert(kBaseLetters.size() == 64);

char FoldedCharacter(unsigned char c) {
    if (c >= 0xC0) {
        return kBaseLetters[c - 0xC0u];
    }
    switch (c) {
        case 0x8A:
        case 0x9A:
            return 's';
        case 0x8E:
        case 0x9E:
            return 'z';
        case 0x9F:
            return 'y';
        case 0x92:  // the typographic apostrophe of a name
            return '\'';
        default:
            break;
    }
    if (c >= 0x80 || c < ' ') {
        return ' ';
    }
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

}  // namespace

std::string Folded(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    for (const char c : text) {
        folded += FoldedCharacter(static_cast<unsigned char>(c));
    }
    return folded;
}

}  // namespace kx::db
