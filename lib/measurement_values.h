// Values that follow from the fields of a measurement set.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/muldiv.h"

namespace kx {

inline constexpr std::int32_t kStLevelStepMs = 10;

// 60000 / RR interval in beats per minute, halves rounded away from zero; 0 without an RR interval.
constexpr std::int32_t HeartRateOf(const KxMeasurementSet& set) {
    return set.rrInterval == 0 ? 0 : MulDivRound(60000, 1, set.rrInterval);
}

// The ST level nearest to `ms`, halves away from zero; 0 outside the table. Microvolts.
constexpr std::int32_t StLevelOf(const KxLeadMeasurements& lead, std::int32_t ms) {
    const std::int32_t element = MulDivRound(ms, 1, kStLevelStepMs);
    return element >= 0 && element < KX_ST_LEVELS ? lead.stLevel[element] : 0;
}

// The change of the ST level from 0 to `ms` (at least 1), microvolts per second, rounded to nearest.
constexpr std::int32_t StSlopeOf(const KxLeadMeasurements& lead, std::int32_t ms) {
    return MulDivRound(StLevelOf(lead, ms) - StLevelOf(lead, 0), 1000, ms);
}

}  // namespace kx
