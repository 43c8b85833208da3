#include "suite/text_encoding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace kx::suite {

namespace {

// What Windows-1252 has from 0x80 to 0x9F; 0: nothing.
constexpr char16_t kUpperControls[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

char ToByte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<char>(c);
    }
    const auto* found = std::find(std::begin(kUpperControls), std::end(kUpperControls), c);
    return found == std::end(kUpperControls) || c == 0 ? '?'
                                                       : static_cast<char>(0x80 + (found - kUpperControls));
}

// Takes the first character of the text. False: it is no UTF-8.
bool TakeCharacter(std::string_view& text, char32_t& c) {
    const auto byte = [&text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(0);
    const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if ((first >= 0x80 && first < 0xC0) || first >= 0xF8 || text.size() < length) {
        return false;
    }
    c = length == 1 ? first : first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return false;
        }
        c = c << 6 | (byte(i) & 0x3Fu);
    }
    text.remove_prefix(length);
    return c >= kLeast[length] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

}  // namespace

std::string ToWindows1252(std::string_view file) {
    std::string_view rest = file;
    if (rest.starts_with(kByteOrderMark)) {
        rest.remove_prefix(kByteOrderMark.size());
    }
    std::string text;
    text.reserve(rest.size());
    while (!rest.empty()) {
        char32_t c = 0;
        if (!TakeCharacter(rest, c)) {
            return std::string(file);
        }
        text += ToByte(c);
    }
    return text;
}

}  // namespace kx::suite
