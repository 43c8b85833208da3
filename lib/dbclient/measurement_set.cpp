#include "lib/dbclient/measurement_set.h"

#include <cstring>

#include "lib/muldiv.h"

namespace kx {

namespace {

constexpr std::int32_t kStStepMs = 10;

}  // namespace

void MeasurementSet::Clear() {
    static_cast<KxMeasurementSet&>(*this) = {};
    size = KX_MEASUREMENT_SET_SIZE;
}

std::int32_t MeasurementSet::HeartRate() const {
    return rrInterval == 0 ? 0 : MulDivRound(60000, 1, rrInterval);
}

std::int32_t MeasurementSet::LeadStLevel(int lead, std::int32_t ms) const {
    const std::int32_t element = MulDivRound(ms, 1, kStStepMs);
    return element >= 0 && element < KX_ST_LEVELS ? leads[lead].stLevel[element] : 0;
}

std::int32_t MeasurementSet::LeadStSlope(int lead, std::int32_t ms) const {
    return MulDivRound(LeadStLevel(lead, ms) - LeadStLevel(lead, 0), 1000, ms);
}

}  // namespace kx
