// Scaling of integers the way the platform's MulDiv does it, for code that knows no platform.
#pragma once

#include <cstdint>

namespace kx {

// value * multiplier / divisor with a 64-bit product, rounded to the nearest integer, halves away from zero.
// -1 when divisor is 0 or the quotient does not fit 32 bits (Win32 MulDiv).
constexpr std::int32_t MulDivRound(std::int32_t value, std::int32_t multiplier, std::int32_t divisor) {
    if (divisor == 0) {
        return -1;
    }
    const bool negative = ((value < 0) != (multiplier < 0)) != (divisor < 0);
    const auto magnitude = [](std::int32_t v) {
        return v < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(static_cast<std::int64_t>(v))
                     : static_cast<std::uint64_t>(v);
    };
    const std::uint64_t dividend = magnitude(value) * magnitude(multiplier) + magnitude(divisor) / 2;
    // A 32-bit machine divides 64 bits by a loop, and the points of a trace need none.
    const std::uint64_t quotient = dividend <= UINT32_MAX ? static_cast<std::uint32_t>(dividend) /
                                                                static_cast<std::uint32_t>(magnitude(divisor))
                                                          : dividend / magnitude(divisor);
    if (quotient > 0x7FFFFFFFu) {
        return -1;
    }
    return negative ? -static_cast<std::int32_t>(quotient) : static_cast<std::int32_t>(quotient);
}

}  // namespace kx
