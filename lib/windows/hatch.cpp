// The hatch patterns of Bitmap.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "lib/windows/bitmap.h"

namespace kx {

namespace {

constexpr int kPatternSide = 8;
using PatternRows = std::array<std::uint8_t, kPatternSide>;

constexpr PatternRows kPatterns[] = {
    {0x77, 0xBB, 0xDD, 0xEE, 0x77, 0xBB, 0xDD, 0xEE},
    {0xEE, 0xDD, 0xBB, 0x77, 0xEE, 0xDD, 0xBB, 0x77},
    {0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA},
};

}  // namespace

Bitmap Bitmap::MakeHatch(int pattern, int scale) {
    const bool known = pattern >= 0 && pattern < static_cast<int>(std::size(kPatterns));
    const PatternRows& rows = kPatterns[known ? pattern : 0];
    scale = std::clamp(scale, 1, 16);
    const int side = 2 * kPatternSide * scale;
    const int rowBytes = side / 8;
    std::vector<std::uint8_t> bits(static_cast<std::size_t>(rowBytes * side));
    for (int y = 0; y < side; ++y) {
        const unsigned row = rows[static_cast<std::size_t>(y / scale % kPatternSide)];
        for (int x = 0; x < side; ++x) {
            const unsigned bit = row >> (7 - x / scale % kPatternSide) & 1U;
            bits[static_cast<std::size_t>(y * rowBytes + x / 8)] |=
                static_cast<std::uint8_t>(bit << (7 - x % 8));
        }
    }
    Bitmap hatch;
    hatch.Create(side, side, 1, 1, bits.data());
    return hatch;
}

}  // namespace kx
