// One reading of ambulatory blood pressure (ABPM), or the summary of all.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// 2176 bytes; the layout is this library's own. Pressures in mmHg, 0: not given.
struct PressureRecord {
    KxDateTime time;
    std::uint32_t systolic;
    std::uint32_t diastolic;
    std::uint32_t mean;
    std::uint32_t heartRate;  // beats per minute
    char remark[64];
    std::uint8_t reserved[2088];
};

static_assert(sizeof(PressureRecord) == 2176);

}  // namespace kx
