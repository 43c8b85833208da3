#include "dialogs/marker_view/trace/signal_filters.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "lib/muldiv.h"

namespace kx {

namespace {

// The shared layout on the 32-bit platform: the table pointer, the missing-sample value, then the fields in
// order.
static_assert(sizeof(void*) != 4 || sizeof(MovingAverageFilter) == 8 + 512 * 4 + 4 + 4);
static_assert(sizeof(void*) != 4 || sizeof(BandPassFilter) == 8 + 13 * 8);
static_assert(sizeof(void*) != 4 || sizeof(DerivativeTrace) == 3 * 4 + 4 * 4 + 4);

std::int32_t MeanLength(std::int32_t mainsHz, std::int32_t samplingRateHz) {
    const std::int32_t length = mainsHz > 0 ? samplingRateHz / mainsHz : 1;
    return std::clamp<std::int32_t>(length, 1, MovingAverageFilter::kLongestMean);
}

// Two 32-bit values added as the machine does it: a sum that no beat reaches wraps around.
constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::int32_t WrappingSubtract(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// A pole of the digital filter: where the bilinear transform puts the analogue pole s + iw.
struct Pole {
    double re;
    double magnitudeSquared;
    double d;  // the transform's denominator

    Pole(double s, double w) : d((1.0 - s) * (1.0 - s) + w * w) {
        re = (1.0 - s * s - w * w) / d;
        const double im = 2.0 * w / d;
        magnitudeSquared = re * re + im * im;
    }
};

constexpr double kTwoPi = 6.283185308;
constexpr double kHighestEdge = 1.53938040046;  // 0.49 pi: beyond it the tangent says nothing any more
constexpr double kNoUpperEdge = 9e9;

constexpr int kSettlingSteps = 32;

}  // namespace

MovingAverageFilter::MovingAverageFilter(std::int32_t mainsHz, std::int32_t samplingRateHz,
                                         std::int32_t missingSample)
    : SampleFilter(missingSample), length_(MeanLength(mainsHz, samplingRateHz)) {}

std::int32_t MovingAverageFilter::FilterSample(std::int32_t sample) {
    const auto oldest = history_.begin() + (length_ - 1);
    sum_ = WrappingSubtract(WrappingAdd(sum_, sample), *oldest);
    std::copy_backward(history_.begin(), oldest, oldest + 1);
    history_[0] = sample;
    return sum_ / length_;
}

void MovingAverageFilter::FillHistory(std::int16_t sample) {
    for (std::int32_t i = 0; i < length_; ++i) {
        FilterSample(sample);
    }
}

std::int16_t MovingAverageFilter::FilterUnlessMissing(std::int16_t sample) {
    return sample == missingSample_ ? sample : static_cast<std::int16_t>(FilterSample(sample));
}

void MovingAverageFilter::FilterForward(std::int16_t* samples, std::int32_t count) {
    if (samples == nullptr || count <= 0) {
        return;
    }
    FillHistory(samples[0]);
    for (std::int32_t i = 0; i < count; ++i) {
        samples[i] = FilterUnlessMissing(samples[i]);
    }
}

void MovingAverageFilter::FilterBackward(std::int16_t* samples, std::int32_t count) {
    if (samples == nullptr || count <= 0) {
        return;
    }
    FillHistory(samples[count - 1]);
    for (std::int32_t i = count - 1; i >= 0; --i) {
        samples[i] = FilterUnlessMissing(samples[i]);
    }
}

BandPassFilter::BandPassFilter(double lowHz, double highHz, std::int32_t samplingRateHz,
                               std::int32_t missingSample)
    : SampleFilter(missingSample) {
    // The user picks the two edges one by one; taken in the wrong order they would make an unstable filter.
    if (highHz < lowHz) {
        std::swap(lowHz, highHz);
    }
    const double fs = samplingRateHz;
    const double tLow = std::tan(kTwoPi * lowHz / fs / 2.0);
    const double wHigh = kTwoPi * highHz / fs / 2.0;
    const double tHigh = wHigh < kHighestEdge ? std::tan(wHigh) : kNoUpperEdge;

    const double p = tHigh * tLow;
    const double b = tHigh - tLow;
    const double s = std::sqrt(16.0 * p * p + b * b * b * b);
    const double half = std::sqrt(2.0) * b / 4.0;
    const double spread = std::sqrt((s - 4.0 * p) / 8.0);
    const double lift = b * b / std::sqrt((s - 4.0 * p) * 8.0);
    const Pole first(spread - half, half - lift);
    const Pole second(-half - spread, half + lift);

    g_ = b * b / (first.d * second.d);
    a1_ = -2.0 * (first.re + second.re);
    a2_ = first.magnitudeSquared + second.magnitudeSquared + 4.0 * first.re * second.re;
    a3_ = -2.0 * second.re * first.magnitudeSquared - 2.0 * first.re * second.magnitudeSquared;
    a4_ = first.magnitudeSquared * second.magnitudeSquared;
}

BandPassFilter::State BandPassFilter::Settled(std::int16_t sample) const {
    const double value = sample;
    State state{value, value, value, value, value, value, value, value};
    for (int i = 0; i < kSettlingSteps; ++i) {
        Advance(state, value);
    }
    return state;
}

std::int16_t BandPassFilter::FilterUnlessMissing(State& state, std::int16_t sample) const {
    return sample == missingSample_ ? sample
                                    : static_cast<std::int16_t>(TruncateToInt32(Advance(state, sample)));
}

void BandPassFilter::FilterForward(std::int16_t* samples, std::int32_t count) {
    if (samples == nullptr || count <= 0) {
        return;
    }
    State state = Settled(samples[0]);
    for (std::int32_t i = 0; i < count; ++i) {
        samples[i] = FilterUnlessMissing(state, samples[i]);
    }
}

void BandPassFilter::FilterBackward(std::int16_t* samples, std::int32_t count) {
    if (samples == nullptr || count <= 0) {
        return;
    }
    State state = Settled(samples[count - 1]);
    for (std::int32_t i = count - 1; i >= 0; --i) {
        samples[i] = FilterUnlessMissing(state, samples[i]);
    }
}

DerivativeTrace::DerivativeTrace(std::uint32_t samplingRateHz, std::uint32_t resolutionNv,
                                 const std::int16_t* samples, std::uint32_t count)
    : count_(count), samplingRateHz_(samplingRateHz), resolutionNv_(resolutionNv) {
    constexpr std::size_t kMostValues = std::numeric_limits<std::size_t>::max() / sizeof(std::int32_t) / 2;
    if (samples == nullptr || count == 0 || count > kMostValues) {
        return;
    }
    values_.reset(new (std::nothrow) std::int32_t[count]());
    if (values_ != nullptr) {
        Compute(samples);
    }
}

void DerivativeTrace::Compute(const std::int16_t* samples) {
    // Five points make one slope: a shorter beat has none, and its values stay 0.
    if (count_ < 5) {
        return;
    }
    for (std::uint32_t i = 2; i + 2 < count_; ++i) {
        values_[i] = samples[i + 1] + 2 * (samples[i + 2] - samples[i - 2]) - samples[i - 1];
    }
    values_[count_ - 1] = values_[count_ - 2] = values_[count_ - 3];
    values_[0] = values_[1] = values_[2];
}

std::int32_t DerivativeTrace::SlopeValue(std::uint32_t i) const {
    return values_ != nullptr && i < count_ ? SlopeFromRaw(values_[i]) : 0;
}

std::int32_t DerivativeTrace::SlopeFromRaw(std::int32_t raw) const {
    return MulDivRound(raw, Factor(), 10000);
}

std::int32_t DerivativeTrace::RawFromSlope(std::int32_t slope) const {
    return MulDivRound(slope, 10000, Factor());
}

// Raw units to thousandths of a microvolt per millisecond, times 10000. A product that no recorder reaches is
// held at the end of the range instead of turning negative.
std::int32_t DerivativeTrace::Factor() const {
    const std::uint64_t factor = std::uint64_t{resolutionNv_} * samplingRateHz_;
    return static_cast<std::int32_t>(std::min<std::uint64_t>(factor, INT32_MAX));
}

}  // namespace kx
