// Texts in fields of fixed size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace kx {

// Cuts at the field's size less one and always terminates.
//
// Copies in blocks, the last one overlapping the one before: for 32-bit x86 a copy of unknown size is
// compiled into an instruction that takes longer to begin than a statement to copy, and a library is
// thousands of them.
template <std::size_t kSize>
void StoreText(std::string_view text, char (&field)[kSize]) {
    constexpr std::size_t kBlock = 16;
    const std::size_t length = std::min(text.size(), kSize - 1);
    if (length >= kBlock) {
        for (std::size_t at = 0; at + kBlock <= length; at += kBlock) {
            std::memcpy(field + at, text.data() + at, kBlock);
        }
        std::memcpy(field + length - kBlock, text.data() + length - kBlock, kBlock);
    } else {
        for (std::size_t at = 0; at < length; ++at) {
            field[at] = text[at];
        }
    }
    field[length] = '\0';
}

}  // namespace kx
