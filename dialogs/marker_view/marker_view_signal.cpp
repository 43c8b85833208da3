#include "dialogs/marker_view/marker_view_signal.h"

#include <algorithm>
#include <new>

#include "dialogs/marker_view/signal_filters.h"

namespace kx {

namespace {

template <typename Filter>
void RunBothWays(Filter filter, std::int16_t* samples, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        samples[i] = static_cast<std::int16_t>(filter.FilterSample(samples[i]));
    }
    for (std::int32_t i = count - 1; i >= 0; --i) {
        samples[i] = static_cast<std::int16_t>(filter.FilterSample(samples[i]));
    }
}

}  // namespace

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
    if (settings.mainsHz > 0) {
        RunBothWays(MovingAverageFilter(settings.mainsHz, rate, kMissingSample), filtered.get(), count);
    }
    if (settings.bandPass) {
        RunBothWays(BandPassFilter(settings.lowHz, settings.highHz, rate, kMissingSample), filtered.get(),
                    count);
    }
    return filtered;
}

}  // namespace kx
