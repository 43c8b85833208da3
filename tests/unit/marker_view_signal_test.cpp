#include "dialogs/marker_view/trace/filtered_lead.h"

#include <gtest/gtest.h>

#include <vector>

#include "dialogs/marker_view/trace/signal_filters.h"

namespace {

using kx::FilteredLead;
using kx::SignalSettings;
using Samples = std::vector<std::int16_t>;

Samples Beat() {
    Samples samples;
    for (int i = 0; i < 300; ++i) {
        // A QRS of its kind on a base, with 50 Hz at 500 samples a second over it.
        const int wave = i > 140 && i < 160 ? 40 * (10 - (i < 150 ? 150 - i : i - 150)) : 0;
        const int mains[] = {0, 29, 48, 48, 29, 0, -29, -48, -48, -29};
        samples.push_back(static_cast<std::int16_t>(100 + wave + mains[i % 10]));
    }
    return samples;
}

Samples Filtered(const Samples& samples, std::int32_t rate, const SignalSettings& settings) {
    const auto filtered = FilteredLead(samples.data(), static_cast<std::int32_t>(samples.size()), rate, settings);
    return filtered == nullptr ? Samples() : Samples(filtered.get(), filtered.get() + samples.size());
}

TEST(FilteredLead, IsNullWhenThereIsNothingToFilter) {
    const Samples beat = Beat();
    EXPECT_EQ(FilteredLead(beat.data(), 300, 500, {}), nullptr);
    EXPECT_EQ(FilteredLead(beat.data(), 300, 500, {false, 1.0, 16.0, -50}), nullptr);
    EXPECT_EQ(FilteredLead(nullptr, 300, 500, {true, 1.0, 16.0, 50}), nullptr);
    EXPECT_EQ(FilteredLead(beat.data(), 0, 500, {true, 1.0, 16.0, 50}), nullptr);
}

TEST(FilteredLead, TakesTheMainsOutAndKeepsTheBase) {
    const Samples filtered = Filtered(Beat(), 500, {false, 0.0, 0.0, 50});
    // The passes start and end in transients of one period.
    for (int i = 20; i < 120; ++i) {
        EXPECT_NEAR(filtered[static_cast<std::size_t>(i)], 100, 1) << i;
    }
}

// The state goes from the forward into the backward pass, and the mains filter comes first.
TEST(FilteredLead, RunsEachFilterThereAndBack) {
    Samples expected = Beat();
    kx::MovingAverageFilter mains(60, 500, kx::kMissingSample);
    kx::BandPassFilter band(0.5, 40.0, 500, kx::kMissingSample);
    const auto run = [&](kx::SampleFilter& filter) {
        for (auto sample = expected.begin(); sample != expected.end(); ++sample) {
            *sample = static_cast<std::int16_t>(filter.FilterSample(*sample));
        }
        for (auto sample = expected.rbegin(); sample != expected.rend(); ++sample) {
            *sample = static_cast<std::int16_t>(filter.FilterSample(*sample));
        }
    };
    run(mains);
    run(band);
    EXPECT_EQ(Filtered(Beat(), 500, {true, 0.5, 40.0, 60}), expected);
}

TEST(FilteredLead, AbsurdSettingsAreHarmless) {
    const Samples missing(400, -32768);
    for (const std::int32_t rate : {0, 1, 500, 32000, INT32_MAX}) {
        for (const double edge : {-1e9, 0.0, 250.0, 1e9}) {
            EXPECT_EQ(Filtered(missing, rate, {true, edge, edge, 1}).size(), missing.size());
        }
    }
    EXPECT_EQ(Filtered(Samples(1, 7), 500, {true, 0.5, 40.0, 50}).size(), 1u);
}

}  // namespace
