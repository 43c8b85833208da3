// Records that cannot be measured: 0, nothing changed, nothing read or written outside.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

void ExpectRefused(const std::string& name, Episode& episode) {
    const auto before = std::make_unique<KxEpisodeRecord>(*episode.Get());
    EXPECT_EQ(MeasureEpisode(episode.Get()), 0u) << name;
    EXPECT_EQ(UpdateDetection(episode.Get()), 0u) << name;
    EXPECT_EQ(std::memcmp(before.get(), episode.Get(), sizeof(KxEpisodeRecord)), 0) << name;
}

TEST(AbsurdEpisode, NullIsRefused) {
    EXPECT_EQ(MeasureEpisode(nullptr), 0u);
    EXPECT_EQ(UpdateDetection(nullptr), 0u);
}

TEST(AbsurdEpisode, LengthsAndRatesOutsideTheLimitsAreRefused) {
    struct Row {
        std::size_t samples;
        std::uint32_t rate;
    };
    constexpr Row kRows[] = {{0, 500},     {1, 500},     {5, 500},           {149, 500},
                             {2001, 500},  {60000, 500}, {600, 0},           {600, 99},
                             {600, 32001}, {600, 32000}, {600, 0xFFFFFFFFu}, {60000, 100}};
    for (const Row& row : kRows) {
        std::vector<std::vector<std::int16_t>> leads(12, std::vector<std::int16_t>(row.samples));
        for (auto& lead : leads) {
            for (std::size_t i = 0; i < lead.size(); ++i) {
                lead[i] = static_cast<std::int16_t>(i % 97 * 13);
            }
        }
        Episode episode(leads, row.rate, 1000);
        ExpectRefused(std::to_string(row.samples) + " samples at " + std::to_string(row.rate), episode);
    }
}

TEST(AbsurdEpisode, SignalsWithoutAnythingInThemAreRefused) {
    for (const std::int16_t value : {std::int16_t{0}, std::int16_t{-32768}, std::int16_t{32767}}) {
        const std::vector<std::vector<std::int16_t>> leads(12, std::vector<std::int16_t>(600, value));
        Episode episode(leads, 500, 1000);
        ExpectRefused("constant " + std::to_string(value), episode);
    }
}

TEST(AbsurdEpisode, BrokenRecordsAreRefused) {
    const std::pair<const char*, std::function<void(KxEpisodeRecord&)>> kBreaks[] = {
        {"resolution 0", [](auto& record) { record.resolutionNv = 0; }},
        {"no samples", [](auto& record) { record.samples = nullptr; }},
        {"samples past the block", [](auto& record) { record.samplesPerLead += 1; }},
        {"25 leads", [](auto& record) { record.storedLeads = 25; }},
        {"four thousand million leads", [](auto& record) { record.storedLeads = 0xFFFFFFFFu; }},
        {"four thousand million samples", [](auto& record) { record.samplesPerLead = 0xFFFFFFFFu; }},
        {"every lead past the end",
         [](auto& record) {
             for (KxLeadSlot& slot : record.leadTable) {
                 slot.sampleOffset = record.storedLeads * record.samplesPerLead - record.samplesPerLead + 1;
             }
         }},
        {"lead offsets that wrap around",
         [](auto& record) {
             for (KxLeadSlot& slot : record.leadTable) {
                 slot.sampleOffset = 0xFFFFFFF0u;
             }
         }},
    };
    for (const auto& [name, breakIt] : kBreaks) {
        Episode episode{SyntheticBeat{}};
        breakIt(*episode.Get());
        ExpectRefused(name, episode);
    }
}

TEST(AbsurdEpisode, WhatIsLeftOfARecordIsMeasured) {
    // Eleven leads past the end, one in place; a resolution that overflows every amplitude.
    Episode episode{SyntheticBeat{}};
    for (std::size_t slot = 1; slot < KX_STANDARD_LEADS; ++slot) {
        episode->leadTable[slot].sampleOffset += 7000;
    }
    episode->resolutionNv = 0xFFFFFFFFu;
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    EXPECT_EQ(episode.Set().leads[KX_LEAD_I].aR, 32767);
    EXPECT_EQ(episode.Set().leads[KX_LEAD_I].aS, -32768);
    EXPECT_EQ(episode.Set().leads[KX_LEAD_II].aR, 0);
    EXPECT_EQ(episode.Set().qrsAxis, 0);
}

TEST(AbsurdEpisode, FrankLeadsAreMeasuredInTheirBlocks) {
    Episode episode{SyntheticBeat{}};
    for (std::size_t slot = 0; slot < KX_STANDARD_LEADS; ++slot) {
        episode->leadTable[slot].leadCode =
            static_cast<std::uint32_t>(slot < 3 ? 12 + slot : std::size_t{KX_LEAD_EMPTY});
    }
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    EXPECT_NEAR(episode.Set().leads[13].aR, 1200, 12);
    EXPECT_EQ(episode.Set().leads[1].aR, 0);
}

}  // namespace
}  // namespace kx::analysis
