#include "host/recording/record_text.h"

#include <algorithm>
#include <iterator>

#include "host/recording/text_scanner.h"
#include "lib/text_encoding.h"

namespace kx::recording {

namespace {

// The letters of U+0100 to U+017F without their marks.
constexpr char kBareLetters[] =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlL"
    "lLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(std::size(kBareLetters) == 0x80 + 1);

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

char RecordByte(char32_t code) {
    const char bare = code >= 0x100 && code < 0x180 ? kBareLetters[code - 0x100] : '?';
    return ToWindows1252(code).value_or(bare);
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
        text += code ? RecordByte(*code) : '?';
    }
    return text;
}

std::string FromRecordText(std::string_view windows1252) {
    std::string text;
    for (const char c : windows1252) {
        AppendUtf8(text, FromWindows1252(c).value_or(U'?'));
    }
    return text;
}

}  // namespace kx::recording
