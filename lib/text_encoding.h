// Characters of the two encodings that meet here: UTF-8 of files and programs, Windows-1252 of the records.
#pragma once

#include <optional>
#include <string_view>

namespace kx {

// Takes the first character off a text that is not empty. Nothing, and the text as it was, when it is no
// UTF-8 (cut, overlong, half of a surrogate pair, above U+10FFFF).
std::optional<char32_t> TakeUtf8(std::string_view& text);

// The byte of a character; nothing where Windows-1252 has none.
std::optional<char> ToWindows1252(char32_t code);

// The character of a byte; nothing for the five that have none.
std::optional<char32_t> FromWindows1252(char byte);

}  // namespace kx
