// Records that cannot be measured: 0, a reason, nothing changed, nothing read or written outside.
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

TEST(AbsurdEpisode, IsRefusedWithAReason) {
    std::mt19937 random(3);
    const auto stairs = [](std::size_t i) { return static_cast<int>(i % 97 * 13); };
    const auto flat = [](int value) { return [value](std::size_t) { return value; }; };
    const auto noise = [&](std::size_t) { return static_cast<int>(random() % 400); };
    const std::tuple<std::size_t, std::uint32_t, std::function<int(std::size_t)>, const char*> rows[] = {
        {0, 500, stairs, "shorter"},        {149, 500, stairs, "shorter"},       {2001, 500, stairs, "longer"},
        {60000, 100, stairs, "longer"},     {600, 0, stairs, "a second"},        {600, 99, stairs, "a second"},
        {600, 32001, stairs, "a second"},   {600, 32000, stairs, "shorter"},     {600, 0xFFFFFFFFu, stairs, "a second"},
        {600, 500, flat(0), "no lead"},     {600, 500, flat(-32768), "no lead"}, {600, 500, flat(32767), "no lead"},
        {600, 500, noise, "no QRS complex"}};
    for (const auto& [samples, rate, sample, reason] : rows) {
        std::vector<std::int16_t> lead(samples);
        for (std::size_t i = 0; i < samples; ++i) {
            lead[i] = static_cast<std::int16_t>(sample(i));
        }
        Episode episode(std::vector(12, lead), rate, 1000);
        ExpectRefused(std::to_string(samples) + " samples at " + std::to_string(rate), episode, reason);
    }
    EXPECT_EQ(MeasureEpisode(nullptr), 0u);
}

TEST(AbsurdEpisode, OfABrokenRecordIsRefused) {
    const auto offsets = [](std::uint32_t offset) {
        return [offset](auto& record) { std::ranges::for_each(record.leadTable, [&](auto& slot) { slot.sampleOffset = offset; }); };
    };
    const std::pair<const char*, std::function<void(KxEpisodeRecord&)>> rows[] = {
        {"does not hold", [](auto& record) { record.resolutionNv = 0; }},
        {"does not hold", [](auto& record) { record.samples = nullptr; }},
        {"does not hold", [](auto& record) { record.storedLeads = 25; }},
        {"does not hold", [](auto& record) { record.storedLeads = 0xFFFFFFFFu; }},
        {"does not hold", [](auto& record) { record.samplesPerLead = 0xFFFFFFFFu; }},
        {"does not hold", [](auto& record) { record.totalSize -= 2; }},
        {"no lead", offsets(6601)},
        {"no lead", offsets(0xFFFFFFF0u)}};
    for (const auto& row : rows) {
        Episode episode{SyntheticBeat{}};
        row.second(*episode.Get());
        ExpectRefused(std::to_string(&row - rows), episode, row.first);
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
    const KxMeasurementSet& set = episode.Set();
    EXPECT_TRUE(set.leads[13].aR == 32767 && set.leads[13].aS == -32768 && set.leads[KX_LEAD_II].aR == 0 && set.qrsAxis == 0);
}

}  // namespace
}  // namespace kx::analysis
