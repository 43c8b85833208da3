// Texts in the fixed fields of a record: read within the field, terminated there or not.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace kx {

// What a field of fieldSize bytes holds: up to its terminator, or all of it.
inline std::string_view FieldView(const char* field, std::size_t fieldSize) {
    const void* end = std::memchr(field, '\0', fieldSize);
    return {field,
            end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : fieldSize};
}

template <std::size_t N>
std::string_view FieldView(const char (&field)[N]) {
    return FieldView(field, N);
}

// Copies what fits into size - 1 characters and terminates it; nothing without a buffer or with size 0.
inline void CopyText(std::string_view text, char* buffer, std::size_t size) {
    if (buffer == nullptr || size == 0) {
        return;
    }
    const std::size_t length = text.size() < size ? text.size() : size - 1;
    if (length > 0) {
        std::memmove(buffer, text.data(), length);
    }
    buffer[length] = '\0';
}

// A getter of a field with N bytes never gives more than N - 1 characters, whatever the field holds.
template <std::size_t N>
void CopyField(const char (&field)[N], char* buffer, std::size_t size) {
    CopyText(FieldView(field, N - 1), buffer, size);
}

// Stores at most fieldSize - 1 characters of text and fills the rest of the field with zeros. Returns whether
// the field held another text before. A null text, a null field or a size of 0 changes nothing. The text may
// stand in the field itself.
inline bool StoreText(char* field, std::size_t fieldSize, const char* text) {
    if (field == nullptr || fieldSize == 0 || text == nullptr) {
        return false;
    }
    const std::string_view kept = FieldView(text, fieldSize - 1);
    const bool changed = kept != FieldView(field, fieldSize);
    std::memmove(field, kept.data(), kept.size());
    std::memset(field + kept.size(), 0, fieldSize - kept.size());
    return changed;
}

template <std::size_t N>
bool StoreField(char (&field)[N], const char* text) {
    return StoreText(field, N, text);
}

}  // namespace kx
