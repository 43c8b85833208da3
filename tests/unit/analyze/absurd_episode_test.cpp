// Records that cannot be measured: 0, a reason, nothing changed, nothing read or written outside.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <random>

#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

void ExpectRefused(const std::string& name, Episode& episode, const char* reason) {
    Workspace workspace;
    const auto before = std::make_unique<KxEpisodeRecord>(*episode.Get());
    using Measure = std::uint32_t (*)(KxEpisodeRecord*, Workspace&);
    for (const Measure measure : {Measure{MeasureEpisode}, Measure{UpdateDetection}}) {
        EXPECT_EQ(measure(episode.Get(), workspace), 0u) << name;
        EXPECT_NE(std::string(workspace.Refusal() ? workspace.Refusal() : "").find(reason), std::string::npos) << name;
    }
    EXPECT_EQ(std::memcmp(before.get(), episode.Get(), sizeof(KxEpisodeRecord)), 0) << name;
}

Episode Filled(std::size_t samples, std::uint32_t rate, const std::function<int(std::size_t)>& sample) {
    std::vector<std::int16_t> lead(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        lead[i] = static_cast<std::int16_t>(sample(i));
    }
    return Episode(std::vector(12, lead), rate, 1000);
}

TEST(AbsurdEpisode, IsRefusedWithAReason) {
    struct Row {
        std::size_t samples;
        std::uint32_t rate;
        const char* reason;
    };
    constexpr Row kRows[] = {{0, 500, "shorter"},     {1, 500, "shorter"},           {149, 500, "shorter"}, {2001, 500, "longer"},
                             {60000, 100, "longer"},  {600, 0, "a second"},          {600, 99, "a second"}, {600, 32001, "a second"},
                             {600, 32000, "shorter"}, {600, 0xFFFFFFFFu, "a second"}};
    for (const Row& row : kRows) {
        Episode episode = Filled(row.samples, row.rate, [](std::size_t i) { return static_cast<int>(i % 97 * 13); });
        ExpectRefused(std::to_string(row.samples) + " samples at " + std::to_string(row.rate), episode, row.reason);
    }
    for (const int value : {0, -32768, 32767}) {
        Episode episode = Filled(600, 500, [&](std::size_t) { return value; });
        ExpectRefused("constant " + std::to_string(value), episode, "no lead");
    }
    std::mt19937 random(3);
    Episode noise = Filled(600, 500, [&](std::size_t) { return static_cast<int>(random() % 400); });
    ExpectRefused("noise", noise, "no QRS complex");
    EXPECT_EQ(MeasureEpisode(nullptr), 0u);
}

TEST(AbsurdEpisode, OfABrokenRecordIsRefused) {
    const std::pair<const char*, std::function<void(KxEpisodeRecord&)>> kBreaks[] = {
        {"resolution 0", [](auto& record) { record.resolutionNv = 0; }},
        {"no samples", [](auto& record) { record.samples = nullptr; }},
        {"25 leads", [](auto& record) { record.storedLeads = 25; }},
        {"four thousand million leads", [](auto& record) { record.storedLeads = 0xFFFFFFFFu; }},
        {"four thousand million samples", [](auto& record) { record.samplesPerLead = 0xFFFFFFFFu; }},
        {"more samples than its block", [](auto& record) { record.totalSize -= 2; }},
    };
    for (const auto& [name, breakIt] : kBreaks) {
        Episode episode{SyntheticBeat{}};
        breakIt(*episode.Get());
        ExpectRefused(name, episode, "does not hold");
    }
    for (const std::uint32_t offset : {6601u, 0xFFFFFFF0u}) {
        Episode episode{SyntheticBeat{}};
        for (KxLeadSlot& slot : episode->leadTable) {
            slot.sampleOffset = offset;
        }
        ExpectRefused("leads at " + std::to_string(offset), episode, "no lead");
    }
}

TEST(AbsurdEpisode, IsMeasuredAsFarAsItGoes) {
    // Eleven leads past the end, one in place, among the Frank leads; a resolution that overflows every amplitude.
    Episode episode{SyntheticBeat{}};
    for (std::size_t slot = 1; slot < KX_STANDARD_LEADS; ++slot) {
        episode->leadTable[slot].sampleOffset += 7000;
    }
    episode->leadTable[0].leadCode = 13;
    episode->resolutionNv = 0xFFFFFFFFu;
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    EXPECT_EQ(episode.Set().leads[13].aR, 32767);
    EXPECT_EQ(episode.Set().leads[13].aS, -32768);
    EXPECT_EQ(episode.Set().leads[KX_LEAD_II].aR, 0);
    EXPECT_EQ(episode.Set().qrsAxis, 0);
}

}  // namespace
}  // namespace kx::analysis
