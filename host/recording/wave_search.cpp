#include "host/recording/wave_search.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kx::recording {

namespace {

constexpr std::ptrdiff_t kApart = ToAtrialSamples(140);
constexpr std::ptrdiff_t kWindowsApart = ToAtrialSamples(160);
constexpr double kValidPart = 0.85;  // of a window

// The window's places from -1 to 1.
float Ramp(std::ptrdiff_t k) {
    return 2 * static_cast<float>(k) / static_cast<float>(kShapeSize - 1) - 1;
}

// Subtracts the straight line that fits best.
void RemoveLine(std::array<float, kShapeSize>& wave) {
    float sum = 0;
    float moment = 0;
    float square = 0;
    for (std::ptrdiff_t k = 0; k < kShapeSize; ++k) {
        sum += wave[static_cast<std::size_t>(k)];
        moment += wave[static_cast<std::size_t>(k)] * Ramp(k);
        square += Ramp(k) * Ramp(k);
    }
    for (std::ptrdiff_t k = 0; k < kShapeSize; ++k) {
        wave[static_cast<std::size_t>(k)] -= sum / static_cast<float>(kShapeSize) + moment / square * Ramp(k);
    }
}

double EnergyOf(const WaveShape& shape) {
    double energy = 0;
    for (const auto& wave : shape) {
        for (const float value : wave) {
            energy += double{value} * double{value};
        }
    }
    return energy;
}

}  // namespace

WaveSearch::WaveSearch(const Residual& residual, const LeadScales& scales)
    : residual_(residual), scales_(scales) {
    const auto count = static_cast<std::ptrdiff_t>(residual.valid.size());
    energy_.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, count - kShapeSize + 1)));
    for (std::size_t i = 0; i < energy_.size(); ++i) {
        const auto first = residual.valid.begin() + static_cast<std::ptrdiff_t>(i);
        const auto valid = std::count(first, first + kShapeSize, true);
        if (static_cast<double>(valid) > kValidPart * kShapeSize) {
            energy_[i] = EnergyOf(ShapeAt(static_cast<std::ptrdiff_t>(i)));
        }
    }
}

WaveShape WaveSearch::ShapeAt(std::ptrdiff_t first) const {
    WaveShape shape;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t k = 0; k < kShapeSize; ++k) {
            shape[lead][k] = residual_.leads[lead][static_cast<std::size_t>(first) + k] / scales_[lead];
        }
        RemoveLine(shape[lead]);
    }
    return shape;
}

WaveShape WaveSearch::MedianShape(const std::vector<WaveMatch>& matches) const {
    std::vector<WaveShape> shapes;
    shapes.reserve(matches.size());
    for (const WaveMatch& match : matches) {
        shapes.push_back(ShapeAt(match.first));
    }
    WaveShape median;
    std::vector<float> values(shapes.size());
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t k = 0; k < kShapeSize; ++k) {
            std::transform(shapes.begin(), shapes.end(), values.begin(),
                           [&](const WaveShape& shape) { return shape[lead][k]; });
            median[lead][k] = static_cast<float>(Median(values));
        }
        RemoveLine(median[lead]);
    }
    return median;
}

std::vector<WaveMatch> WaveSearch::Find(const WaveShape& shape, const MatchLimits& limits) const {
    const double energy = EnergyOf(shape);
    std::vector<WaveMatch> candidates;
    for (std::size_t i = 0; i < energy_.size() && energy > 0; ++i) {
        if (energy_[i] <= 0) {
            continue;
        }
        // The shape has neither level nor slope, so the window's own do not count.
        double product = 0;
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            const float* samples = residual_.leads[lead].data() + i;
            const float part = std::inner_product(shape[lead].begin(), shape[lead].end(), samples, 0.0f);
            product += double{part / scales_[lead]};
        }
        const WaveMatch match{static_cast<std::ptrdiff_t>(i), product / std::sqrt(energy * energy_[i]),
                              product / energy};
        if (match.correlation >= limits.leastCorrelation && match.gain >= limits.leastGain &&
            match.gain <= limits.largestGain) {
            candidates.push_back(match);
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const WaveMatch& a, const WaveMatch& b) { return a.correlation > b.correlation; });
    std::vector<WaveMatch> matches;
    for (const WaveMatch& candidate : candidates) {
        const bool isApart = std::all_of(matches.begin(), matches.end(), [&](const WaveMatch& match) {
            return std::abs(match.first - candidate.first) > kApart;
        });
        if (isApart) {
            matches.push_back(candidate);
        }
    }
    std::sort(matches.begin(), matches.end(),
              [](const WaveMatch& a, const WaveMatch& b) { return a.first < b.first; });
    return matches;
}

Places WaveSearch::LargestWindows(std::size_t most) const {
    Places order(energy_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](std::ptrdiff_t a, std::ptrdiff_t b) {
        return energy_[static_cast<std::size_t>(a)] > energy_[static_cast<std::size_t>(b)];
    });
    Places windows;
    for (const std::ptrdiff_t first : order) {
        if (windows.size() == most || !IsValid(first)) {
            break;
        }
        if (std::all_of(windows.begin(), windows.end(),
                        [first](std::ptrdiff_t other) { return std::abs(other - first) > kWindowsApart; })) {
            windows.push_back(first);
        }
    }
    return windows;
}

}  // namespace kx::recording
