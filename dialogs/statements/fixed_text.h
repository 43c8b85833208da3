// Texts in fields of fixed size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kx {

// Cuts at the field's size less one and always terminates.
template <std::size_t kSize>
void StoreText(std::string_view text, char (&field)[kSize]) {
    const std::size_t length = std::min(text.size(), kSize - 1);
    std::copy_n(text.begin(), length, field);
    field[length] = '\0';
}

}  // namespace kx
