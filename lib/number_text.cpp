#include "lib/number_text.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace kx {
namespace {

unsigned long Long(std::uint64_t value) {
    return static_cast<unsigned long>(value);
}

std::uint64_t Magnitude(std::int64_t value) {
    return value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(value)
                     : static_cast<std::uint64_t>(value);
}

}  // namespace

void FormatNumber(char* buffer, std::size_t size, std::int32_t value) {
    std::snprintf(buffer, size, "%ld", static_cast<long>(value));
}

void FormatUnsigned(char* buffer, std::size_t size, std::uint32_t value) {
    std::snprintf(buffer, size, "%lu", Long(value));
}

void FormatHex(char* buffer, std::size_t size, std::uint32_t value) {
    std::snprintf(buffer, size, "%lX", Long(value));
}

void FormatFixed(char* buffer, std::size_t size, double value, int decimals) {
    std::snprintf(buffer, size, "%3.*f", std::clamp(decimals, 0, 15), value);
}

void FormatTenths(char* buffer, std::size_t size, std::uint32_t value) {
    std::snprintf(buffer, size, "%lu.%lu", Long(value / 10), Long(value % 10));
}

void FormatScaled(char* buffer, std::size_t size, std::int32_t multiplier, std::int32_t divisor, int decimals,
                  std::int32_t value) {
    if (divisor == 0) {
        std::snprintf(buffer, size, "...");
        return;
    }
    decimals = std::clamp(decimals, 0, 9);
    std::uint64_t unit = 1;
    for (int i = 0; i < decimals; ++i) {
        unit *= 10;
    }
    // The whole part and the decimals apart: each product fits 64 bits, whatever the arguments are.
    const std::int64_t product = static_cast<std::int64_t>(value) * multiplier;
    const std::uint64_t by = Magnitude(divisor);
    std::uint64_t whole = Magnitude(product) / by;
    std::uint64_t part = (Magnitude(product) % by * unit + by / 2) / by;
    whole += part / unit;
    part %= unit;
    if (whole > 0x7FFFFFFF) {
        std::snprintf(buffer, size, "...");
        return;
    }
    const bool negative = (product < 0) != (divisor < 0) && (whole != 0 || part != 0);
    const char* const sign = negative ? "-" : "";
    if (decimals == 0) {
        std::snprintf(buffer, size, "%s%lu", sign, Long(whole));
    } else {
        std::snprintf(buffer, size, "%s%lu.%0*lu", sign, Long(whole), decimals, Long(part));
    }
}

std::uint32_t ParseHex(const char* text) {
    std::uint32_t value = 0;
    for (;; ++text) {
        if (*text >= '0' && *text <= '9') {
            value = value << 4 | static_cast<std::uint32_t>(*text - '0');
        } else if (*text >= 'A' && *text <= 'F') {
            value = value << 4 | static_cast<std::uint32_t>(*text - 'A' + 10);
        } else {
            return value;
        }
    }
}

std::int32_t ParseNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    std::int64_t magnitude = 0;
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; text.remove_prefix(1)) {
        magnitude = std::min(magnitude * 10 + (text.front() - '0'), kMost + 1);
    }
    return static_cast<std::int32_t>(negative ? -magnitude : std::min(magnitude, kMost));
}

}  // namespace kx
