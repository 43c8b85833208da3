// signal_filters: the marker view's signal treatments of one lead of a median beat: mains suppression,
// band-pass, first derivative. Portable. The filters are plain objects, built for one repaint and thrown away
// after it.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace kx {

// The sample value that recorders store where there is no signal.
inline constexpr std::int32_t kMissingSample = -32768;

// A recursive filter that is fed one sample at a time. The order of the virtual operations is part of its
// layout, and there is no virtual destructor: whoever makes a filter destroys it by its own type.
class SampleFilter {
  public:
    // Takes one sample, advances the filter by one step and returns the filtered value. The missing-sample
    // value is a sample like any other here.
    virtual std::int32_t FilterSample(std::int32_t sample) = 0;

    // Filters `count` samples in place, from the first to the last or from the last to the first, after
    // settling on the sample it starts with. Samples equal to the missing-sample value are left as they are
    // and do not enter the filter. Results keep their low 16 bits. Nothing happens when count is not positive
    // or samples is null.
    virtual void FilterForward(std::int16_t* samples, std::int32_t count) = 0;
    virtual void FilterBackward(std::int16_t* samples, std::int32_t count) = 0;

  protected:
    explicit SampleFilter(std::int32_t missingSample) : missingSample_(missingSample) {}
    SampleFilter(const SampleFilter&) = default;
    SampleFilter& operator=(const SampleFilter&) = default;
    ~SampleFilter() = default;

    std::int32_t missingSample_;
};

// The mean of the last samples over one period of the mains.
class MovingAverageFilter final : public SampleFilter {
  public:
    static constexpr std::int32_t kLongestMean = 512;

    // Averages samplingRateHz / mainsHz samples (truncated: 8 at 500 Hz and 60 Hz). A quotient outside 1 to
    // 512, and a mains frequency that is not positive, are brought to the nearest mean that the history can
    // hold: 1 lets every sample through unchanged.
    MovingAverageFilter(std::int32_t mainsHz, std::int32_t samplingRateHz, std::int32_t missingSample);

    std::int32_t FilterSample(std::int32_t sample) override;
    void FilterForward(std::int16_t* samples, std::int32_t count) override;
    void FilterBackward(std::int16_t* samples, std::int32_t count) override;

    std::int32_t Length() const { return length_; }

  private:
    std::int16_t FilterUnlessMissing(std::int16_t sample);
    void FillHistory(std::int16_t sample);

    std::array<std::int32_t, kLongestMean> history_{};  // newest first
    std::int32_t length_;
    std::int32_t sum_ = 0;  // of the newest length_ entries of the history
};

// Second-order Butterworth low-pass turned into a band-pass, fourth order overall, with pre-warped edges.
class BandPassFilter final : public SampleFilter {
  public:
    // Edges in Hz, in either order. A high edge at or above 0.49 of the sampling rate means no upper edge.
    // Edges that leave no band (equal, negative, both beyond half the sampling rate, or at a rate of 0) make
    // a filter whose output means nothing, but every value that it returns is still defined.
    BandPassFilter(double lowHz, double highHz, std::int32_t samplingRateHz, std::int32_t missingSample);

    // Inline for FilterZeroPhase.
    std::int32_t FilterSample(std::int32_t sample) override {
        return TruncateToInt32(Advance(state_, static_cast<double>(sample)));
    }
    void FilterForward(std::int16_t* samples, std::int32_t count) override;
    void FilterBackward(std::int16_t* samples, std::int32_t count) override;

  private:
    // The last four inputs and outputs, 1 the newest.
    struct State {
        double x1 = 0.0, x2 = 0.0, x3 = 0.0, x4 = 0.0;
        double y1 = 0.0, y2 = 0.0, y3 = 0.0, y4 = 0.0;
    };

    double Advance(State& s, double x) const {
        const double y = g_ * (x - 2.0 * s.x2 + s.x4) - a1_ * s.y1 - a2_ * s.y2 - a3_ * s.y3 - a4_ * s.y4;
        s.x4 = s.x3;
        s.x3 = s.x2;
        s.x2 = s.x1;
        s.x1 = x;
        s.y4 = s.y3;
        s.y3 = s.y2;
        s.y2 = s.y1;
        s.y1 = y;
        return y;
    }

    // Toward zero. What does not fit goes to the nearest end of the range, and no number to 0: the conversion
    // itself is undefined for both.
    static std::int32_t TruncateToInt32(double value) {
        if (std::fabs(value) < 2147483648.0) [[likely]] {
            return static_cast<std::int32_t>(value);
        }
        return value > 0.0 ? INT32_MAX : value < 0.0 ? INT32_MIN : 0;
    }

    State Settled(std::int16_t sample) const;
    std::int16_t FilterUnlessMissing(State& state, std::int16_t sample) const;

    double g_;
    double a4_, a3_, a2_, a1_;
    State state_;
};

// Runs one filter over the beat from the first sample to the last and back again without a reset in between,
// so that the phase shifts cancel: each transient stays at the end where its pass began. Results keep their
// low 16 bits. Named by its own type, the filter is called directly and not through its table.
template <class Filter>
void FilterZeroPhase(Filter& filter, std::span<std::int16_t> samples) {
    // On a copy whose address nobody knows, so that its state can live in registers.
    Filter local = filter;
    for (std::int16_t& sample : samples) {
        sample = static_cast<std::int16_t>(local.FilterSample(sample));
    }
    for (std::size_t i = samples.size(); i-- > 0;) {
        samples[i] = static_cast<std::int16_t>(local.FilterSample(samples[i]));
    }
    filter = local;
}

// The first derivative of a beat by a five-point slope.
class DerivativeTrace {
  public:
    // resolutionNv: nanovolts per sample unit. Computes every value at once; the samples are not kept. Null
    // samples, a count that memory does not hold: the object has no values and reads as 0 everywhere.
    DerivativeTrace(std::uint32_t samplingRateHz, std::uint32_t resolutionNv, const std::int16_t* samples,
                    std::uint32_t count);

    std::uint32_t Count() const { return count_; }

    // Ten times the rise in units per sample; 0 outside the beat.
    std::int32_t RawValue(std::uint32_t i) const { return values_ != nullptr && i < count_ ? values_[i] : 0; }

    // Thousandths of a microvolt per millisecond (1000 = 1 uV/ms); 0 outside the beat.
    std::int32_t SlopeValue(std::uint32_t i) const;

    // The same conversion for any value, and back. -1 where the result does not fit 32 bits, and back also
    // where the sampling rate or the resolution is 0 (Win32 MulDiv).
    std::int32_t SlopeFromRaw(std::int32_t raw) const;
    std::int32_t RawFromSlope(std::int32_t slope) const;

  private:
    std::int32_t Factor() const;
    void Compute(const std::int16_t* samples);

    std::uint32_t count_;
    std::uint32_t samplingRateHz_;
    std::uint32_t resolutionNv_;
    [[maybe_unused]] std::array<std::uint32_t, 4> reserved_{};
    std::unique_ptr<std::int32_t[]> values_;  // count_ values, or null
};

}  // namespace kx
