#include "host/recording/signal_math.h"

#include <algorithm>

namespace kx::recording {

namespace {

// Running sums: the sum of [a, b) is sums[b] - sums[a].
std::vector<double> RunningSums(const Trace& trace) {
    std::vector<double> sums(trace.size() + 1);
    for (std::size_t i = 0; i < trace.size(); ++i) {
        sums[i + 1] = sums[i] + double{trace[i]};
    }
    return sums;
}

}  // namespace

Trace MovingMean(const Trace& trace, std::size_t width) {
    const std::vector<double> sums = RunningSums(trace);
    Trace mean(trace.size());
    for (std::size_t i = 0; i < trace.size(); ++i) {
        const std::size_t first = i - std::min(i, width / 2);
        const std::size_t end = std::min(trace.size(), i + (width + 1) / 2);
        mean[i] = static_cast<float>((sums[end] - sums[first]) / static_cast<double>(end - first));
    }
    return mean;
}

Trace BandSlope(const Trace& trace) {
    constexpr auto kSide = static_cast<std::size_t>(ToSamples(20));
    const std::vector<double> sums = RunningSums(trace);
    Trace slope(trace.size());
    for (std::size_t i = kSide; i + kSide <= trace.size(); ++i) {
        const double after = sums[i + kSide] - sums[i];
        const double before = sums[i] - sums[i - kSide];
        slope[i] = static_cast<float>((after - before) / static_cast<double>(kSide));
    }
    return slope;
}

double Median(std::vector<float>& values) {
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0) {
        return *middle;
    }
    return (double{*middle} + double{*std::max_element(values.begin(), middle)}) / 2;
}

}  // namespace kx::recording
