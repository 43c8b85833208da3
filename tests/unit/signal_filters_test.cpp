// The filters against references that share nothing with them: the analogue Butterworth response at the pre-warped frequency,
// the zero phase of a pass there and back, naive sums and a correlation.
#include "dialogs/marker_view/trace/signal_filters.h"

#include <complex>
#include <limits>
#include <numbers>
#include <random>
#include <type_traits>

#include "dialogs/marker_view/trace/filtered_lead.h"

namespace kx::test {
namespace {

using Complex = std::complex<double>;
using Samples = std::vector<std::int16_t>;

static_assert(!std::has_virtual_destructor_v<SampleFilter>);

constexpr auto kMissing = static_cast<std::int16_t>(kMissingSample);

Samples Noise(std::size_t count, int amplitude) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> value(-amplitude, amplitude);
    Samples samples(count);
    for (std::int16_t& sample : samples) {
        sample = static_cast<std::int16_t>(value(random));
    }
    return samples;
}

std::int32_t MeanOfLast(const std::vector<std::int32_t>& fed, std::int32_t length) {
    std::int64_t sum = 0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(length) && k < fed.size(); ++k) {
        sum += fed[fed.size() - 1 - k];
    }
    return static_cast<std::int32_t>(sum / length);
}

TEST(MovingAverageFilter, AveragesOnePeriodOfTheMains) {
    const struct {
        std::int32_t mains, rate, length;
    } rows[] = {{60, 500, 8},        {50, 500, 10}, {50, 25600, 512}, {50, 26000, 512},
                {1, INT32_MAX, 512}, {50, 49, 1},   {0, 500, 1},      {-1, INT32_MIN, 1}};
    for (const auto& row : rows) {
        MovingAverageFilter filter(row.mains, row.rate, kMissingSample);
        EXPECT_EQ(row.length, filter.Length()) << row.mains << " Hz of " << row.rate;
        std::vector<std::int32_t> fed;
        for (const std::int16_t sample : Noise(1200, 32767)) {
            fed.push_back(sample);
            ASSERT_EQ(MeanOfLast(fed, row.length), filter.FilterSample(sample)) << row.mains << " Hz of " << row.rate << ", " << fed.size();
        }
        for (int i = 0; i < 1100; ++i) {
            filter.FilterSample(i % 3 == 0 ? INT32_MIN : INT32_MAX);  // sums beyond its range
        }
        for (int i = 0; i < 512; ++i) {
            filter.FilterSample(9);
        }
        EXPECT_EQ(9, filter.FilterSample(9));
    }
}

TEST(MovingAverageFilter, FiltersAnArrayBothWaysAroundMissingSamples) {
    Samples samples = Noise(300, 3000);
    for (const std::size_t gap : {1u, 40u, 41u, 299u}) {
        samples[gap] = kMissing;
    }
    // The first sample fills the history, missing ones do not take part.
    const auto naive = [](Samples line) {
        std::vector<std::int32_t> fed(10, line.front());
        for (std::int16_t& sample : line) {
            if (sample != kMissing) {
                fed.push_back(sample);
                sample = static_cast<std::int16_t>(MeanOfLast(fed, 10));
            }
        }
        return line;
    };
    Samples forward = samples, backward = samples;
    MovingAverageFilter(50, 500, kMissingSample).FilterForward(forward.data(), 300);
    EXPECT_EQ(naive(samples), forward);
    MovingAverageFilter(50, 500, kMissingSample).FilterBackward(backward.data(), 300);
    EXPECT_EQ(naive(Samples(samples.rbegin(), samples.rend())), Samples(backward.rbegin(), backward.rend()));
}

struct Band {
    double low, high;
    std::int32_t rate;

    double Low() const { return std::tan(std::numbers::pi * low / rate); }
    double High() const { return std::tan(std::numbers::pi * high / rate); }
    // The analogue filter at the frequency that the bilinear transform makes of f.
    Complex Response(double f) const {
        const Complex s(0, std::tan(std::numbers::pi * f / rate));
        const Complex p = high < 0.49 * rate ? (s * s + Low() * High()) / ((High() - Low()) * s) : Low() / s;
        return 1.0 / (p * p + std::numbers::sqrt2 * p + 1.0);
    }
};

constexpr Band kBands[] = {{10, 40, 500}, {0.5, 40, 500}, {5, 15, 240},   {1, 100, 1000},
                           {20, 21, 500}, {10, 244, 500}, {10, 250, 500}, {0.05, 150, 1000}};

TEST(BandPassFilter, AnswersAnImpulseAsTheButterworthBandPassDoes) {
    for (const Band& band : kBands) {
        BandPassFilter filter(band.low, band.high, band.rate, kMissingSample), reversed(band.high, band.low, band.rate, kMissingSample);
        std::vector<double> response;
        for (int n = 0; n < 40000; ++n) {
            response.push_back(filter.FilterSample(n == 0 ? 1 << 30 : 0) / double{1 << 30});
            ASSERT_EQ(reversed.FilterSample(n == 0 ? 1 << 30 : 0) / double{1 << 30}, response.back()) << "its edges in the other order";
        }
        for (const double part : {0.002, 0.01, 0.03, 0.0412, 0.08, 0.1, 0.2, 0.35, 0.48}) {
            const Complex step = std::polar(1.0, -2 * std::numbers::pi * part);
            Complex sum = 0;
            for (std::size_t n = response.size(); n-- > 0;) {
                sum = sum * step + response[n];
            }
            EXPECT_NEAR(0.0, std::abs(sum - band.Response(part * band.rate)), 2e-4) << band.low << " to " << band.high << " Hz at " << part;
        }
    }
}

TEST(BandPassFilter, FiltersAnArrayBothWaysAroundMissingSamples) {
    for (const Band& band : {kBands[0], kBands[2]}) {
        Samples samples = Noise(400, 9000);
        samples[17] = samples[399] = kMissing;
        Samples forward = samples, backward(samples.rbegin(), samples.rend());
        BandPassFilter filter(band.low, band.high, band.rate, kMissingSample), single = filter;
        filter.FilterForward(forward.data(), 400);
        filter.FilterBackward(backward.data(), 400);
        EXPECT_EQ(forward, Samples(backward.rbegin(), backward.rend()));
        for (std::size_t i = 0; i < 400; ++i) {  // alike once the start is forgotten
            const std::int32_t filtered = samples[i] == kMissing ? kMissing : single.FilterSample(samples[i]);
            ASSERT_TRUE((i < 250 && samples[i] != kMissing) || std::abs(filtered - forward[i]) < 30) << band.low << " Hz, " << i;
        }
        Samples impulse(3001, 0);
        impulse[1500] = 30000;
        FilterZeroPhase(filter, impulse);
        EXPECT_GT(impulse[1500], 500);
        for (std::size_t i = 0; i <= 1500; ++i) {
            ASSERT_NEAR(impulse[1500 - i], impulse[1500 + i], 8) << band.low << " Hz, " << i;
        }
    }
}

// Nothing to expect of such filters but defined behaviour, which the sanitizers watch, and an end.
TEST(BandPassFilter, StaysDefinedWithoutABand) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), infinity = std::numeric_limits<double>::infinity();
    const Band rows[] = {
        {10, 10, 500},   {0, 0, 500},     {10, 40, 0},       {10, 40, -500}, {nan, 40, 500}, {10, nan, 500}, {infinity, infinity, 500},
        {-40, -10, 500}, {260, 400, 500}, {-1e300, 1e300, 1}};
    for (const Band& row : rows) {
        BandPassFilter filter(row.low, row.high, row.rate, kMissingSample);
        Samples samples(3000, 32767);
        FilterZeroPhase(filter, samples);
        filter.FilterForward(samples.data(), 3000);
        filter.FilterBackward(samples.data(), 3000);
        filter.FilterSample(INT32_MIN);
    }
    EXPECT_EQ(0, BandPassFilter(10, 10, 500, kMissingSample).FilterSample(1000)) << "what is no number reads as 0";
    std::int16_t guard = 77;
    MovingAverageFilter mean(50, 500, kMissingSample);
    for (const std::int32_t count : {0, -1, INT32_MIN}) {
        mean.FilterForward(&guard, count);
        mean.FilterBackward(nullptr, 5);
        BandPassFilter(10, 40, 500, kMissingSample).FilterBackward(&guard, count);
    }
    EXPECT_EQ(77, guard);
    EXPECT_EQ(1, mean.FilterSample(10)) << "its history is still empty";
}

TEST(FilteredLead, RunsEachFilterThereAndBackTheMainsFirst) {
    Samples beat = Noise(300, 500), expected = beat;
    const auto filtered = [&beat](std::int32_t count, std::int32_t rate, const SignalSettings& settings) {
        const auto result = FilteredLead(beat.data(), count, rate, settings);
        return result == nullptr ? Samples() : Samples(result.get(), result.get() + count);
    };
    MovingAverageFilter mains(60, 500, kMissingSample);
    BandPassFilter band(0.5, 40.0, 500, kMissingSample);
    for (SampleFilter* filter : {static_cast<SampleFilter*>(&mains), static_cast<SampleFilter*>(&band)}) {
        for (auto sample = expected.begin(); sample != expected.end(); ++sample) {
            *sample = static_cast<std::int16_t>(filter->FilterSample(*sample));
        }
        for (auto sample = expected.rbegin(); sample != expected.rend(); ++sample) {  // from where the way there ended
            *sample = static_cast<std::int16_t>(filter->FilterSample(*sample));
        }
    }
    EXPECT_EQ(filtered(300, 500, {true, 0.5, 40.0, 60}), expected);
    EXPECT_TRUE(filtered(300, 500, {}).empty() && filtered(300, 500, {false, 1.0, 16.0, -50}).empty() &&
                filtered(0, 500, {true, 1.0, 16.0, 50}).empty());
    EXPECT_EQ(FilteredLead(nullptr, 300, 500, {true, 1.0, 16.0, 50}), nullptr);
    for (const std::int32_t rate : {0, 1, 32000, INT32_MAX}) {
        EXPECT_EQ(filtered(300, rate, {true, -1e9, 1e9, 1}).size(), 300u) << rate;
    }
}

TEST(DerivativeTrace, CorrelatesWithAFivePointSlope) {
    const Samples samples = Noise(200, 32767);
    for (std::uint32_t count : {200u, 5u, 4u, 0u}) {
        const DerivativeTrace trace(500, 2440, samples.data(), count);
        for (std::uint32_t i = 0; i < count + 2; ++i) {
            std::int32_t sum = 0;
            for (int k = -2; k <= 2 && count >= 5 && i < count; ++k) {  // the first and the last two as their neighbours
                sum += k * samples[static_cast<std::size_t>(static_cast<int>(std::clamp(i, 2u, count - 3)) + k)];
            }
            ASSERT_EQ(sum, trace.RawValue(i)) << i << " of " << count;
        }
    }
    for (const DerivativeTrace& trace : {DerivativeTrace(500, 1000, nullptr, 9), DerivativeTrace(500, 1000, &kMissing, UINT32_MAX)}) {
        EXPECT_EQ(0, trace.RawValue(3) + trace.SlopeValue(UINT32_MAX));
    }
}

TEST(DerivativeTrace, TellsTheSlopeOfALineInMicrovoltsPerMillisecond) {
    const struct {
        std::int32_t rise;
        std::uint32_t rate, resolution;
        std::int32_t slope;  // thousandths of uV/ms
    } rows[] = {{1, 500, 1000, 500}, {-4, 500, 4880, -9760}, {3, 1000, 2440, 7320}, {1, 240, 1220, 293},
                {-1, 1, 500, -1},    {1, 1, 499, 0},         {7, 0, 1000, 0},       {1, 65536, 65536, 2147484}};
    for (const auto& row : rows) {
        Samples line;
        for (std::int32_t i = 0; i < 9; ++i) {
            line.push_back(static_cast<std::int16_t>(row.rise * i));
        }
        const DerivativeTrace trace(row.rate, row.resolution, line.data(), 9);
        EXPECT_EQ(row.slope, trace.SlopeValue(4)) << row.rise << " at " << row.rate << " x " << row.resolution;
        EXPECT_EQ(row.slope, trace.SlopeFromRaw(10 * row.rise));
    }
    EXPECT_EQ(200, DerivativeTrace(500, 1000, nullptr, 0).RawFromSlope(10000));
    EXPECT_EQ(-1, DerivativeTrace(0, 1000, nullptr, 0).RawFromSlope(10000));
}

}  // namespace
}  // namespace kx::test
