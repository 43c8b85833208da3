// Letters without their case, as the user's keyboard knows them.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace kx {
namespace case_fold {

// Windows-1252: A-Z, the accented capitals À-Þ but for the multiplication sign, and the four capitals that
// the code page has outside Latin-1. This is what CharLowerBuffA does in an Italian or English Windows; an
// own table gives the same answer on every system. Accents are kept: "e" does not match "è".
constexpr std::array<unsigned char, 256> MakeTable() {
    std::array<unsigned char, 256> table{};
    for (std::size_t code = 0; code < table.size(); ++code) {
        const bool ascii = code >= 'A' && code <= 'Z';
        const bool accented = code >= 0xC0 && code <= 0xDE && code != 0xD7;
        table[code] = static_cast<unsigned char>(ascii || accented ? code + 0x20 : code);
    }
    table[0x8A] = 0x9A;  // S with caron
    table[0x8C] = 0x9C;  // OE
    table[0x8E] = 0x9E;  // Z with caron
    table[0x9F] = 0xFF;  // Y with diaeresis
    return table;
}

inline constexpr std::array<unsigned char, 256> kTable = MakeTable();

}  // namespace case_fold

constexpr unsigned char Folded(char character) {
    return case_fold::kTable[static_cast<unsigned char>(character)];
}

constexpr bool BeginsWithFolded(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) {
        return false;
    }
    for (std::size_t at = 0; at < prefix.size(); ++at) {
        if (Folded(text[at]) != Folded(prefix[at])) {
            return false;
        }
    }
    return true;
}

}  // namespace kx
