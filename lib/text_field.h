// Texts in the fixed fields of a record: read within the field, terminated there or not.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace kx {

// What a field of fieldSize bytes holds: up to its terminator, or all of it.
inline std::string_view WholeField(const char* field, std::size_t fieldSize) {
    const void* end = std::memchr(field, '\0', fieldSize);
    return {field,
            end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : fieldSize};
}

// What is read of a field of N bytes: never more than N - 1 characters, whatever it holds.
template <std::size_t N>
std::string_view FieldView(const char (&field)[N]) {
    return WholeField(field, N - 1);
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

template <std::size_t N>
void CopyField(const char (&field)[N], char* buffer, std::size_t size) {
    CopyText(FieldView(field), buffer, size);
}

// A text put together in a buffer of at least one byte, which is terminated after every part. A part is taken
// whole or not at all.
class BoundedText {
  public:
    BoundedText(char* buffer, std::size_t size) : buffer_(buffer), size_(size) { buffer_[0] = '\0'; }

    bool IsFull() const { return length_ + 1 >= size_; }
    // False: the part does not fit.
    bool Add(std::string_view part) {
        if (length_ + part.size() >= size_) {
            return false;
        }
        CopyText(part, buffer_ + length_, size_ - length_);
        length_ += part.size();
        return true;
    }

  private:
    char* buffer_;
    std::size_t size_;
    std::size_t length_ = 0;
};

// Stores at most fieldSize - 1 characters of text and fills the rest of the field with zeros. Returns whether
// the field held another text before. A null text, a null field or a size of 0 changes nothing. The text may
// stand in the field itself.
inline bool StoreText(char* field, std::size_t fieldSize, const char* text) {
    if (field == nullptr || fieldSize == 0 || text == nullptr) {
        return false;
    }
    const std::string_view kept = WholeField(text, fieldSize - 1);
    const bool changed = kept != WholeField(field, fieldSize);
    std::memmove(field, kept.data(), kept.size());
    std::memset(field + kept.size(), 0, fieldSize - kept.size());
    return changed;
}

template <std::size_t N>
bool StoreField(char (&field)[N], const char* text) {
    return StoreText(field, N, text);
}

}  // namespace kx
