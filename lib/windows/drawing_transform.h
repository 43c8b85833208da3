// The linear transform from a caller's own units to the units of a device.
#pragma once

#include <cstdint>

#include "lib/muldiv.h"

namespace kx {

// device = MulDiv(logical - logical origin, multiplier, divisor) + device origin, per axis. MulDiv rounds to
// the nearest integer and gives -1 for a divisor of 0 and for a quotient beyond 32 bits. Sums wrap around at
// 32 bits.
struct DrawingTransform {
    static constexpr std::int32_t kUnitScale = 100;

    std::int32_t logicalOriginX = 0;
    std::int32_t deviceOriginX = 0;
    std::int32_t logicalOriginY = 0;
    std::int32_t deviceOriginY = 0;
    std::int32_t xDivisor = kUnitScale;
    std::int32_t xMultiplier = kUnitScale;
    std::int32_t yDivisor = kUnitScale;
    std::int32_t yMultiplier = kUnitScale;

    constexpr std::int32_t DeviceX(std::int32_t x) const {
        return Sum(ScaleX(Difference(x, logicalOriginX)), deviceOriginX);
    }
    constexpr std::int32_t DeviceY(std::int32_t y) const {
        return Sum(ScaleY(Difference(y, logicalOriginY)), deviceOriginY);
    }
    // A width and a height: the origins do not count.
    constexpr std::int32_t ScaleX(std::int32_t w) const { return MulDivRound(w, xMultiplier, xDivisor); }
    constexpr std::int32_t ScaleY(std::int32_t h) const { return MulDivRound(h, yMultiplier, yDivisor); }
    // The other way, for an extent that was measured on the device.
    constexpr std::int32_t LogicalWidth(std::int32_t cx) const {
        return MulDivRound(cx, xDivisor, xMultiplier);
    }
    constexpr std::int32_t LogicalHeight(std::int32_t cy) const {
        return MulDivRound(cy, yDivisor, yMultiplier);
    }

  private:
    static constexpr std::int32_t Sum(std::int32_t a, std::int32_t b) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
    }
    static constexpr std::int32_t Difference(std::int32_t a, std::int32_t b) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
    }
};

static_assert(sizeof(DrawingTransform) == 32);

}  // namespace kx
