// Looking for a wave of known shape in all leads at once.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "host/recording/atrial_signal.h"

namespace kx::recording {

// The length of a shape, 128 ms at kAtrialRate: a P wave.
inline constexpr std::ptrdiff_t kShapeSize = 32;

using LeadScales = std::array<float, kLeadCount>;

// A wave in all leads, each about its own straight line and divided by the lead's scale.
using WaveShape = std::array<std::array<float, kShapeSize>, kLeadCount>;

struct WaveMatch {
    std::ptrdiff_t first = 0;  // where the wave's window begins
    double correlation = 0;
    double gain = 0;  // its size to that of the shape
};

struct MatchLimits {
    double leastCorrelation = 0;
    double leastGain = 0;
    double largestGain = 0;
};

// Searches one residual again and again.
class WaveSearch {
  public:
    // scales: of each lead, > 0, e.g. its noise in microvolts. The residual must outlive the search.
    WaveSearch(const Residual& residual, const LeadScales& scales);

    WaveShape ShapeAt(std::ptrdiff_t first) const;
    // The median over the windows, at least one.
    WaveShape MedianShape(const std::vector<WaveMatch>& matches) const;
    // The best ones that are at least 140 ms apart, in order of time. Windows that are not valid are passed
    // over.
    std::vector<WaveMatch> Find(const WaveShape& shape, const MatchLimits& limits) const;
    // Begins of the windows that hold most, the largest first, at least 160 ms apart.
    Places LargestWindows(std::size_t most) const;

  private:
    bool IsValid(std::ptrdiff_t first) const { return energy_[static_cast<std::size_t>(first)] > 0; }

    const Residual& residual_;
    LeadScales scales_;
    std::vector<double> energy_;  // of the window that begins there, about its straight lines; 0: not valid
};

}  // namespace kx::recording
