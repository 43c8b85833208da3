// The filters against references that share nothing with them: the analogue Butterworth response at the
// pre-warped frequency, poles found by complex arithmetic, naive sums and a correlation.
#include "dialogs/marker_view/trace/signal_filters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <limits>
#include <numbers>
#include <random>
#include <type_traits>
#include <vector>

namespace {

using kx::BandPassFilter;
using kx::DerivativeTrace;
using kx::kMissingSample;
using kx::MovingAverageFilter;
using Complex = std::complex<double>;
using Samples = std::vector<std::int16_t>;

static_assert(!std::has_virtual_destructor_v<kx::SampleFilter>);

constexpr std::int16_t kMissing = static_cast<std::int16_t>(kMissingSample);

Samples Noise(std::size_t count, unsigned seed, std::int16_t amplitude) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> value(-amplitude, amplitude);
    Samples samples(count);
    for (std::int16_t& sample : samples) {
        sample = static_cast<std::int16_t>(value(random));
    }
    return samples;
}

// ---- moving average

std::int32_t MeanOfLast(const std::vector<std::int32_t>& fed, std::int32_t length) {
    std::int64_t sum = 0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(length) && k < fed.size(); ++k) {
        sum += fed[fed.size() - 1 - k];
    }
    return static_cast<std::int32_t>(sum / length);
}

TEST(MovingAverageFilter, AveragesOnePeriodOfTheMains) {
    struct Row {
        std::int32_t mains, rate, length;
    };
    for (const Row row : {Row{60, 500, 8}, Row{50, 500, 10}, Row{50, 240, 4}, Row{60, 1000, 16}, Row{50, 25600, 512}, Row{50, 26000, 512},
                          Row{1, INT32_MAX, 512}, Row{50, 49, 1}, Row{50, 0, 1}, Row{0, 500, 1}, Row{-1, INT32_MIN, 1}, Row{50, -500, 1}}) {
        MovingAverageFilter filter(row.mains, row.rate, kMissingSample);
        EXPECT_EQ(row.length, filter.Length()) << row.mains << " Hz of " << row.rate;
        std::vector<std::int32_t> fed;
        for (const std::int16_t sample : Noise(1200, 7, 32767)) {
            fed.push_back(sample);
            ASSERT_EQ(MeanOfLast(fed, row.length), filter.FilterSample(sample))
                << row.mains << " Hz of " << row.rate << ", sample " << fed.size();
        }
    }
}

TEST(MovingAverageFilter, SurvivesSumsBeyondItsRange) {
    MovingAverageFilter filter(50, 25600, kMissingSample);
    for (int i = 0; i < 1100; ++i) {
        filter.FilterSample(i % 3 == 0 ? INT32_MIN : INT32_MAX);
    }
    for (int i = 0; i < 512; ++i) {
        filter.FilterSample(9);
    }
    EXPECT_EQ(9, filter.FilterSample(9));
}

// What the array form does, said plainly: the first sample fills the history, missing ones do not take part.
Samples NaiveMean(Samples samples, std::int32_t length) {
    std::vector<std::int32_t> fed(static_cast<std::size_t>(length), samples.front());
    for (std::int16_t& sample : samples) {
        if (sample != kMissing) {
            fed.push_back(sample);
            sample = static_cast<std::int16_t>(MeanOfLast(fed, length));
        }
    }
    return samples;
}

TEST(MovingAverageFilter, FiltersAnArrayBothWaysAroundMissingSamples) {
    Samples samples = Noise(300, 3, 3000);
    for (const std::size_t gap : {1u, 40u, 41u, 42u, 299u}) {
        samples[gap] = kMissing;
    }
    Samples forward = samples;
    MovingAverageFilter(50, 500, kMissingSample).FilterForward(forward.data(), 300);
    EXPECT_EQ(NaiveMean(samples, 10), forward);

    Samples backward = samples;
    MovingAverageFilter(50, 500, kMissingSample).FilterBackward(backward.data(), 300);
    EXPECT_EQ(NaiveMean(Samples(samples.rbegin(), samples.rend()), 10), Samples(backward.rbegin(), backward.rend()));
}

TEST(MovingAverageFilter, KeepsItsFieldsWhereTheyBelong) {
    if (sizeof(void*) != 4) {
        GTEST_SUCCEED();
        return;
    }
    MovingAverageFilter filter(50, 500, -7);
    filter.FilterSample(3);
    filter.FilterSample(5);
    std::int32_t words[sizeof filter / 4];
    std::memcpy(words, static_cast<const void*>(&filter), sizeof filter);
    EXPECT_EQ(-7, words[1]);
    EXPECT_EQ(5, words[2]);
    EXPECT_EQ(3, words[3]);
    EXPECT_EQ(10, words[514]);
    EXPECT_EQ(8, words[515]);
}

// ---- band-pass

struct Band {
    double low, high;
    std::int32_t rate;

    double Low() const { return std::tan(std::numbers::pi * low / rate); }
    double High() const { return std::tan(std::numbers::pi * high / rate); }
    bool HasUpperEdge() const { return high < 0.49 * rate; }
};

constexpr Band kBands[] = {{10, 40, 500},  {0.5, 40, 500}, {5, 15, 240},    {1, 100, 1000},  {20, 21, 500},
                           {10, 244, 500}, {10, 250, 500}, {0.5, 250, 500}, {40, 1000, 500}, {0.05, 150, 1000}};

// The analogue filter at the frequency that the bilinear transform makes of f.
Complex AnalogResponse(const Band& band, double f) {
    const Complex s(0, std::tan(std::numbers::pi * f / band.rate));
    const Complex p = band.HasUpperEdge() ? (s * s + band.Low() * band.High()) / ((band.High() - band.Low()) * s) : band.Low() / s;
    return 1.0 / (p * p + std::numbers::sqrt2 * p + 1.0);
}

TEST(BandPassFilter, AnswersAnImpulseAsTheButterworthBandPassDoes) {
    for (const Band& band : kBands) {
        constexpr double kImpulse = 1 << 30;
        BandPassFilter filter(band.low, band.high, band.rate, kMissingSample);
        std::vector<double> response;
        for (int n = 0; n < 40000; ++n) {
            response.push_back(filter.FilterSample(n == 0 ? 1 << 30 : 0) / kImpulse);
        }
        for (const double part : {0.002, 0.01, 0.03, 0.0412, 0.08, 0.1, 0.2, 0.35, 0.48}) {
            const double f = part * band.rate;
            const Complex step = std::polar(1.0, -2 * std::numbers::pi * part);
            Complex sum = 0;
            for (std::size_t n = response.size(); n-- > 0;) {
                sum = sum * step + response[n];
            }
            EXPECT_NEAR(0.0, std::abs(sum - AnalogResponse(band, f)), 2e-4)
                << band.low << " to " << band.high << " Hz of " << band.rate << " at " << f << " Hz";
        }
    }
}

// The recurrence from poles that complex arithmetic finds, its gain set at the centre of the band.
class ReferenceBandPass {
  public:
    explicit ReferenceBandPass(const Band& band) {
        const double width = band.High() - band.Low();
        const double centre = std::sqrt(band.Low() * band.High());
        const Complex prototype = std::polar(1.0, 3 * std::numbers::pi / 4) * width;
        const Complex root = std::sqrt(prototype * prototype - 4 * centre * centre);
        const Complex centreZ = (1.0 + Complex(0, centre)) / (1.0 - Complex(0, centre));
        Complex atCentre = 1;
        std::vector<Complex> denominator{1};
        for (const Complex s : {(prototype + root) / 2.0, (prototype - root) / 2.0}) {
            const Complex z = (1.0 + s) / (1.0 - s);
            for (const Complex pole : {z, std::conj(z)}) {
                denominator.push_back(0);
                for (std::size_t i = denominator.size() - 1; i > 0; --i) {
                    denominator[i] -= pole * denominator[i - 1];
                }
                atCentre *= centreZ / (centreZ - pole);
            }
        }
        for (std::size_t i = 0; i < 4; ++i) {
            a_[i] = denominator[i + 1].real();
        }
        const Complex zeros = 1.0 - 1.0 / (centreZ * centreZ);
        gain_ = 1.0 / std::abs(zeros * zeros * atCentre);
    }

    void SettleOn(double value) {
        x_ = y_ = {value, value, value, value};
        for (int i = 0; i < 32; ++i) {
            Step(value);
        }
    }

    double Step(double x) {
        double y = gain_ * (x - 2 * x_[1] + x_[3]);
        for (std::size_t i = 0; i < 4; ++i) {
            y -= a_[i] * y_[i];
        }
        x_ = {x, x_[0], x_[1], x_[2]};
        y_ = {y, y_[0], y_[1], y_[2]};
        return y;
    }

  private:
    std::array<double, 4> a_{}, x_{}, y_{};
    double gain_ = 0;
};

TEST(BandPassFilter, FiltersAnArrayBothWaysAroundMissingSamples) {
    for (const Band& band : {kBands[0], kBands[2], kBands[3]}) {
        Samples samples = Noise(400, 11, 9000);
        samples[17] = samples[399] = kMissing;
        for (const bool backward : {false, true}) {
            Samples filtered = samples;
            BandPassFilter filter(band.low, band.high, band.rate, kMissingSample);
            backward ? filter.FilterBackward(filtered.data(), 400) : filter.FilterForward(filtered.data(), 400);
            ReferenceBandPass reference(band);
            reference.SettleOn(backward ? samples[399] : samples[0]);
            for (std::size_t n = 0; n < 400; ++n) {
                const std::size_t i = backward ? 399 - n : n;
                const double expected = samples[i] == kMissing ? kMissing : reference.Step(samples[i]);
                ASSERT_LE(std::abs(filtered[i] - expected), samples[i] == kMissing ? 0.0 : 1.0)
                    << band.low << " Hz, backward " << backward << ", sample " << i;
            }
        }
    }
}

TEST(BandPassFilter, TruncatesTowardZero) {
    BandPassFilter filter(kBands[0].low, kBands[0].high, kBands[0].rate, kMissingSample);
    ReferenceBandPass reference(kBands[0]);
    for (const std::int16_t sample : Noise(2000, 5, 500)) {
        const double exact = reference.Step(sample);
        const std::int32_t result = filter.FilterSample(sample);
        if (std::abs(exact - std::nearbyint(exact)) > 1e-6) {
            ASSERT_EQ(static_cast<std::int32_t>(exact), result) << exact;
        }
    }
}

TEST(BandPassFilter, TakesItsEdgesInEitherOrder) {
    BandPassFilter ordered(10, 40, 500, kMissingSample);
    BandPassFilter reversed(40, 10, 500, kMissingSample);
    for (const std::int16_t sample : Noise(500, 2, 20000)) {
        ASSERT_EQ(ordered.FilterSample(sample), reversed.FilterSample(sample));
    }
}

// Nothing to expect of such filters but defined behaviour, which the sanitizers watch, and an end.
TEST(BandPassFilter, StaysDefinedWithoutABand) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    struct Row {
        double low, high;
        std::int32_t rate;
    };
    for (const Row row : {Row{10, 10, 500}, Row{0, 0, 500}, Row{10, 40, 0}, Row{10, 40, -500}, Row{nan, 40, 500}, Row{10, nan, 500},
                          Row{infinity, infinity, 500}, Row{-40, -10, 500}, Row{260, 400, 500}, Row{-1e300, 1e300, 1}}) {
        BandPassFilter filter(row.low, row.high, row.rate, kMissingSample);
        Samples samples(3000, 32767);
        kx::FilterZeroPhase(filter, samples);
        filter.FilterForward(samples.data(), 3000);
        filter.FilterBackward(samples.data(), 3000);
        filter.FilterSample(INT32_MIN);
        EXPECT_EQ(3000u, samples.size());
    }
    BandPassFilter noBand(10, 10, 500, kMissingSample);
    EXPECT_EQ(0, noBand.FilterSample(1000)) << "what is no number reads as 0";
}

// ---- both

TEST(FilterZeroPhase, SpreadsAnImpulseAlikeToBothSides) {
    constexpr std::size_t kCentre = 1500;
    for (const Band& band : {kBands[0], kBands[2], kBands[6]}) {
        Samples samples(2 * kCentre + 1, 0);
        samples[kCentre] = 30000;
        BandPassFilter filter(band.low, band.high, band.rate, kMissingSample);
        kx::FilterZeroPhase(filter, samples);
        EXPECT_GT(samples[kCentre], 500);
        for (std::size_t i = 0; i <= kCentre; ++i) {
            ASSERT_NEAR(samples[kCentre - i], samples[kCentre + i], 8) << band.low << " Hz, " << i;
        }
    }
}

TEST(FilterZeroPhase, StartsTheWayBackFromWhereTheWayThereEnded) {
    Samples samples{10, 20, 30, 40};
    MovingAverageFilter filter(50, 100, kMissingSample);  // two samples
    kx::FilterZeroPhase(filter, samples);
    // There: 5 15 25 35, with 40 and 30 in the history. Back: (35+40)/2, (25+35)/2, (15+25)/2, (5+15)/2.
    EXPECT_EQ((Samples{10, 20, 30, 37}), samples);
}

TEST(SampleFilter, LeavesAnEmptyArrayAlone) {
    BandPassFilter bandPass(10, 40, 500, kMissingSample);
    MovingAverageFilter mean(50, 500, kMissingSample);
    std::int16_t guard = 77;
    for (kx::SampleFilter* filter : {static_cast<kx::SampleFilter*>(&bandPass), static_cast<kx::SampleFilter*>(&mean)}) {
        for (const std::int32_t count : {0, -1, INT32_MIN}) {
            filter->FilterForward(&guard, count);
            filter->FilterBackward(&guard, count);
        }
        filter->FilterForward(nullptr, 5);
        filter->FilterBackward(nullptr, 5);
    }
    EXPECT_EQ(77, guard);
    EXPECT_EQ(1, mean.FilterSample(10)) << "its history is still empty";
}

// ---- derivative

TEST(DerivativeTrace, CorrelatesWithAFivePointSlope) {
    Samples samples = Noise(200, 9, 32767);
    samples[50] = samples[51] = -32768;
    const DerivativeTrace trace(500, 2440, samples.data(), 200);
    for (std::uint32_t i = 2; i + 2 < 200; ++i) {
        std::int32_t sum = 0;
        for (int k = -2; k <= 2; ++k) {
            sum += k * samples[static_cast<std::size_t>(static_cast<int>(i) + k)];
        }
        ASSERT_EQ(sum, trace.RawValue(i)) << i;
    }
    EXPECT_EQ(trace.RawValue(2), trace.RawValue(0));
    EXPECT_EQ(trace.RawValue(2), trace.RawValue(1));
    EXPECT_EQ(trace.RawValue(197), trace.RawValue(198));
    EXPECT_EQ(trace.RawValue(197), trace.RawValue(199));
    EXPECT_EQ(0, trace.RawValue(200));
    EXPECT_EQ(0, trace.SlopeValue(UINT32_MAX));
}

TEST(DerivativeTrace, TellsTheSlopeOfALineInMicrovoltsPerMillisecond) {
    struct Row {
        std::int32_t rise;
        std::uint32_t rate, resolution;
        std::int32_t slope;  // thousandths of uV/ms
    };
    for (const Row row : {Row{1, 500, 1000, 500}, Row{-4, 500, 4880, -9760}, Row{3, 1000, 2440, 7320}, Row{1, 240, 1220, 293},  // 292.8
                          Row{-1, 1, 500, -1},  // -0.5, away from zero
                          Row{1, 1, 499, 0}, Row{7, 0, 1000, 0}, Row{1, 65536, 65536, 2147484}}) {
        Samples line;
        for (std::int32_t i = 0; i < 9; ++i) {
            line.push_back(static_cast<std::int16_t>(row.rise * i));
        }
        const DerivativeTrace trace(row.rate, row.resolution, line.data(), 9);
        for (std::uint32_t i = 0; i < 9; ++i) {
            ASSERT_EQ(10 * row.rise, trace.RawValue(i)) << i;
            ASSERT_EQ(row.slope, trace.SlopeValue(i)) << row.rise << " at " << row.rate << " x " << row.resolution;
        }
        EXPECT_EQ(row.slope, trace.SlopeFromRaw(10 * row.rise));
    }
    const DerivativeTrace trace(500, 1000, nullptr, 0);
    EXPECT_EQ(200, trace.RawFromSlope(10000));
    EXPECT_EQ(-1, DerivativeTrace(0, 1000, nullptr, 0).RawFromSlope(10000));
}

TEST(DerivativeTrace, HasNoSlopeWithoutFivePoints) {
    const Samples samples{100, -200, 300, -400, 500};
    for (std::uint32_t count = 0; count < 5; ++count) {
        const DerivativeTrace trace(500, 1000, samples.data(), count);
        for (std::uint32_t i = 0; i < 6; ++i) {
            EXPECT_EQ(0, trace.RawValue(i)) << count << ", " << i;
        }
    }
    const DerivativeTrace five(500, 1000, samples.data(), 5);
    for (std::uint32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(-400 + 200 + 2 * (500 - 100), five.RawValue(i)) << i;
    }
}

TEST(DerivativeTrace, ReadsAsZeroWithoutItsValues) {
    for (const DerivativeTrace& trace : {DerivativeTrace(500, 1000, nullptr, 9), DerivativeTrace(500, 1000, &kMissing, UINT32_MAX)}) {
        EXPECT_EQ(0, trace.RawValue(3));
        EXPECT_EQ(0, trace.SlopeValue(3));
    }
}

}  // namespace
