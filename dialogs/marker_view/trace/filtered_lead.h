// filtered_lead: the lead of a beat as a marker view shows it: through the filters that are switched on.
// Portable.
#pragma once

#include <cstdint>
#include <memory>

namespace kx {

struct SignalSettings {
    bool bandPass = false;
    double lowHz = 0.0;
    double highHz = 0.0;
    std::int32_t mainsHz = 0;  // 0: off

    bool Filters() const { return bandPass || mainsHz > 0; }
};

// A copy of the samples, run through the mains filter and then through the band-pass, each forward and
// backward with its state kept between the passes. Null when no filter is on, there are no samples, or memory
// is short: the beat is then shown without filters.
std::unique_ptr<std::int16_t[]> FilteredLead(const std::int16_t* samples, std::int32_t count,
                                             std::int32_t rate, const SignalSettings& settings);

}  // namespace kx
