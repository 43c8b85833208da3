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

// Values at 0, 1, ... count - 1 of the natural cubic spline through knots (ascending, distinct); constant
// outside.
std::vector<double> NaturalSpline(const std::vector<double>& knots, const std::vector<double>& values,
                                  std::size_t count);

}  // namespace kx::recording
