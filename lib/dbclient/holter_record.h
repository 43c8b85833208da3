// What a Holter recording's analysis leaves in a test: the summary values and the event under review.
#pragma once

#include <cstdint>

namespace kx {

// One group of a summary: two values and the range between them.
struct HolterValueGroup {
    double first;
    double second;
    std::uint8_t reserved[16];
};

inline constexpr int kHolterGroups = 12;

// 440 bytes; the layout is this library's own.
struct HolterSummaryRecord {
    HolterValueGroup groups[kHolterGroups];
    std::uint8_t reserved[56];
};

// The layout is this library's own. Heart rates in beats per minute, 0: not known.
struct HolterDataRecord {
    std::uint32_t meanHeartRate;
    std::uint32_t minHeartRate;
    std::uint32_t minHeartRateMs;  // when, within the recording
    std::uint32_t maxHeartRate;
    std::uint32_t maxHeartRateMs;
    std::uint32_t hasCurrentEvent;  // nonzero: the two below are an event's
    std::uint32_t eventStartMs;
    std::uint32_t eventEndMs;
};

static_assert(sizeof(HolterSummaryRecord) == 440);

}  // namespace kx
