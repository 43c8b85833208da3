// A block of bytes that a test carries without looking into it.
#pragma once

#include <cstdint>

namespace kx {

struct RawBlockRecord {
    std::uint8_t bytes[6264];
};

}  // namespace kx
