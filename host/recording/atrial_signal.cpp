#include "host/recording/atrial_signal.h"

#include <algorithm>
#include <cmath>

namespace kx::recording {

namespace {

constexpr std::size_t kSmoothing = 11;  // samples at kWorkingRate: 22 ms
// By a cube-root form: a QT of 420 ms at 60 beats a minute.
constexpr double kQtMs = 420;
constexpr std::ptrdiff_t kAfterT = ToAtrialSamples(240);  // the least between the end of T and the next place
constexpr double kLongestCycle = 1.15;                    // of the median interval
constexpr std::size_t kFewestBeats = 3;
constexpr std::ptrdiff_t kEdge = ToAtrialSamples(40);

Trace Halved(const Trace& lead) {
    const Trace smooth = MovingMean(MovingMean(lead, kSmoothing), kSmoothing);
    Trace halved(smooth.size() / (kWorkingRate / kAtrialRate));
    for (std::size_t i = 0; i < halved.size(); ++i) {
        halved[i] = smooth[i * (kWorkingRate / kAtrialRate)];
    }
    return halved;
}

// Where the mean beat's spatial velocity first leaves its calm on the way to its largest, from the place.
std::ptrdiff_t QrsOnset(const AlignedBeats& beats) {
    constexpr std::ptrdiff_t kBefore = ToSamples(180);
    constexpr std::ptrdiff_t kBehind = ToSamples(60);
    constexpr float kCalmPart = 0.06f;
    const Places places = Chosen(beats.places, beats.kept);
    const std::vector<bool> missing = MissingSamples(beats.heart);
    Trace velocity(static_cast<std::size_t>(kBefore + kBehind));
    std::vector<float> values;
    for (const Trace& lead : beats.heart.leads) {
        Trace median;
        for (std::ptrdiff_t offset = -kBefore - 1; offset <= kBehind; ++offset) {
            GatherSamples(lead, missing, places, offset, values);
            median.push_back(static_cast<float>(Median(values)));
        }
        const Trace smooth = MovingMean(median, 5);
        for (std::size_t i = 0; i < velocity.size(); ++i) {
            const float slope = smooth[i + 2] - smooth[i];
            velocity[i] += slope * slope;
        }
    }
    for (float& value : velocity) {
        value = std::sqrt(value);
    }
    const auto place = velocity.begin() + kBefore;
    const float largest = *std::max_element(place - ToSamples(40), place + ToSamples(40));
    const float calmest = *std::min_element(velocity.begin(), velocity.begin() + ToSamples(120));
    const float threshold = std::max(kCalmPart * largest, 1.5f * calmest);
    std::ptrdiff_t i = kBefore - ToSamples(20);
    while (i > ToSamples(40) && velocity[static_cast<std::size_t>(i)] > threshold) {
        --i;
    }
    return i - kBefore - ToSamples(8);
}

// First and end of what is subtracted for a beat.
struct Segment {
    std::ptrdiff_t first = 0;
    std::ptrdiff_t end = 0;
};

std::vector<Segment> SegmentsOf(const AtrialSignal& signal, Subtraction subtraction) {
    const std::ptrdiff_t length =
        subtraction == Subtraction::kQrst
            ? signal.qt
            : static_cast<std::ptrdiff_t>(kLongestCycle * static_cast<double>(signal.rr));
    std::vector<Segment> segments;
    for (std::size_t i = 0; i < signal.beats.size(); ++i) {
        const std::ptrdiff_t first = signal.beats[i] + signal.qrsOnset;
        const std::ptrdiff_t next =
            i + 1 < signal.beats.size() ? signal.beats[i + 1] + signal.qrsOnset : signal.Count();
        segments.push_back({first, std::min({first + length, next, signal.Count()})});
    }
    return segments;
}

// The median over the dominant beats of a lead at each place of their segments; `covered` counts the beats.
Trace MedianSegment(const AtrialSignal& signal, const Trace& lead, const std::vector<Segment>& segments,
                    std::size_t length, std::vector<std::size_t>& covered) {
    Trace median(length);
    covered.assign(length, 0);
    std::vector<float> values;
    for (std::size_t k = 0; k < length; ++k) {
        values.clear();
        for (std::size_t i = 0; i < segments.size(); ++i) {
            const std::ptrdiff_t place = segments[i].first + static_cast<std::ptrdiff_t>(k);
            if (signal.dominant[i] && place >= 0 && place < segments[i].end) {
                values.push_back(lead[static_cast<std::size_t>(place)]);
            }
        }
        covered[k] = values.size();
        median[k] = values.size() < kFewestBeats ? 0 : static_cast<float>(Median(values));
    }
    return median;
}

void Invalidate(std::vector<bool>& valid, std::ptrdiff_t first, std::ptrdiff_t end) {
    const auto count = static_cast<std::ptrdiff_t>(valid.size());
    for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, first); i < std::min(count, end); ++i) {
        valid[static_cast<std::size_t>(i)] = false;
    }
}

}  // namespace

AtrialSignal MakeAtrialSignal(const AlignedBeats& beats) {
    AtrialSignal signal;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        signal.leads[lead] = Halved(beats.heart.leads[lead]);
    }
    for (const std::ptrdiff_t place : beats.places) {
        signal.beats.push_back(place / (kWorkingRate / kAtrialRate));
    }
    signal.dominant = beats.dominant;
    signal.kept = beats.kept;
    signal.qrsOnset = QrsOnset(beats) / (kWorkingRate / kAtrialRate);
    signal.rr = ToAtrialSamples(beats.rrMs != 0 ? beats.rrMs : 1000);
    const double seconds = static_cast<double>(signal.rr) / static_cast<double>(kAtrialRate);
    const auto qt =
        static_cast<std::ptrdiff_t>(kQtMs / 1000 * static_cast<double>(kAtrialRate) * std::cbrt(seconds));
    signal.qt = std::max<std::ptrdiff_t>(0, std::min(qt, signal.rr - kAfterT));
    return signal;
}

Residual Subtract(const AtrialSignal& signal, Subtraction subtraction) {
    Residual residual{signal.leads, std::vector<bool>(static_cast<std::size_t>(signal.Count()), true)};
    const std::vector<Segment> segments = SegmentsOf(signal, subtraction);
    std::ptrdiff_t longest = 0;
    for (const Segment& segment : segments) {
        longest = std::max(longest, segment.end - segment.first);
    }
    std::vector<std::size_t> covered;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        const Trace median =
            MedianSegment(signal, signal.leads[lead], segments, static_cast<std::size_t>(longest), covered);
        for (std::size_t i = 0; i < segments.size(); ++i) {
            for (std::ptrdiff_t k = std::max<std::ptrdiff_t>(0, segments[i].first);
                 signal.dominant[i] && k < segments[i].end; ++k) {
                residual.leads[lead][static_cast<std::size_t>(k)] -=
                    median[static_cast<std::size_t>(k - segments[i].first)];
            }
        }
    }
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const std::ptrdiff_t place = signal.beats[i];
        if (!signal.dominant[i]) {
            Invalidate(residual.valid, place - ToAtrialSamples(120), place + signal.qt);
            continue;
        }
        Invalidate(residual.valid, place + signal.qrsOnset, place - signal.qrsOnset + ToAtrialSamples(10));
        for (std::ptrdiff_t k = segments[i].first; k < segments[i].end; ++k) {
            if (covered[static_cast<std::size_t>(k - segments[i].first)] < kFewestBeats) {
                Invalidate(residual.valid, k, k + 1);
            }
        }
    }
    Invalidate(residual.valid, 0, kEdge);
    Invalidate(residual.valid, signal.Count() - kEdge, signal.Count());
    return residual;
}

}  // namespace kx::recording
