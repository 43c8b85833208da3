// Removal of baseline wander by a spline through isoelectric points.
#pragma once

#include <cstddef>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// Subtracts from every lead a natural cubic spline through its mean levels over the 20 ms (one period of the
// mains) before each place, samples in ascending order; before the first and after the last the level there.
// Nothing happens without places.
void RemoveBaseline(Recording& recording, const std::vector<std::ptrdiff_t>& places);

// Subtracts from every lead what its beats do not explain and what is slower than about 0.8 Hz: the lead less
// the median beat at each place, smoothed. It finds the wander between the places that RemoveBaseline knows,
// and leaves the waves alone, which are in the median beat. Where a beat is not `dominant`, or none is near,
// the wander is a straight line. places: ascending; nothing happens with less than three dominant beats.
void RemoveWander(Recording& recording, const std::vector<std::ptrdiff_t>& places,
                  const std::vector<bool>& dominant);

// Values at 0, 1, ... count - 1 of the natural cubic spline through knots (ascending, distinct); constant
// outside.
std::vector<double> NaturalSpline(const std::vector<double>& knots, const std::vector<double>& values,
                                  std::size_t count);

}  // namespace kx::recording
