// The results of a spirometry.
#pragma once

#include <cstdint>

namespace kx {

inline constexpr int kSpirometryValues = 42;

// 424 bytes; the layout is this library's own. Volumes in litres, flows in litres per second, ratios in
// percent.
struct SpirometryRecord {
    std::uint32_t predictedSet;  // which set of predicted values
    std::uint32_t reserved4;
    double values[kSpirometryValues];
    std::uint8_t reserved344[80];
};

static_assert(sizeof(SpirometryRecord) == 424);

}  // namespace kx
