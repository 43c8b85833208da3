#include "host/recording/median_beat.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "host/recording/baseline.h"
#include "host/recording/beat_classes.h"
#include "host/recording/beat_finder.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

using Places = std::vector<std::ptrdiff_t>;

constexpr std::ptrdiff_t kAlignment = ToSamples(kAlignmentMs);
constexpr double kPremature = 0.8;         // of the median RR interval
constexpr std::size_t kIrregularPart = 4;  // more than one premature beat in so many is an irregular rhythm

int MedianRrMs(const std::vector<int>& beatsMs) {
    std::vector<float> intervals;
    for (std::size_t i = 1; i < beatsMs.size(); ++i) {
        intervals.push_back(static_cast<float>(beatsMs[i] - beatsMs[i - 1]));
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

bool IsWhole(const Recording& recording, std::ptrdiff_t place) {
    const std::ptrdiff_t first = place - kAlignment;
    const std::ptrdiff_t end = first + kMedianBeatSamples;
    if (first < 0 || end > static_cast<std::ptrdiff_t>(recording.SampleCount())) {
        return false;
    }
    return std::none_of(recording.gaps.begin(), recording.gaps.end(), [&](const Gap& gap) {
        return static_cast<std::ptrdiff_t>(gap.first)<end&& static_cast<std::ptrdiff_t>(gap.end)> first;
    });
}

// The whole beats among the chosen; all of the chosen when none is whole.
std::vector<bool> WholeBeats(const Recording& recording, const Places& places, std::vector<bool> chosen) {
    const std::vector<bool> all = chosen;
    for (std::size_t i = 0; i < places.size(); ++i) {
        chosen[i] = chosen[i] && IsWhole(recording, places[i]);
    }
    return std::count(chosen.begin(), chosen.end(), true) > 0 ? chosen : all;
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

// Sample `offset` from each place, the recording's ends continued.
void Gather(const Trace& lead, const Places& places, std::ptrdiff_t offset, std::vector<float>& values) {
    const auto last = static_cast<std::ptrdiff_t>(lead.size()) - 1;
    values.clear();
    for (const std::ptrdiff_t place : places) {
        values.push_back(lead[static_cast<std::size_t>(std::clamp(place + offset, std::ptrdiff_t{0}, last))]);
    }
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
    std::vector<float> values;
    for (const Trace& lead : recording.leads) {
        Trace mean(velocity.size());
        for (std::size_t i = 0; i < mean.size(); ++i) {
            Gather(lead, places, static_cast<std::ptrdiff_t>(i) - kFarthest - kMargin, values);
            double sum = 0;
            for (const float value : values) {
                sum += double{value};
            }
            mean[i] = static_cast<float>(sum / static_cast<double>(values.size()));
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

std::int16_t Saturated(double microvolts) {
    constexpr double kUnitsPerMicrovolt = 1000.0 / kResolutionNv;
    return static_cast<std::int16_t>(
        std::clamp(std::round(microvolts * kUnitsPerMicrovolt), -32768.0, 32767.0));
}

void FillMedians(const Recording& recording, const Places& places, MedianBeat& beat) {
    std::vector<float> values;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        beat.leads[lead].resize(kMedianBeatSamples);
        for (int i = 0; i < kMedianBeatSamples; ++i) {
            Gather(recording.leads[lead], places, i - kAlignment, values);
            beat.leads[lead][static_cast<std::size_t>(i)] = Saturated(Median(values));
        }
    }
}

// How far the largest spatial magnitude of the QRS complex lies behind the alignment point.
std::ptrdiff_t PeakOffset(const MedianBeat& beat) {
    constexpr std::ptrdiff_t kReach = ToSamples(60);
    constexpr std::ptrdiff_t kSmoothing = 2;  // to each side, as in the beat finder
    std::ptrdiff_t best = 0;
    double largest = -1;
    for (std::ptrdiff_t offset = -kReach; offset <= kReach; ++offset) {
        double magnitude = 0;
        for (const std::vector<std::int16_t>& lead : beat.leads) {
            double sum = 0;
            for (std::ptrdiff_t k = -kSmoothing; k <= kSmoothing; ++k) {
                sum += lead[static_cast<std::size_t>(kAlignment + offset + k)];
            }
            magnitude += sum * sum;
        }
        if (magnitude > largest) {
            largest = magnitude;
            best = offset;
        }
    }
    return best;
}

std::optional<MedianBeat> Make(const Recording& given, std::string& error) {
    Recording recording = ResampleToWorkingRate(given);
    MedianBeat beat;
    beat.beatsMs = FindBeats(recording);
    if (beat.beatsMs.empty()) {
        error = "no heart beat was found";
        return std::nullopt;
    }
    beat.rrMs = MedianRrMs(beat.beatsMs);
    Places places;
    for (const int ms : beat.beatsMs) {
        places.push_back(ToSamples(ms));
    }
    const BeatClasses classes = ClassifyBeats(recording, places);
    beat.dominant = classes.dominant;
    beat.kept = WholeBeats(recording, classes.aligned, ByRhythm(classes.dominant, beat.beatsMs, beat.rrMs));

    // The baseline follows all beats of the shape: those at the ends, too, know where it is.
    const Places ofShape = Chosen(classes.aligned, classes.dominant);
    const std::ptrdiff_t calm = IsoelectricOffset(recording, ofShape);
    Places knots = ofShape;
    for (std::ptrdiff_t& knot : knots) {
        knot += calm;
    }
    RemoveBaseline(recording, knots);

    places = Chosen(classes.aligned, beat.kept);
    FillMedians(recording, places, beat);
    if (const std::ptrdiff_t offset = PeakOffset(beat); offset != 0) {
        for (std::ptrdiff_t& place : places) {
            place += offset;
        }
        FillMedians(recording, places, beat);
    }
    for (const std::ptrdiff_t place : places) {
        beat.alignedMs.push_back(static_cast<int>(place * 1000 / kWorkingRate));
    }
    return beat;
}

}  // namespace

std::size_t MedianBeat::KeptCount() const {
    return static_cast<std::size_t>(std::count(kept.begin(), kept.end(), true));
}

std::optional<MedianBeat> MakeMedianBeat(const Recording& recording, std::string& error) {
    try {
        return Make(recording, error);
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory for its median beat";
        return std::nullopt;
    }
}

}  // namespace kx::recording
