#include "host/recording/beat_finder.h"

#include <algorithm>
#include <cmath>

#include "host/recording/resample.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

// Working-rate samples.
constexpr auto kIntegration = static_cast<std::size_t>(ToSamples(100));
constexpr std::ptrdiff_t kRefractory = ToSamples(200);
constexpr std::ptrdiff_t kTWaveSpan = ToSamples(360);

// Where the levels between noise (0) and signal (1) lie above which a peak is a beat. The levels are
// amplitudes; the published 0.25 is one of energies.
constexpr float kThreshold = 0.35f;
constexpr float kSearchBackPart = 0.5f;
constexpr float kMissedBeatRr = 1.66f;  // of the mean RR, as published
constexpr float kTWaveSlopePart = 0.5f;
// No smaller level is taken for a heart: uV of spatial slope, integrated. Quantisation and hum stay below it.
constexpr float kSmallestSignal = 10;

struct Features {
    Trace energy;      // squared spatial velocity
    Trace integrated;  // root of its moving mean over 100 ms
    Trace magnitude;   // spatial magnitude about a local mean
};

Features FeaturesOf(const Recording& recording) {
    Features features;
    const std::size_t count = recording.SampleCount();
    features.energy.resize(count);
    features.magnitude.resize(count);
    constexpr std::size_t kSmoothing = 5;  // 10 ms: a pacing spike does not outdo its QRS complex
    constexpr auto kLocalMean = static_cast<std::size_t>(ToSamples(300)) + 1;
    for (const Trace& lead : recording.leads) {
        const Trace slope = BandSlope(lead);
        const Trace smooth = MovingMean(lead, kSmoothing);
        const Trace level = MovingMean(lead, kLocalMean);
        for (std::size_t i = 0; i < count; ++i) {
            const float height = smooth[i] - level[i];
            features.energy[i] += slope[i] * slope[i];
            features.magnitude[i] += height * height;
        }
    }
    features.integrated = MovingMean(features.energy, kIntegration);
    for (float& value : features.integrated) {
        value = std::sqrt(std::max(value, 0.0f));
    }
    return features;
}

struct Peak {
    std::ptrdiff_t place = 0;
    float height = 0;
    float slope = 0;  // largest spatial velocity around it
};

// Index of the largest value within `reach` of a place.
std::ptrdiff_t LargestNear(const Trace& trace, std::ptrdiff_t place, std::ptrdiff_t reach) {
    const auto end = std::min(static_cast<std::ptrdiff_t>(trace.size()), place + reach + 1);
    const auto first = trace.begin() + std::max<std::ptrdiff_t>(0, place - reach);
    return std::max_element(first, trace.begin() + end) - trace.begin();
}

std::vector<Peak> FindPeaks(const Features& features) {
    std::vector<Peak> peaks;
    const Trace& trace = features.integrated;
    const auto count = static_cast<std::ptrdiff_t>(trace.size());
    constexpr std::ptrdiff_t kReach = ToSamples(100);
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const float height = trace[static_cast<std::size_t>(i)];
        if (height <= 0 || LargestNear(trace, i, kReach) != i) {
            continue;
        }
        const std::ptrdiff_t steepest = LargestNear(features.energy, i, ToSamples(60));
        peaks.push_back({i, height, std::sqrt(features.energy[static_cast<std::size_t>(steepest)])});
    }
    return peaks;
}

// A first estimate of the height of a beat: the median of the largest values of two seconds each, which holds
// a beat down to 30 a minute.
float FirstSignalLevel(const Trace& trace) {
    constexpr auto kStretch = static_cast<std::size_t>(ToSamples(2000));
    std::vector<float> largest;
    for (std::size_t i = 0; i < trace.size(); i += kStretch) {
        // A short rest at the end may hold no beat.
        if (!largest.empty() && trace.size() - i < kStretch / 2) {
            break;
        }
        const auto first = trace.begin() + static_cast<std::ptrdiff_t>(i);
        const auto length = static_cast<std::ptrdiff_t>(std::min(kStretch, trace.size() - i));
        largest.push_back(*std::max_element(first, first + length));
    }
    return static_cast<float>(Median(largest));
}

// The two adaptive levels.
class Levels {
  public:
    Levels(float signal, float noise) : signal_(signal), noise_(noise) {}
    float Threshold() const { return noise_ + kThreshold * (signal_ - noise_); }
    void Signal(float height) { signal_ += (std::min(height, 2 * signal_) - signal_) / 8; }
    void Noise(float height) { noise_ += (std::min(height, signal_) - noise_) / 8; }

  private:
    float signal_;
    float noise_;
};

bool IsTWave(const Peak& peak, const Peak& before) {
    return peak.place - before.place < kTWaveSpan && peak.slope < kTWaveSlopePart * before.slope;
}

// The largest peak of a gap between two beats that was not large enough by the ordinary level.
const Peak* SearchBack(const std::vector<Peak>& peaks, const Peak& from, const Peak& to, float threshold) {
    const Peak* largest = nullptr;
    for (const Peak& peak : peaks) {
        if (peak.place < from.place + kTWaveSpan || peak.place > to.place - kRefractory ||
            peak.height < threshold) {
            continue;
        }
        if (!largest || peak.height > largest->height) {
            largest = &peak;
        }
    }
    return largest;
}

double MedianRr(const std::vector<Peak>& beats) {
    std::vector<float> intervals;
    for (std::size_t i = 1; i < beats.size(); ++i) {
        intervals.push_back(static_cast<float>(beats[i].place - beats[i - 1].place));
    }
    return Median(intervals);
}

std::vector<Peak> SelectBeats(const std::vector<Peak>& peaks, const Trace& integrated) {
    const float signal = FirstSignalLevel(integrated);
    if (signal < kSmallestSignal) {
        return {};
    }
    std::vector<float> all(integrated.begin(), integrated.end());
    Levels levels(signal, std::min(static_cast<float>(Median(all)), signal / 2));
    std::vector<Peak> beats;
    for (const Peak& peak : peaks) {
        const bool tooEarly = !beats.empty() && peak.place - beats.back().place < kRefractory;
        if (!tooEarly && peak.height > levels.Threshold() &&
            (beats.empty() || !IsTWave(peak, beats.back()))) {
            beats.push_back(peak);
            levels.Signal(peak.height);
        } else {
            levels.Noise(peak.height);
        }
    }
    const double rr = MedianRr(beats);
    std::vector<Peak> complete;
    for (const Peak& beat : beats) {
        if (!complete.empty() && double(beat.place - complete.back().place) > double{kMissedBeatRr} * rr) {
            const Peak* missed =
                SearchBack(peaks, complete.back(), beat, kSearchBackPart * levels.Threshold());
            if (missed) {
                complete.push_back(*missed);
            }
        }
        complete.push_back(beat);
    }
    return complete;
}

}  // namespace

std::vector<int> FindBeats(const Recording& given) {
    if (given.SampleCount() == 0) {
        return {};
    }
    const Recording recording = ResampleToWorkingRate(given);
    const Features features = FeaturesOf(recording);
    std::vector<int> times;
    for (const Peak& beat : SelectBeats(FindPeaks(features), features.integrated)) {
        const std::ptrdiff_t place = LargestNear(features.magnitude, beat.place, ToSamples(70));
        const int ms = static_cast<int>(place * 1000 / kWorkingRate);
        if (times.empty() || ms - times.back() >= 200) {
            times.push_back(ms);
        }
    }
    return times;
}

}  // namespace kx::recording
