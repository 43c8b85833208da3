#include "host/recording/median_beat.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "host/recording/aligned_beats.h"
#include "host/recording/lead_names.h"
#include "host/recording/saturation.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kAlignment = ToSamples(kAlignmentMs);

std::int16_t Saturated(double microvolts) {
    constexpr double kUnitsPerMicrovolt = 1000.0 / kResolutionNv;
    return static_cast<std::int16_t>(
        std::clamp(std::round(microvolts * kUnitsPerMicrovolt), -32768.0, 32767.0));
}

// The part of a beat without which it is not measured: a P wave, the QRS complex, a T wave, ms from the
// alignment point.
constexpr std::ptrdiff_t kCoreFrom = -300;
constexpr std::ptrdiff_t kCoreTo = 530;
// Microvolts. Less hum than a quarter of a millimetre on paper is nothing to a reader.
constexpr double kRemarkedHum = 25;
// So many beats of which no two look alike have no representative.
constexpr std::size_t kManyBeats = 4;

// The samples [from, to) that at least one beat has.
struct Filled {
    int from = kMedianBeatSamples;
    int to = 0;
    bool whole = true;  // without a gap between
};

// Samples that no beat has are those of the nearest that one has.
Filled FillMedians(const Recording& recording, const Places& places, MedianBeat& beat) {
    const std::vector<bool> missing = MissingSamples(recording);
    std::vector<float> values;
    Filled filled;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        std::vector<std::int16_t>& samples = beat.leads[lead];
        samples.assign(kMedianBeatSamples, 0);
        filled = {};
        for (int i = 0; i < kMedianBeatSamples; ++i) {
            GatherSamples(recording.leads[lead], missing, places, i - kAlignment, values);
            if (!values.empty()) {
                samples[static_cast<std::size_t>(i)] = Saturated(Median(values));
                filled.whole = filled.whole && (filled.to == 0 || filled.to == i);
                filled.from = std::min(filled.from, i);
                filled.to = i + 1;
            }
        }
        if (filled.to > 0) {
            const auto first = samples.begin() + filled.from, last = samples.begin() + filled.to - 1;
            std::fill(samples.begin(), first, *first);
            std::fill(last, samples.end(), *last);
        }
    }
    return filled;
}

bool HoldsCore(const Filled& filled) {
    return filled.whole && filled.from <= kAlignment + ToSamples(kCoreFrom) &&
           filled.to >= kAlignment + ToSamples(kCoreTo);
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

// Why there is no median of these beats; empty when there is.
std::string Refusal(const AlignedBeats& beats) {
    if (beats.places.empty()) {
        return "no heart beat was found";
    }
    const auto alike = std::count(beats.dominant.begin(), beats.dominant.end(), true);
    if (beats.places.size() >= kManyBeats && alike < 2) {
        return "no two of its beats look alike";
    }
    return {};
}

// The leads that can be averaged; what is left out is remarked.
Recording Usable(const Recording& given, std::vector<std::string>& remarks) {
    Recording usable = given;
    for (const std::size_t lead : FindSaturatedLeads(given)) {
        std::fill(usable.leads[lead].begin(), usable.leads[lead].end(), 0.0f);
        remarks.push_back(std::string(kLeadNames[lead]) +
                          " exceeds the range of the recorder and is left out of the median beat");
    }
    return usable;
}

std::optional<MedianBeat> Make(const Recording& given, std::string& error) {
    MedianBeat beat;
    const AlignedBeats beats = AlignBeats(Usable(given, beat.remarks));
    error = Refusal(beats);
    if (!error.empty()) {
        return std::nullopt;
    }
    beat.rrMs = beats.rrMs;
    beat.dominant = beats.dominant;
    beat.kept = beats.kept;
    Places kept = Chosen(beats.places, beats.kept);
    FillMedians(beats.heart, kept, beat);
    const std::ptrdiff_t offset = PeakOffset(beat);
    for (std::ptrdiff_t& place : kept) {
        place += offset;
    }
    if (!HoldsCore(FillMedians(beats.recording, kept, beat))) {
        error = "no beat is whole: samples are missing, or the recording is too short";
        return std::nullopt;
    }
    for (std::size_t i = 0; i < beats.places.size(); ++i) {
        const std::ptrdiff_t place = beats.places[i] + (beats.dominant[i] ? offset : 0);
        beat.beatsMs.push_back(static_cast<int>(std::max<std::ptrdiff_t>(0, place) * 1000 / kWorkingRate));
    }
    beat.rhythm = FindRhythm(beats);
    if (beat.rhythm.atrialLead == AtrialLead::kNone) {
        beat.remarks.push_back(
            "the waves of the atria are not at one distance before the beats: neither P wave nor PR interval "
            "is measured");
    }
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        beat.rhythm.beats[i].ms = beat.beatsMs[i];
    }
    if (beats.hum.microvolts >= kRemarkedHum) {
        beat.remarks.push_back("a mains hum of " + std::to_string(beats.hum.hertz) + " Hz was taken out");
    }
    return beat;
}

}  // namespace

std::optional<MedianBeat> MakeMedianBeat(const Recording& recording, std::string& error) {
    try {
        return Make(recording, error);
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory for its median beat";
        return std::nullopt;
    }
}

}  // namespace kx::recording
