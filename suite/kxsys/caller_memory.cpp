#include "suite/kxsys/caller_memory.h"

#include <cstdint>
#include <cstring>

#include "suite/kxsys/report_line.h"

namespace kx::sys {
namespace {

// The system's own copying fails where reading the memory would be a crash.
bool Read(std::uintptr_t address, void* bytes, std::size_t size) {
    SIZE_T read = 0;
    return ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address), bytes, size,
                             &read) &&
           read == size;
}

}  // namespace

CallerText::CallerText(const char* text) {
    // Page by page, since what follows the page in which a text ends need not be readable.
    constexpr std::uintptr_t kPage = 4096;
    auto address = reinterpret_cast<std::uintptr_t>(text);
    std::size_t length = 0;
    while (text != nullptr && length < KXSYS_LONGEST_TEXT) {
        const std::size_t toPageEnd = kPage - address % kPage;
        const std::size_t wanted = KXSYS_LONGEST_TEXT - length;
        const std::size_t size = toPageEnd < wanted ? toPageEnd : wanted;
        if (!Read(address, text_ + length, size)) {
            break;
        }
        const void* end = std::memchr(text_ + length, '\0', size);
        if (end != nullptr) {
            length = static_cast<std::size_t>(static_cast<const char*>(end) - text_);
            break;
        }
        length += size;
        address += size;
    }
    text_[length] = '\0';
    TidyText(text_);
}

HWND OwnerWindow(const void* owner) {
    constexpr std::size_t kHandleAt = 4;
    HWND window = nullptr;
    const bool read =
        owner != nullptr && Read(reinterpret_cast<std::uintptr_t>(owner) + kHandleAt, &window, sizeof window);
    return read && IsWindow(window) ? window : nullptr;
}

}  // namespace kx::sys
