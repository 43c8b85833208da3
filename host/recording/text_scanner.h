// Cutting a line into fields and numbers.
#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kx::recording {

inline bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

inline std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// The fields between blanks.
inline std::vector<std::string_view> Fields(std::string_view line) {
    std::vector<std::string_view> fields;
    while (!(line = Trim(line)).empty()) {
        std::size_t end = 0;
        while (end < line.size() && !IsBlank(line[end])) {
            ++end;
        }
        fields.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
    return fields;
}

// ASCII lower case: header texts know no locale.
inline std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

// Takes a number off the front of text; nothing, and text as it was, when there is none or it does not fit T.
template <typename T>
std::optional<T> TakeNumber(std::string_view& text) {
    T value{};
    const char* first = text.data();
    const char* last = first + text.size();
    // from_chars takes no plus sign, which headers may have.
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    const auto [end, failure] = std::from_chars(plus ? first + 1 : first, last, value);
    if (failure != std::errc{}) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - first));
    return value;
}

// The whole of text as a number.
template <typename T>
std::optional<T> WholeNumber(std::string_view text) {
    const std::optional<T> value = TakeNumber<T>(text);
    return text.empty() ? value : std::nullopt;
}

// Takes one character off the front of text when it is there.
inline bool Take(std::string_view& text, char c) {
    if (text.empty() || text.front() != c) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

}  // namespace kx::recording
