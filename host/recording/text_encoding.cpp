#include "host/recording/text_encoding.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

// Windows-1252 from 0x80 to 0x9F; 0: no character.
constexpr char16_t kWindows1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The letters of U+0100 to U+017F without their marks.
constexpr char kBareLetters[] =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlL"
    "lLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(std::size(kBareLetters) == 0x80 + 1);

// Takes one character off the front; nothing, and text as it was, when it is no UTF-8.
std::optional<char32_t> TakeUtf8(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    const unsigned more = first < 0x80   ? 0u
                          : first < 0xC2 ? 4u
                          : first < 0xE0 ? 1u
                          : first < 0xF0 ? 2u
                          : first < 0xF5 ? 3u
                                         : 4u;
    if (more == 4 || text.size() <= more) {
        return std::nullopt;
    }
    char32_t code = more == 0 ? first : first & (0x3Fu >> more);
    for (unsigned i = 1; i <= more; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0u) != 0x80) {
            return std::nullopt;
        }
        code = code << 6 | (next & 0x3Fu);
    }
    constexpr char32_t kShortest[] = {0, 0x80, 0x800, 0x10000};
    if (code < kShortest[more] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
        return std::nullopt;
    }
    text.remove_prefix(more + 1);
    return code;
}

// For codes below 0x10000, which is all that Windows-1252 has.
void AppendUtf8(std::string& text, char32_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | code >> 12);
        text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
}

char ToWindows1252(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code < 0x100)) {
        return static_cast<char>(code);
    }
    const auto* found = code == 0 ? std::end(kWindows1252)
                                  : std::find(std::begin(kWindows1252), std::end(kWindows1252), code);
    if (found != std::end(kWindows1252)) {
        return static_cast<char>(0x80 + (found - std::begin(kWindows1252)));
    }
    return code >= 0x100 && code < 0x180 ? kBareLetters[code - 0x100] : '?';
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!TakeUtf8(text)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string TextOfField(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    std::string text = IsUtf8(bytes) ? std::string(bytes) : FromRecordText(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; },
        ' ');
    return std::string(Trim(text));
}

std::string ToRecordText(std::string_view utf8) {
    std::string text;
    while (!utf8.empty()) {
        const auto code = TakeUtf8(utf8);
        if (!code) {
            utf8.remove_prefix(1);
        }
        text += code ? ToWindows1252(*code) : '?';
    }
    return text;
}

std::string FromRecordText(std::string_view windows1252) {
    std::string text;
    for (const char c : windows1252) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t code = byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte;
        AppendUtf8(text, code == 0 && byte != 0 ? U'?' : code);
    }
    return text;
}

}  // namespace kx::recording
