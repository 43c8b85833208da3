#include "lib/dbclient/measurement_set.h"

#include "lib/measurement_values.h"

namespace kx {

void MeasurementSet::Clear() {
    static_cast<KxMeasurementSet&>(*this) = {};
    size = KX_MEASUREMENT_SET_SIZE;
}

std::int32_t MeasurementSet::HeartRate() const {
    return HeartRateOf(*this);
}

std::int32_t MeasurementSet::LeadStLevel(int lead, std::int32_t ms) const {
    return StLevelOf(leads[lead], ms);
}

}  // namespace kx
