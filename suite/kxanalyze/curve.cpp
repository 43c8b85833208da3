#include "suite/kxanalyze/curve.h"

#include <algorithm>
#include <cmath>

namespace kx::analysis {
namespace {

constexpr int kQuietStretch = 14;

}  // namespace

void Sizes(const Trace& trace, Trace& sizes) {
    sizes.resize(trace.size());
    std::transform(trace.begin(), trace.end(), sizes.begin(), [](double value) { return std::fabs(value); });
}

Place LargestPlace(const Trace& curve, Place from, Place to) {
    from = std::clamp(from, 0, static_cast<Place>(curve.size()) - 1);
    const auto part = Between(curve, from, to);
    return from + static_cast<Place>(std::max_element(part.begin(), part.end()) - part.begin());
}

Place LastAbove(const Trace& curve, Place from, int direction, double threshold, int quiet, Place end) {
    Place last = from;
    for (Place i = from; (end - i) * direction >= 0 && (i - last) * direction < quiet; i += direction) {
        if (At(curve, i) > threshold) {
            last = i;
        }
    }
    return last;
}

Line FindLine(const Trace& curve, Place from, Place to) {
    to = std::min(to, static_cast<Place>(curve.size()));
    from = std::clamp(from, 0, std::max(0, to - kQuietStretch));
    double sum = 0;
    for (const double value : Between(curve, from, from + kQuietStretch)) {
        sum += value;
    }
    double least = sum;
    Place place = from;
    for (Place i = from + 1; i + kQuietStretch <= to; ++i) {
        sum += At(curve, i + kQuietStretch - 1) - At(curve, i - 1);
        if (sum < least) {
            least = sum;
            place = i;
        }
    }
    return {place + kQuietStretch / 2, std::max(0.0, least / kQuietStretch)};
}

Place Rounded(double ms) {
    return std::max(1, static_cast<Place>(std::lround(ms)));
}

}  // namespace kx::analysis
