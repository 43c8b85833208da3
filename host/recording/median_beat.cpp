#include "host/recording/median_beat.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "host/recording/aligned_beats.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kAlignment = ToSamples(kAlignmentMs);

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
            GatherSamples(recording.leads[lead], places, i - kAlignment, values);
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
    const AlignedBeats beats = AlignBeats(given);
    if (beats.places.empty()) {
        error = "no heart beat was found";
        return std::nullopt;
    }
    MedianBeat beat;
    beat.rrMs = beats.rrMs;
    beat.dominant = beats.dominant;
    beat.kept = beats.kept;
    Places kept = Chosen(beats.places, beats.kept);
    FillMedians(beats.heart, kept, beat);
    const std::ptrdiff_t offset = PeakOffset(beat);
    for (std::ptrdiff_t& place : kept) {
        place += offset;
    }
    FillMedians(beats.recording, kept, beat);
    for (std::size_t i = 0; i < beats.places.size(); ++i) {
        const std::ptrdiff_t place = beats.places[i] + (beats.dominant[i] ? offset : 0);
        beat.beatsMs.push_back(static_cast<int>(std::max<std::ptrdiff_t>(0, place) * 1000 / kWorkingRate));
    }
    beat.rhythm = FindRhythm(beats);
    for (std::size_t i = 0; i < beat.beatsMs.size(); ++i) {
        beat.rhythm.beats[i].ms = beat.beatsMs[i];
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
