// The band-pass over a median beat of 1200 ms at 1000 samples a second, sample by sample, as the marker view
// runs it.
#include <cstdint>
#include <span>
#include <vector>

#include "bench/ratio.h"
#include "dialogs/marker_view/trace/signal_filters.h"

namespace {

constexpr std::size_t kSamples = 1200;

// The recurrence and nothing else, its state in local variables: to the end of the beat and back.
void PlainRecurrence(const double* coefficients, std::int16_t* samples) {
    const double g = coefficients[0], a1 = coefficients[1], a2 = coefficients[2], a3 = coefficients[3],
                 a4 = coefficients[4];
    double x1 = 0, x2 = 0, x3 = 0, x4 = 0, y1 = 0, y2 = 0, y3 = 0, y4 = 0;
    const auto step = [&](std::int16_t& sample) {
        const double x = sample;
        const double y = g * (x - 2.0 * x2 + x4) - a1 * y1 - a2 * y2 - a3 * y3 - a4 * y4;
        x4 = x3;
        x3 = x2;
        x2 = x1;
        x1 = x;
        y4 = y3;
        y3 = y2;
        y2 = y1;
        y1 = y;
        sample = static_cast<std::int16_t>(static_cast<std::int32_t>(y));
    };
    for (std::size_t i = 0; i < kSamples; ++i) {
        step(samples[i]);
    }
    for (std::size_t i = kSamples; i-- > 0;) {
        step(samples[i]);
    }
}

}  // namespace

int main() {
    std::vector<std::int16_t> beat(kSamples);
    for (std::size_t i = 0; i < kSamples; ++i) {
        beat[i] = static_cast<std::int16_t>(static_cast<int>(i * 7919 % 2001) - 1000);
    }
    // 10 to 40 Hz at 1000 Hz, shortened.
    const double coefficients[] = {0.0077, -3.7046, 5.1787, -3.2405, 0.7667};
    std::vector<std::int16_t> work;
    const kx::BandPassFilter built(10, 40, 1000, kx::kMissingSample);
    kx::bench::Run(
        "band_pass_step", 1.05,
        [&] {
            work = beat;
            PlainRecurrence(kx::bench::Fresh(coefficients), kx::bench::Fresh(work.data()));
        },
        [&] {
            work = beat;
            kx::BandPassFilter filter = built;
            kx::FilterZeroPhase(filter, std::span(kx::bench::Fresh(work.data()), kSamples));
        });
    return 0;
}
