// Beats found in recordings whose beats are known, and the median beat over them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/recording/beat_finder.h"
#include "host/recording/median_beat.h"
#include "host/recording/synthetic.h"

namespace kx::recording {
namespace {

// Each true beat has one found near it, but for those at the ends, and no other is found.
void ExpectFound(const std::vector<int>& found, const std::vector<double>& truth, double lastMs,
                 const std::string& name) {
    std::size_t matched = 0;
    for (const double ms : truth) {
        const auto near =
            std::count_if(found.begin(), found.end(), [&](int place) { return std::fabs(place - ms) <= 14; });
        EXPECT_TRUE(near == 1 || ms < 60 || ms > lastMs - 60) << name << ": " << near << " beats at " << ms;
        matched += static_cast<std::size_t>(near);
    }
    EXPECT_EQ(matched, found.size()) << name << ": beats where none is";
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end())) << name;
}

TEST(BeatFinder, FindsEveryBeatAtAnyRateAndHeartRate) {
    struct Row {
        const char* name;
        SyntheticOptions options;
    };
    const Row kRows[] = {
        {"as built in", {}},
        {"100 samples a second", {.sampleRate = 100}},
        {"360 samples a second", {.sampleRate = 360}},
        {"977 samples a second", {.sampleRate = 977}},
        {"2000 samples a second", {.sampleRate = 2000}},
        {"30 a minute", {.seconds = 20, .beatsPerMinute = 30}},
        {"45 a minute", {.beatsPerMinute = 45}},
        {"140 a minute", {.beatsPerMinute = 140}},
        {"irregular", {.seconds = 20, .rrVariationMs = 250}},
        {"much noise", {.noiseMicrovolts = 60}},
        {"much hum", {.mainsMicrovolts = 200}},
        {"much wander", {.wanderMicrovolts = 1500}},
        {"two seconds", {.seconds = 2}},
    };
    for (const Row& row : kRows) {
        const Recording recording = MakeSyntheticRecording(row.options);
        ExpectFound(FindBeats(recording), SyntheticBeatTimes(row.options), recording.DurationMs(), row.name);
    }
}

TEST(BeatFinder, FindsSmallBeatsAndThoseOfAnyPolarity) {
    for (const float factor : {0.08f, -1.0f, 8.0f}) {
        SyntheticOptions options;
        options.wanderMicrovolts = options.mainsMicrovolts = options.noiseMicrovolts = 0;
        Recording recording = MakeSyntheticRecording(options);
        for (auto& lead : recording.leads) {
            for (float& value : lead) {
                value *= factor;
            }
        }
        ExpectFound(FindBeats(recording), SyntheticBeatTimes(options), recording.DurationMs(),
                    "times " + std::to_string(factor));
    }
}

TEST(BeatFinder, FindsNothingWhereNothingIs) {
    EXPECT_TRUE(FindBeats(Recording{}).empty());
    for (const std::size_t count : {std::size_t{1}, std::size_t{40}, std::size_t{5000}}) {
        Recording flat;
        flat.sampleRate = 500;
        for (auto& lead : flat.leads) {
            lead.assign(count, 700.0f);
        }
        EXPECT_TRUE(FindBeats(flat).empty()) << count;
        // Quantisation.
        for (std::size_t i = 0; i < count; ++i) {
            flat.leads[i % kLeadCount][i] += static_cast<float>(i % 2);
        }
        EXPECT_TRUE(FindBeats(flat).empty()) << count;
        std::string error;
        EXPECT_FALSE(MakeMedianBeat(flat, error));
        EXPECT_NE(error.find("no heart beat"), std::string::npos) << error;
    }
}

// Root mean square of the difference between the median beat and the beat of the formula, both about their
// level before the complex, at the best shift of some ms.
double DistanceFromFormula(const MedianBeat& beat, const SyntheticOptions& options, std::size_t lead) {
    double best = 1e9;
    for (int shift = -10; shift <= 10; ++shift) {
        double sum = 0;
        int count = 0;
        // From before P to behind T.
        for (int ms = 150; ms < 900; ms += 2) {
            const double truth = SyntheticBeatValue(options, lead, ms - kAlignmentMs + shift);
            const double difference = beat.leads[lead][static_cast<std::size_t>(ms / 2)] - truth;
            sum += difference * difference;
            ++count;
        }
        best = std::min(best, std::sqrt(sum / count));
    }
    return best;
}

MedianBeat Made(const Recording& recording) {
    std::string error;
    const auto beat = MakeMedianBeat(recording, error);
    EXPECT_TRUE(beat) << error;
    return beat.value_or(MedianBeat{});
}

TEST(MedianBeat, IsTheBeatWithoutItsDisturbances) {
    struct Row {
        const char* name;
        SyntheticOptions options;
        double microvolts;
    };
    const Row kRows[] = {{"as built in", {}, 10},
                         {"100 samples a second", {.sampleRate = 100}, 25},
                         {"1000 samples a second", {.sampleRate = 1000}, 10},
                         {"much wander", {.wanderMicrovolts = 800}, 20},
                         {"thirty seconds of noise", {.seconds = 30, .noiseMicrovolts = 40}, 16}};
    for (const Row& row : kRows) {
        const MedianBeat beat = Made(MakeSyntheticRecording(row.options));
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            ASSERT_EQ(beat.leads[lead].size(), static_cast<std::size_t>(kMedianBeatSamples)) << row.name;
            EXPECT_LT(DistanceFromFormula(beat, row.options, lead), row.microvolts)
                << row.name << ", " << kLeadNames[lead];
        }
        EXPECT_NEAR(beat.rrMs, 60000 / 66.0, 15) << row.name;
        EXPECT_EQ(beat.KeptCount(), beat.kept.size() - 1) << row.name;
        EXPECT_EQ(beat.kept.size(), beat.beatsMs.size()) << row.name;
    }
}

// Three beats of ten made ventricular: wide, upside down and large. They are not in the median.
TEST(MedianBeat, LeavesOutBeatsOfAnotherShape) {
    const SyntheticOptions options;
    Recording recording = MakeSyntheticRecording(options);
    const std::vector<double> beats = SyntheticBeatTimes(options);
    for (const std::size_t ectopic : {2u, 5u, 8u}) {
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            for (int ms = -90; ms <= 90; ms += 2) {
                const double bump = 1500 * std::cos(ms * 3.14159 / 180) * (lead % 2 == 0 ? -1 : 1);
                const auto i = static_cast<std::size_t>((beats[ectopic] + ms) / 2);
                recording.leads[lead][i] = static_cast<float>(bump);
            }
        }
    }
    const MedianBeat beat = Made(recording);
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        for (const std::size_t ectopic : {2u, 5u, 8u}) {
            if (std::fabs(beat.beatsMs[i] - beats[ectopic]) < 60) {
                EXPECT_FALSE(beat.kept[i]) << ectopic;
            }
        }
    }
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        EXPECT_LT(DistanceFromFormula(beat, options, lead), 15) << kLeadNames[lead];
    }
}

TEST(MedianBeat, LeavesOutBeatsThatAGapTouches) {
    const SyntheticOptions options;
    Recording recording = MakeSyntheticRecording(options);
    const auto place = static_cast<std::size_t>(SyntheticBeatTimes(options)[4] / 2);
    recording.gaps = {{place + 50, place + 100}};
    for (auto& lead : recording.leads) {
        std::fill(lead.begin() + static_cast<std::ptrdiff_t>(place) + 50,
                  lead.begin() + static_cast<std::ptrdiff_t>(place) + 100, 900.0f);
    }
    const MedianBeat beat = Made(recording);
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        if (std::abs(beat.beatsMs[i] - static_cast<int>(2 * place)) < 40) {
            EXPECT_FALSE(beat.kept[i]);
        }
    }
    EXPECT_LT(DistanceFromFormula(beat, options, kLeadII), 12);
}

TEST(MedianBeat, OfAShortRecordingIsWhatThereIs) {
    // One beat, cut at both ends of its window; no interval.
    const SyntheticOptions options{.seconds = 1};
    const MedianBeat beat = Made(MakeSyntheticRecording(options));
    EXPECT_EQ(beat.KeptCount(), 1u);
    EXPECT_EQ(beat.rrMs, 0);
    EXPECT_EQ(beat.leads[kLeadII].size(), static_cast<std::size_t>(kMedianBeatSamples));
}

}  // namespace
}  // namespace kx::recording
