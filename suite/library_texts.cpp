#include "suite/library_texts.h"

#include <algorithm>

namespace kx::suite {

namespace {

constexpr UINT kWindows1252 = 1252;
constexpr int kLongestText = 256;

}  // namespace

std::size_t LibraryTexts::LoadText(std::uint32_t id, char* buffer, std::size_t size) const {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    wchar_t wide[kLongestText];
    const int length = library_ != nullptr ? LoadStringW(library_, id, wide, kLongestText) : 0;
    // One byte a character in this code page.
    const int kept = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(length), size - 1));
    const int bytes =
        kept > 0 ? WideCharToMultiByte(kWindows1252, 0, wide, kept, buffer, kept, nullptr, nullptr) : 0;
    buffer[bytes] = '\0';
    return static_cast<std::size_t>(bytes);
}

}  // namespace kx::suite
