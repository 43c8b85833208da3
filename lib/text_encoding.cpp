#include "lib/text_encoding.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace kx {

namespace {

// What Windows-1252 has from 0x80 to 0x9F; 0: nothing.
constexpr char16_t kFrom80[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                  0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

std::optional<char32_t> TakeUtf8(std::string_view& text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if ((first >= 0x80 && first < 0xC0) || first >= 0xF8 || text.size() < length) {
        return std::nullopt;
    }
    char32_t code = length == 1 ? first : first & (0x7Fu >> length);
    for (const char next : text.substr(1, length - 1)) {
        if ((static_cast<std::uint8_t>(next) & 0xC0) != 0x80) {
            return std::nullopt;
        }
        code = code << 6 | (static_cast<std::uint8_t>(next) & 0x3Fu);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kLeast[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return code;
}

std::optional<char> ToWindows1252(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
        return static_cast<char>(code);
    }
    const auto* found = std::find(std::begin(kFrom80), std::end(kFrom80), code);
    if (found == std::end(kFrom80)) {
        return std::nullopt;
    }
    return static_cast<char>(0x80 + (found - kFrom80));
}

std::optional<char32_t> FromWindows1252(char byte) {
    const auto value = static_cast<std::uint8_t>(byte);
    if (value < 0x80 || value >= 0xA0) {
        return value;
    }
    const char32_t code = kFrom80[value - 0x80];
    return code == 0 ? std::nullopt : std::optional(code);
}

}  // namespace kx
