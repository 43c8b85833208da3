#include "lib/fileutil.h"

#include <algorithm>
#include <cstring>

namespace kx {
namespace {

std::size_t BoundedLength(const char* text, std::size_t limit) {
    const auto* const end = static_cast<const char*>(std::memchr(text, '\0', limit));
    return end != nullptr ? static_cast<std::size_t>(end - text) : limit;
}

// The length of the text at `at`, never beyond the end of the buffer.
std::size_t TextLength(const char (&names)[kNamesSize], std::size_t at) {
    return at < kNamesSize ? BoundedLength(names + at, kNamesSize - at) : 0;
}

}  // namespace

const char* FileNameAt(const char (&names)[kNamesSize], bool multiSelect, std::uint32_t index,
                       char (&composed)[kComposedNameSize]) {
    const std::size_t folder = TextLength(names, 0);
    if (!multiSelect) {
        return index == 0 ? names : nullptr;
    }
    if (folder == 0) {
        return nullptr;
    }
    std::size_t at = folder + 1;
    if (TextLength(names, at) == 0) {
        return index == 0 ? names : nullptr;
    }
    for (std::uint32_t skipped = 0; skipped < index; ++skipped) {
        at += TextLength(names, at) + 1;
        if (TextLength(names, at) == 0) {
            return nullptr;
        }
    }
    const std::size_t name = TextLength(names, at);
    if (folder + 1 + name >= kComposedNameSize) {
        return nullptr;
    }
    std::memcpy(composed, names, folder);
    composed[folder] = '\\';
    std::memcpy(composed + folder + 1, names + at, name);
    composed[folder + 1 + name] = '\0';
    return composed;
}

std::int32_t ReadLineAt(const char* content, std::uint32_t length, std::uint32_t offset, char* destination,
                        std::int32_t maxLength) {
    if (content == nullptr || destination == nullptr || maxLength <= 0 || offset >= length) {
        return -1;
    }
    const std::size_t count = std::min(static_cast<std::uint32_t>(maxLength) - 1, length - offset);
    const char* const line = content + offset;
    const auto* const feed = static_cast<const char*>(std::memchr(line, '\n', count));
    const std::size_t searched = feed != nullptr ? static_cast<std::size_t>(feed - line) : count;
    const auto* const carriage = static_cast<const char*>(std::memchr(line, '\r', searched));

    const char* const end = carriage != nullptr ? carriage : feed;
    const std::size_t copied = end != nullptr ? static_cast<std::size_t>(end - line) : count;
    std::memcpy(destination, line, copied);
    destination[copied] = '\0';
    const char* const last = feed != nullptr ? feed : carriage;
    return last != nullptr ? static_cast<std::int32_t>(last + 1 - content) : -1;
}

std::uint32_t RemoveBytes(char* content, std::uint32_t length, std::uint32_t from, std::uint32_t to) {
    std::memmove(content + from, content + to, length - to);
    return length - (to - from);
}

std::uint32_t InsertBytes(char* content, std::uint32_t length, std::uint32_t position, const char* bytes,
                          std::uint32_t count) {
    std::memmove(content + position + count, content + position, length - position);
    std::memcpy(content + position, bytes, count);
    return length + count;
}

void MakeDialogFilter(const char* filter, char (&list)[kDialogTextSize]) {
    std::memset(list, 0, sizeof list);
    if (filter == nullptr) {
        return;
    }
    const std::size_t length = BoundedLength(filter, kDialogTextSize - 2);
    std::memcpy(list, filter, length);
    std::replace(list, list + length, '^', '\0');
}

}  // namespace kx
