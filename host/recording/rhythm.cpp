#include "host/recording/rhythm.h"

#include <algorithm>
#include <cmath>

#include "host/recording/atrial_waves.h"
#include "host/recording/beat_kinds.h"
#include "host/recording/pacing.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kHalfComplex = ToSamples(120);
constexpr std::ptrdiff_t kLargestLag = ToSamples(60);
constexpr std::ptrdiff_t kSmoothing = 5;
constexpr float kMoving = 0.15f;  // of the largest spatial velocity
constexpr std::ptrdiff_t kEdge = ToSamples(100);

int ToMs(std::ptrdiff_t sample) {
    return static_cast<int>(sample * 1000 / kWorkingRate);
}

std::vector<int> ToMs(const Places& places) {
    std::vector<int> ms;
    for (const std::ptrdiff_t place : places) {
        ms.push_back(ToMs(place));
    }
    return ms;
}

// See Rhythm::atrialLead.
AtrialLead LeadOf(const AtrialWaves& waves, std::size_t beats, int rrMs) {
    // Flutter waves come at least so often (F. G. Cosio, Arrhythm. Electrophysiol. Rev. 6, 55-62, 2017), with
    // a beat behind every second to fourth of them.
    constexpr int kSlowestFlutterMs = 290;
    constexpr double kTolerance = 0.12;
    constexpr std::size_t kFewestWaves = 5;
    std::size_t fitting = 0;
    std::size_t frequent = 0;
    for (std::size_t i = 1; i < waves.peaks.size(); ++i) {
        const int interval = ToMs(waves.peaks[i] - waves.peaks[i - 1]);
        const double inBeats = static_cast<double>(interval) / std::max(rrMs, 1);
        fitting += std::fabs(inBeats / std::clamp(std::round(inBeats), 1.0, 2.0) - 1) <= kTolerance;
        frequent += interval <= kSlowestFlutterMs;
    }
    // Some of them are hidden in the complexes and T waves.
    const bool flutters = waves.peaks.size() > beats && 3 * frequent >= waves.peaks.size();
    if (flutters || !waves.beforeBeats) {
        return waves.peaks.empty() ? AtrialLead::kUnknown : AtrialLead::kNone;
    }
    return waves.peaks.size() >= kFewestWaves && 5 * fitting >= 4 * (waves.peaks.size() - 1)
               ? AtrialLead::kEveryBeat
               : AtrialLead::kUnknown;
}

// Complexes of one recording, compared.
class Complexes {
  public:
    explicit Complexes(const AlignedBeats& beats)
        : count_(static_cast<std::ptrdiff_t>(beats.heart.SampleCount())) {
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            leads_[lead] = MovingMean(beats.heart.leads[lead], kSmoothing);
        }
        const Places places = Chosen(beats.places, beats.dominant);
        const std::vector<bool> missing = MissingSamples(beats.heart);
        std::vector<float> values;
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            for (std::ptrdiff_t k = -kHalfComplex; k <= kHalfComplex; ++k) {
                GatherSamples(leads_[lead], missing, places, k, values);
                dominant_.push_back(static_cast<float>(Median(values)));
            }
        }
        RemoveMeans(dominant_);
    }

    // The best correlation with the dominant complex near a place.
    double Likeness(std::ptrdiff_t place) const {
        double best = -1;
        for (std::ptrdiff_t lag = -kLargestLag; lag <= kLargestLag; lag += 2) {
            Trace cut;
            for (const Trace& lead : leads_) {
                for (std::ptrdiff_t k = -kHalfComplex; k <= kHalfComplex; ++k) {
                    cut.push_back(At(lead, place + lag + k));
                }
            }
            RemoveMeans(cut);
            const double scale = std::sqrt(Product(cut, cut) * Product(dominant_, dominant_));
            best = std::max(best, scale > 0 ? Product(cut, dominant_) / scale : -1);
        }
        return best;
    }

    // From where the leads together begin to move to where they come to rest.
    int WidthMs(std::ptrdiff_t place) const {
        Trace velocity;
        for (std::ptrdiff_t k = -kHalfComplex - kLargestLag; k <= kHalfComplex + kLargestLag; ++k) {
            float sum = 0;
            for (const Trace& lead : leads_) {
                const float slope = At(lead, place + k + 1) - At(lead, place + k - 1);
                sum += slope * slope;
            }
            velocity.push_back(std::sqrt(sum));
        }
        const Trace smooth = MovingMean(velocity, kSmoothing);
        const float threshold = kMoving * *std::max_element(smooth.begin(), smooth.end());
        const auto moves = [threshold](float value) { return value > threshold; };
        const auto first = std::find_if(smooth.begin(), smooth.end(), moves);
        const auto last = std::find_if(smooth.rbegin(), smooth.rend(), moves);
        return first == smooth.end() ? 0 : ToMs(last.base() - first - 1);
    }

    // See Rhythm::slowOnsetMs.
    int SlowOnsetMs() const {
        constexpr float kFast = 0.4f;
        constexpr float kStill = 0.08f;
        constexpr std::size_t kPart = 2 * kHalfComplex + 1;
        Trace velocity(kPart);
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            for (std::size_t k = 1; k + 1 < kPart; ++k) {
                const float slope = dominant_[lead * kPart + k + 1] - dominant_[lead * kPart + k - 1];
                velocity[k] += slope * slope;
            }
        }
        for (float& value : velocity) {
            value = std::sqrt(value);
        }
        const Trace smooth = MovingMean(velocity, 3);
        const auto largest = std::max_element(smooth.begin(), smooth.end());
        const auto lastBelow = [&](Trace::const_iterator end, float part) {
            const auto below = [&](float value) { return value <= part * *largest; };
            return std::find_if(std::make_reverse_iterator(end), smooth.rend(), below).base();
        };
        const auto fast = lastBelow(largest, kFast);
        return ToMs(fast - lastBelow(fast, kStill));
    }

  private:
    float At(const Trace& lead, std::ptrdiff_t place) const {
        return lead[static_cast<std::size_t>(std::clamp(place, std::ptrdiff_t{0}, count_ - 1))];
    }

    static void RemoveMeans(Trace& complex) {
        constexpr auto kPart = static_cast<std::ptrdiff_t>(2 * kHalfComplex + 1);
        for (auto part = complex.begin(); part != complex.end(); part += kPart) {
            double sum = 0;
            std::for_each(part, part + kPart, [&sum](float value) { sum += double{value}; });
            const auto mean = static_cast<float>(sum / kPart);
            std::for_each(part, part + kPart, [mean](float& value) { value -= mean; });
        }
    }

    static double Product(const Trace& a, const Trace& b) {
        double sum = 0;
        for (std::size_t i = 0; i < a.size(); ++i) {
            sum += double{a[i]} * double{b[i]};
        }
        return sum;
    }

    std::ptrdiff_t count_;
    std::array<Trace, kLeadCount> leads_;
    Trace dominant_;
};

}  // namespace

Rhythm FindRhythm(const AlignedBeats& beats) {
    Rhythm rhythm;
    if (beats.places.empty()) {
        return rhythm;
    }
    const AtrialWaves waves = FindAtrialWaves(beats);
    const Pacing pacing = FindPacing(beats);
    const Complexes complexes(beats);
    const auto count = static_cast<std::ptrdiff_t>(beats.heart.SampleCount());
    std::vector<BeatSigns> signs;
    for (std::size_t i = 0; i < beats.places.size(); ++i) {
        const std::ptrdiff_t place = beats.places[i];
        BeatSigns sign;
        sign.ms = ToMs(place);
        sign.dominant = beats.dominant[i];
        sign.whole = place >= kEdge && place + kEdge < count;
        sign.paced = pacing.paced[i];
        if (!sign.dominant) {
            sign.likeness = complexes.Likeness(place);
            sign.widthMs = complexes.WidthMs(place);
        }
        signs.push_back(sign);
    }
    const std::vector<std::uint8_t> kinds = KindsOfBeats(signs, waves.beforeBeats);
    for (std::size_t i = 0; i < signs.size(); ++i) {
        rhythm.beats.push_back({signs[i].ms, kinds[i], beats.kept[i]});
    }
    rhythm.slowOnsetMs = complexes.SlowOnsetMs();
    rhythm.atrialMs = ToMs(waves.peaks);
    rhythm.impulsesMs = ToMs(pacing.impulses);
    rhythm.atrialLead = LeadOf(waves, beats.places.size(), beats.rrMs);
    return rhythm;
}

}  // namespace kx::recording
