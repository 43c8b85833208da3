#include "dialogs/marker_view/trace/filtered_lead.h"

#include <algorithm>
#include <new>

#include "dialogs/marker_view/trace/signal_filters.h"

namespace kx {

std::unique_ptr<std::int16_t[]> FilteredLead(const std::int16_t* samples, std::int32_t count,
                                             std::int32_t rate, const SignalSettings& settings) {
    if (!settings.Filters() || samples == nullptr || count <= 0) {
        return nullptr;
    }
    std::unique_ptr<std::int16_t[]> filtered(new (std::nothrow)
                                                 std::int16_t[static_cast<std::size_t>(count)]);
    if (filtered == nullptr) {
        return nullptr;
    }
    std::copy(samples, samples + count, filtered.get());
    const std::span beat(filtered.get(), static_cast<std::size_t>(count));
    if (settings.mainsHz > 0) {
        MovingAverageFilter mains(settings.mainsHz, rate, kMissingSample);
        FilterZeroPhase(mains, beat);
    }
    if (settings.bandPass) {
        BandPassFilter band(settings.lowHz, settings.highHz, rate, kMissingSample);
        FilterZeroPhase(band, beat);
    }
    return filtered;
}

}  // namespace kx
