// The built-in recording, whose beats are known: the beats found in it, the median beat over them, and what is said of its leads.
#include "host/recording/beat_finder.h"
#include "host/recording/electrodes.h"
#include "host/recording/median_beat.h"
#include "host/recording/synthetic.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::recording {
namespace {

// Each true beat has one found near it, but for those at the ends, and no other is found.
void ExpectFound(const Recording& recording, const SyntheticOptions& options, const std::string& name) {
    const std::vector<int> found = FindBeats(recording);
    std::size_t matched = 0;
    for (const double ms : SyntheticBeatTimes(options)) {
        const auto near = std::count_if(found.begin(), found.end(), [&](int place) { return std::fabs(place - ms) <= 14; });
        EXPECT_TRUE(near == 1 || ms < 60 || ms > recording.DurationMs() - 60) << name << ": " << near << " beats at " << ms;
        matched += static_cast<std::size_t>(near);
    }
    EXPECT_EQ(matched, found.size()) << name << ": beats where none is";
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end())) << name;
}

TEST(BeatFinder, FindsEveryBeatAtAnyRateHeartRateSizeAndPolarity) {
    const std::pair<const char*, SyntheticOptions> rows[] = {
        {"100 samples a second", {.sampleRate = 100}},   {"977 samples a second", {.sampleRate = 977}},
        {"2000 samples a second", {.sampleRate = 2000}}, {"30 a minute", {.seconds = 20, .beatsPerMinute = 30}},
        {"140 a minute", {.beatsPerMinute = 140}},       {"irregular", {.seconds = 20, .rrVariationMs = 250}},
        {"much noise", {.noiseMicrovolts = 60}},         {"much hum", {.mainsMicrovolts = 200}},
        {"much wander", {.wanderMicrovolts = 1500}},     {"two seconds", {.seconds = 2}}};
    for (const auto& [name, options] : rows) {
        ExpectFound(MakeSyntheticRecording(options), options, name);
    }
    for (const float factor : {0.08f, -1.0f, 8.0f}) {
        const SyntheticOptions options{.wanderMicrovolts = 0, .noiseMicrovolts = 0, .mainsMicrovolts = 0};
        Recording recording = MakeSyntheticRecording(options);
        for (auto& lead : recording.leads) {
            std::ranges::for_each(lead, [factor](float& value) { value *= factor; });
        }
        ExpectFound(recording, options, "times " + std::to_string(factor));
    }
}

TEST(BeatFinder, FindsNothingWhereNothingIs) {
    EXPECT_TRUE(FindBeats(Recording{}).empty());
    for (const std::size_t count : {1u, 40u, 5000u}) {
        Recording flat;
        flat.sampleRate = 500;
        for (auto& lead : flat.leads) {
            lead.assign(count, 700.0f);
        }
        EXPECT_TRUE(FindBeats(flat).empty()) << count;
        for (std::size_t i = 0; i < count; ++i) {
            flat.leads[i % kLeadCount][i] += static_cast<float>(i % 2);  // quantisation
        }
        std::string error;
        EXPECT_FALSE(MakeMedianBeat(flat, error));
        EXPECT_NE(error.find("no heart beat"), std::string::npos) << error;
    }
}

// Root mean square of the difference between the median beat and the beat of the formula from before P to behind T, both
// about their level before the complex, at the best shift of some ms.
double DistanceFromFormula(const MedianBeat& beat, const SyntheticOptions& options, std::size_t lead) {
    double best = 1e9;
    for (int shift = -10; shift <= 10; ++shift) {
        double sum = 0;
        for (int ms = 150; ms < 900; ms += 2) {
            sum += std::pow(
                beat.leads[lead][static_cast<std::size_t>(ms / 2)] - SyntheticBeatValue(options, lead, ms - kAlignmentMs + shift), 2);
        }
        best = std::min(best, std::sqrt(sum / 375));
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
    const std::pair<SyntheticOptions, double> rows[] = {// and how far it may be off
                                                        {{}, 10},
                                                        {{.sampleRate = 100}, 25},
                                                        {{.sampleRate = 1000}, 10},
                                                        {{.wanderMicrovolts = 800}, 20},
                                                        {{.seconds = 30, .noiseMicrovolts = 40}, 16}};
    for (const auto& [options, microvolts] : rows) {
        SCOPED_TRACE(microvolts);
        const MedianBeat beat = Made(MakeSyntheticRecording(options));
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            ASSERT_EQ(beat.leads[lead].size(), static_cast<std::size_t>(kMedianBeatSamples));
            EXPECT_LT(DistanceFromFormula(beat, options, lead), microvolts) << kLeadNames[lead];
        }
        EXPECT_NEAR(beat.rrMs, 60000 / 66.0, 15);
        EXPECT_TRUE(std::ranges::count(beat.kept, false) == 1 && beat.kept.size() == beat.beatsMs.size());
    }
    const MedianBeat alone = Made(MakeSyntheticRecording({.seconds = 1.05}));  // one beat, cut at both ends of its window
    EXPECT_TRUE(alone.kept == std::vector{true} && alone.rrMs == 0);
    std::string error;
    EXPECT_FALSE(MakeMedianBeat(MakeSyntheticRecording({.seconds = 0.9}), error));  // and its T wave cut
    EXPECT_NE(error.find("no beat is whole"), std::string::npos) << error;
}

// Three beats made ventricular, wide, upside down and large, and one that a gap touches are not in the median.
TEST(MedianBeat, LeavesOutBeatsOfAnotherShapeAndThoseThatAGapTouches) {
    const SyntheticOptions options;
    Recording recording = MakeSyntheticRecording(options);
    const std::vector<double> beats = SyntheticBeatTimes(options);
    const auto gap = static_cast<std::size_t>(beats[4] / 2);
    recording.gaps = {{gap + 50, gap + 100}};
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        std::fill_n(recording.leads[lead].begin() + static_cast<std::ptrdiff_t>(gap) + 50, 50, 900.0f);
        for (const std::size_t ectopic : {2u, 6u, 8u}) {
            for (int ms = -90; ms <= 90; ms += 2) {
                recording.leads[lead][static_cast<std::size_t>((beats[ectopic] + ms) / 2)] =
                    static_cast<float>(1500 * std::cos(ms * 3.14159 / 180) * (lead % 2 == 0 ? -1 : 1));
            }
        }
    }
    const MedianBeat beat = Made(recording);
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        for (const std::size_t left : {2u, 4u, 6u, 8u}) {
            EXPECT_FALSE(std::fabs(beat.beatsMs[i] - beats[left]) < 40 && beat.kept[i]) << left;
        }
    }
    EXPECT_GT(std::ranges::count(beat.kept, true), 3);
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        EXPECT_LT(DistanceFromFormula(beat, options, lead), 15) << kLeadNames[lead];
    }
}

TEST(MedianBeat, LeavesOutALeadThatExceedsTheRangeOfTheRecorder) {
    Recording recording = MakeSyntheticRecording({.mainsMicrovolts = 0});
    EXPECT_EQ(Made(recording).remarks, std::vector<std::string>());
    auto& lead = recording.leads[kLeadV1 + 2];
    const float highest = *std::max_element(lead.begin(), lead.end());
    lead[700] = lead[701] = 2 * highest;  // a single disturbance is none
    EXPECT_EQ(Made(recording).remarks, std::vector<std::string>());
    for (float& value : lead) {
        value = std::min(value, 0.4f * highest);
    }
    const MedianBeat beat = Made(recording);
    ASSERT_EQ(beat.remarks.size(), 1u);
    EXPECT_EQ(beat.remarks[0].find("V3 exceeds the range"), 0u) << beat.remarks[0];
    EXPECT_EQ(beat.leads[kLeadV1 + 2], std::vector<std::int16_t>(kMedianBeatSamples));
}

TEST(Electrodes, ThatAreExchangedAreRemarked) {
    // The limb leads that are recorded as I, II, III, aVR, aVL and aVF, upside down where negative (1 = I).
    const std::pair<std::array<int, 6>, const char*> rows[] = {{{1, 2, 3, 4, 5, 6}, nullptr},
                                                               {{-1, 3, 2, 5, 4, 6}, "left arm"},
                                                               {{-3, -2, -1, 6, 5, 4}, "left leg"},
                                                               {{2, 1, -3, 4, 6, 5}, nullptr}};  // like another person's record
    for (const auto& [leads, expected] : rows) {
        Recording recording = MakeSyntheticRecording();
        const auto right = recording.leads;
        for (std::size_t lead = 0; lead < leads.size(); ++lead) {
            const float sign = leads[lead] < 0 ? -1.0f : 1.0f;
            std::ranges::transform(right[static_cast<std::size_t>(std::abs(leads[lead])) - 1], recording.leads[lead].begin(),
                                   [sign](float value) { return sign * value; });
        }
        const MedianBeat beat = Made(recording);
        analysis::Episode episode({beat.leads.begin(), beat.leads.end()}, kWorkingRate, kResolutionNv);
        episode.Set().rrInterval = static_cast<std::uint16_t>(beat.rrMs);
        EXPECT_EQ(FindExchangedElectrodes(beat, episode.Set()), nullptr) << leads[0] << ", not measured";
        ASSERT_EQ(analysis::MeasureEpisode(episode.Get()), 1u);
        const char* remark = FindExchangedElectrodes(beat, episode.Set());
        ASSERT_EQ(remark != nullptr, expected != nullptr) << leads[0];
        EXPECT_TRUE(remark == nullptr || std::strstr(remark, expected) != nullptr) << remark;
        // P in II, and the first component in III, of the record in its places with P of I as it is.
        const auto find = [&](KxMeasurementSet set, int p2, int p3) {
            set.leads[KX_LEAD_II].aP1 = static_cast<std::int16_t>(p2);
            set.leads[KX_LEAD_III].aP1 = static_cast<std::int16_t>(p3), set.leads[KX_LEAD_III].aP2 = static_cast<std::int16_t>(-p3);
            return FindExchangedElectrodes(beat, set) != nullptr;
        };
        if (leads == rows[0].first) {
            const int p1 = episode.Set().leads[KX_LEAD_I].aP1;
            EXPECT_TRUE(find(episode.Set(), p1, -40)) << "left arm and leg, III ends upwards";
            EXPECT_FALSE(find(episode.Set(), p1, 40)) << "III ends downwards";
            EXPECT_FALSE(find(episode.Set(), p1 + 1, -40)) << "II is higher";
        }
    }
}

}  // namespace
}  // namespace kx::recording
