#include "host/recording/aligned_beats.h"

#include <algorithm>
#include <cmath>

#include "host/recording/baseline.h"
#include "host/recording/beat_classes.h"
#include "host/recording/beat_finder.h"
#include "host/recording/median_beat.h"
#include "host/recording/signal_math.h"
#include "host/recording/spikes.h"

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kAlignment = ToSamples(kAlignmentMs);
constexpr double kPremature = 0.8;         // of the median RR interval
constexpr std::size_t kIrregularPart = 4;  // more than one premature beat in so many is an irregular rhythm

// Whether samples [first, end) lie wholly in the recording and hold no missing ones.
bool IsKnown(const Recording& recording, std::ptrdiff_t first, std::ptrdiff_t end) {
    return first >= 0 && end <= static_cast<std::ptrdiff_t>(recording.SampleCount()) &&
           std::none_of(recording.gaps.begin(), recording.gaps.end(), [&](const Gap& gap) {
               return static_cast<std::ptrdiff_t>(gap.first)<end&& static_cast<std::ptrdiff_t>(gap.end)>
                   first;
           });
}

// Over the intervals in which no beat can be missing.
int MedianRrMs(const Recording& recording, const std::vector<int>& beatsMs) {
    std::vector<float> intervals;
    for (std::size_t i = 1; i < beatsMs.size(); ++i) {
        if (IsKnown(recording, ToSamples(beatsMs[i - 1]), ToSamples(beatsMs[i]))) {
            intervals.push_back(static_cast<float>(beatsMs[i] - beatsMs[i - 1]));
        }
    }
    return static_cast<int>(std::lround(Median(intervals)));
}

// Beats of the dominant shape that are not premature.
std::vector<bool> ByRhythm(const std::vector<bool>& dominant, const std::vector<int>& beatsMs, int rrMs) {
    std::vector<bool> kept = dominant;
    std::size_t premature = 0;
    for (std::size_t i = 1; i < kept.size(); ++i) {
        if (kept[i] && beatsMs[i] - beatsMs[i - 1] < kPremature * rrMs) {
            kept[i] = false;
            ++premature;
        }
    }
    const auto members = static_cast<std::size_t>(std::count(dominant.begin(), dominant.end(), true));
    return premature * kIrregularPart > members ? dominant : kept;
}

// The whole beats among the chosen; all of the chosen when none is whole.
std::vector<bool> WholeBeats(const Recording& recording, const Places& places, std::vector<bool> chosen) {
    const std::vector<bool> all = chosen;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::ptrdiff_t first = places[i] - kAlignment;
        chosen[i] = chosen[i] && IsKnown(recording, first, first + kMedianBeatSamples);
    }
    return std::count(chosen.begin(), chosen.end(), true) > 0 ? chosen : all;
}

// Where the QRS complex begins, in samples from the aligned places (negative): going back from its steepest
// part, the first place at which the mean beat is as calm as between the waves. The level before it is the
// isoelectric one.
std::ptrdiff_t IsoelectricOffset(const Recording& recording, const Places& places) {
    constexpr std::ptrdiff_t kFarthest = ToSamples(150);
    constexpr std::ptrdiff_t kNearest = ToSamples(30);
    constexpr std::ptrdiff_t kMargin = ToSamples(30);
    constexpr double kCalm =
        0.05;  // of the largest spatial velocity; the calmest place is allowed twice its own
    Trace velocity(static_cast<std::size_t>(kFarthest + kMargin + kNearest));
    const std::vector<bool> missing = MissingSamples(recording);
    std::vector<float> values;
    for (const Trace& lead : recording.leads) {
        Trace mean(velocity.size());
        for (std::size_t i = 0; i < mean.size(); ++i) {
            GatherSamples(lead, missing, places, static_cast<std::ptrdiff_t>(i) - kFarthest - kMargin,
                          values);
            double sum = 0;
            for (const float value : values) {
                sum += double{value};
            }
            mean[i] = static_cast<float>(sum / static_cast<double>(std::max<std::size_t>(1, values.size())));
        }
        const Trace slope = BandSlope(mean);
        for (std::size_t i = 0; i < slope.size(); ++i) {
            velocity[i] += slope[i] * slope[i];
        }
    }
    const float largest = std::sqrt(*std::max_element(velocity.begin(), velocity.end()));
    const auto at = [&](std::ptrdiff_t offset) {
        return double{std::sqrt(velocity[static_cast<std::size_t>(offset + kFarthest + kMargin)])};
    };
    auto calmest = double{largest};
    for (std::ptrdiff_t offset = -kFarthest; offset <= -kNearest; ++offset) {
        calmest = std::min(calmest, at(offset));
    }
    const double threshold = std::max(kCalm * double{largest}, std::min(2 * calmest, double{largest} / 4));
    for (std::ptrdiff_t offset = -kNearest; offset > -kFarthest; --offset) {
        if (at(offset) <= threshold) {
            return offset;
        }
    }
    return -kFarthest;
}

}  // namespace

void GatherSamples(const std::vector<float>& lead, const std::vector<bool>& missing, const Places& places,
                   std::ptrdiff_t offset, std::vector<float>& values) {
    values.clear();
    for (const std::ptrdiff_t place : places) {
        const std::ptrdiff_t i = place + offset;
        if (i >= 0 && i < static_cast<std::ptrdiff_t>(lead.size()) && !missing[static_cast<std::size_t>(i)]) {
            values.push_back(lead[static_cast<std::size_t>(i)]);
        }
    }
}

std::vector<bool> MissingSamples(const Recording& recording) {
    std::vector<bool> missing(recording.SampleCount());
    for (const Gap& gap : recording.gaps) {
        const std::size_t end = std::min(gap.end, missing.size());
        for (std::size_t i = gap.first; i < end; ++i) {
            missing[i] = true;
        }
    }
    return missing;
}

AlignedBeats AlignBeats(const Recording& given) {
    AlignedBeats beats;
    beats.recording = ResampleToWorkingRate(given);
    beats.hum = RemoveMainsHum(beats.recording);
    beats.heart = beats.recording;
    const Places spikes = FindSpikes(beats.recording);
    BridgeSpikes(beats.heart, spikes);
    const std::vector<int> beatsMs = FindBeats(beats.heart);
    if (beatsMs.empty()) {
        return beats;
    }
    beats.rrMs = MedianRrMs(beats.heart, beatsMs);
    Places places;
    for (const int ms : beatsMs) {
        places.push_back(ToSamples(ms));
    }
    BeatClasses classes = ClassifyBeats(beats.heart, places);
    beats.dominant = std::move(classes.dominant);
    beats.places = std::move(classes.aligned);
    beats.kept = WholeBeats(beats.recording, beats.places, ByRhythm(beats.dominant, beatsMs, beats.rrMs));

    // The baseline follows all beats of the shape: those at the ends, too, know where it is.
    Places knots = Chosen(beats.places, beats.dominant);
    const std::ptrdiff_t calm = IsoelectricOffset(beats.heart, knots);
    for (std::ptrdiff_t& knot : knots) {
        knot += calm;
    }
    RemoveBaseline(beats.recording, knots);
    RemoveWander(beats.recording, beats.places, beats.dominant);
    beats.heart = beats.recording;
    BridgeSpikes(beats.heart, spikes);
    return beats;
}

Places Chosen(const Places& places, const std::vector<bool>& chosen) {
    Places taken;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (chosen[i]) {
            taken.push_back(places[i]);
        }
    }
    return taken;
}

}  // namespace kx::recording
