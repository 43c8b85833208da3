#include "host/recording/atrial_waves.h"

#include <algorithm>
#include <cmath>

#include "host/recording/atrial_signal.h"
#include "host/recording/p_waves.h"
#include "host/recording/wave_search.h"

namespace kx::recording {

namespace {

constexpr double kMostBeats = 0.75;  // of the kept ones
constexpr MatchLimits kAsBeforeBeats{0.85, 0.6, 1.7};
constexpr MatchLimits kAsTried{0.75, 0.4, 2.5};
constexpr std::size_t kTrials = 10;
constexpr std::ptrdiff_t kSameWave = ToAtrialSamples(60);
constexpr double kMostIntervals = 0.8;
constexpr int kFewestNeighbours = 5;
constexpr float kLeastScale = 5;  // microvolts

Places ToWorkingRate(Places places) {
    for (std::ptrdiff_t& place : places) {
        place *= kWorkingRate / kAtrialRate;
    }
    return places;
}

AtrialWaves WavesLikeThoseBeforeBeats(const AtrialSignal& signal, const WavesBeforeBeats& waves) {
    AtrialWaves found;
    found.beforeBeats = true;
    for (std::size_t i = 0; i < signal.beats.size(); ++i) {
        const std::ptrdiff_t peak = signal.beats[i] + waves.peak;
        if (waves.before[i] && peak >= 0) {
            found.peaks.push_back(peak);
        }
    }
    const Residual residual = Subtract(signal, Subtraction::kQrst);
    const WaveSearch search(residual, waves.noise);
    std::vector<WaveMatch> known;
    for (const std::ptrdiff_t peak : found.peaks) {
        if (peak >= kShapeSize / 2 && peak + kShapeSize / 2 <= signal.Count()) {
            known.push_back({peak - kShapeSize / 2, 1, 1});
        }
    }
    if (known.empty()) {
        return found;
    }
    const std::size_t before = found.peaks.size();
    for (const WaveMatch& match : search.Find(search.MedianShape(known), kAsBeforeBeats)) {
        const std::ptrdiff_t peak = match.first + kShapeSize / 2;
        const auto end = found.peaks.begin() + static_cast<std::ptrdiff_t>(before);
        if (std::none_of(found.peaks.begin(), end,
                         [peak](std::ptrdiff_t other) { return std::abs(other - peak) < kSameWave; })) {
            found.peaks.push_back(peak);
        }
    }
    std::sort(found.peaks.begin(), found.peaks.end());
    return found;
}

// The scatter of each lead where it is valid.
LeadScales ScalesOf(const Residual& residual) {
    LeadScales scales{};
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        std::vector<float> values;
        for (std::size_t i = 0; i < residual.valid.size(); ++i) {
            if (residual.valid[i]) {
                values.push_back(residual.leads[lead][i]);
            }
        }
        const auto middle = static_cast<float>(Median(values));
        for (float& value : values) {
            value = std::abs(value - middle);
        }
        scales[lead] = std::max(static_cast<float>(Median(values)), kLeastScale);
    }
    return scales;
}

// A train of waves at one interval, some of them hidden.
struct Train {
    std::ptrdiff_t interval = 0;
    int neighbours = 0;  // waves that follow one another without a hidden one
    double part = 0;     // of the intervals that fit
};

Train TrainOf(const std::vector<WaveMatch>& waves) {
    constexpr double kTolerance = 0.08;
    constexpr int kMostHidden = 3;  // intervals in one
    constexpr std::ptrdiff_t kShortest = ToAtrialSamples(160);
    constexpr std::ptrdiff_t kLongest = ToAtrialSamples(1600);
    Train best;
    for (std::ptrdiff_t base = kShortest; base < kLongest; ++base) {
        Train train{base};
        int fitting = 0;
        for (std::size_t i = 1; i < waves.size(); ++i) {
            const double part =
                static_cast<double>(waves[i].first - waves[i - 1].first) / static_cast<double>(base);
            const double whole = std::max(1.0, std::round(part));
            if (whole <= kMostHidden && std::abs(part / whole - 1) <= kTolerance) {
                ++fitting;
                train.neighbours += whole == 1;
            }
        }
        train.part = waves.size() < 2 ? 0 : fitting / static_cast<double>(waves.size() - 1);
        if (train.part * train.neighbours > best.part * best.neighbours) {
            best = train;
        }
    }
    return best;
}

AtrialWaves WavesApartFromBeats(const AtrialSignal& signal) {
    const Residual residual = Subtract(signal, Subtraction::kCycle);
    const WaveSearch search(residual, ScalesOf(residual));
    std::vector<WaveMatch> most;
    for (const std::ptrdiff_t first : search.LargestWindows(kTrials)) {
        const std::vector<WaveMatch> like = search.Find(search.ShapeAt(first), kAsTried);
        if (like.empty()) {
            continue;
        }
        std::vector<WaveMatch> again = search.Find(search.MedianShape(like), kAsTried);
        const Train train = TrainOf(again);
        if (train.neighbours >= kFewestNeighbours && train.part >= kMostIntervals &&
            again.size() > most.size()) {
            most = std::move(again);
        }
    }
    AtrialWaves found;
    for (const WaveMatch& wave : most) {
        found.peaks.push_back(wave.first + kShapeSize / 2);
    }
    return found;
}

}  // namespace

AtrialWaves FindAtrialWaves(const AlignedBeats& beats) {
    if (std::count(beats.dominant.begin(), beats.dominant.end(), true) < 3) {
        return {};
    }
    const AtrialSignal signal = MakeAtrialSignal(beats);
    const auto before = FindWavesBeforeBeats(signal);
    AtrialWaves found = before && before->part >= kMostBeats ? WavesLikeThoseBeforeBeats(signal, *before)
                                                             : WavesApartFromBeats(signal);
    found.peaks = ToWorkingRate(std::move(found.peaks));
    return found;
}

}  // namespace kx::recording
