// The version of a module of the suite as one number.
#pragma once

#include <cstdint>

namespace kx {

// Packs a file version of four 16-bit parts, given as the two words of a module's fixed file information:
// major and minor are the halves of the most significant word, build and revision those of the least
// significant one. Each part is added after the sum so far has moved left by 8 bits, so a part above 255
// carries into its neighbour.
constexpr std::uint32_t PackVersion(std::uint32_t mostSignificant, std::uint32_t leastSignificant) {
    const std::uint32_t parts[] = {mostSignificant >> 16, mostSignificant & 0xFFFF, leastSignificant >> 16,
                                   leastSignificant & 0xFFFF};
    std::uint32_t packed = 0;
    for (const std::uint32_t part : parts) {
        packed = (packed << 8) + part;
    }
    return packed;
}

// The oldest version of a sibling module that is called: 4.06, which is major 0, minor 4, build 0,
// revision 6.
inline constexpr std::uint32_t kMinimumModuleVersion = 0x40006;

}  // namespace kx
