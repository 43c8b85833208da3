// The filters against references that share nothing with them: the analogue Butterworth response at the pre-warped frequency,
// the zero phase of a pass there and back, naive sums and a correlation.
#include "dialogs/marker_view/trace/signal_filters.h"

#include <complex>
#include <numbers>
#include <random>

namespace kx::test {
namespace {

using Complex = std::complex<double>;
using Samples = std::vector<std::int16_t>;

constexpr auto kMissing = static_cast<std::int16_t>(kMissingSample);

Samples Noise(std::size_t count, int amplitude) {
    std::mt19937 random(7);
    Samples samples(count);
    std::ranges::generate(samples, [&] {
        return static_cast<std::int16_t>(static_cast<int>(random() % (2u * static_cast<unsigned>(amplitude) + 1)) - amplitude);
    });
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
    } rows[] = {{60, 500, 8}, {50, 25600, 512}, {1, INT32_MAX, 512}, {50, 49, 1}, {0, 500, 1}, {-1, INT32_MIN, 1}};
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
    }
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

TEST(BandPassFilter, AnswersAnImpulseAsTheButterworthBandPassDoes) {
    for (const Band& band :
         {Band{10, 40, 500}, {0.5, 40, 500}, {5, 15, 240}, {20, 21, 500}, {10, 244, 500}, {10, 250, 500}, {0.05, 150, 1000}}) {
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

// The first sample fills the history, missing ones do not take part; the band-pass is exact once its start is forgotten.
TEST(SampleFilter, FiltersAnArrayBothWaysAroundMissingSamples) {
    const auto expectBothWays = [](auto filter, std::size_t from, int tolerance) {
        Samples samples = Noise(400, 9000);
        samples[1] = samples[40] = samples[41] = samples[399] = kMissing;
        auto single = filter, back = filter;
        Samples forward = samples, backward(samples.rbegin(), samples.rend());
        filter.FilterForward(forward.data(), 400);
        back.FilterBackward(backward.data(), 400);
        EXPECT_EQ(forward, Samples(backward.rbegin(), backward.rend()));
        for (int i = 0; i < 10; ++i) {
            single.FilterSample(samples[0]);
        }
        for (std::size_t i = 0; i < 400; ++i) {
            const std::int32_t filtered = samples[i] == kMissing ? kMissing : single.FilterSample(samples[i]);
            ASSERT_TRUE((i < from && samples[i] != kMissing) || std::abs(filtered - forward[i]) <= tolerance) << i;
        }
    };
    expectBothWays(MovingAverageFilter(50, 500, kMissingSample), 0, 0);
    expectBothWays(BandPassFilter(10, 40, 500, kMissingSample), 250, 30);
}

TEST(DerivativeTrace, CorrelatesWithAFivePointSlopeInMicrovoltsPerMillisecond) {
    const Samples samples = Noise(200, 32767);
    for (std::uint32_t count : {200u, 5u, 4u, 0u}) {
        const DerivativeTrace trace(500, 2440, samples.data(), count);
        for (std::uint32_t i = 0; i < count + 2; ++i) {
            std::int32_t sum = 0;
            for (int k = -2; k <= 2 && count >= 5 && i < count; ++k) {  // the first and the last two as their neighbours
                sum += k * samples[static_cast<std::size_t>(static_cast<int>(std::clamp(i, 2u, count - 3)) + k)];
            }
            ASSERT_TRUE(sum == trace.RawValue(i) && trace.SlopeFromRaw(sum) == trace.SlopeValue(i)) << i << " of " << count;
        }
    }
    EXPECT_EQ(0, DerivativeTrace(500, 1000, &kMissing, UINT32_MAX).RawValue(3));
    // Of a line, in thousandths of uV/ms.
    const auto slope = [](std::uint32_t rate, std::uint32_t resolution, std::int32_t rise) {
        return DerivativeTrace(rate, resolution, nullptr, 0).SlopeFromRaw(10 * rise);
    };
    EXPECT_TRUE(slope(500, 1000, 1) == 500 && slope(500, 4880, -4) == -9760 && slope(240, 1220, 1) == 293 && slope(1, 500, -1) == -1);
    EXPECT_TRUE(slope(0, 1000, 7) == 0 && slope(65536, 65536, 1) == 2147484);
    EXPECT_EQ(200, DerivativeTrace(500, 1000, nullptr, 0).RawFromSlope(10000));
    EXPECT_EQ(-1, DerivativeTrace(0, 1000, nullptr, 0).RawFromSlope(10000));
}

}  // namespace
}  // namespace kx::test
