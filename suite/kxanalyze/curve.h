// Steps along a curve of the size of a slope: to its steepest place, to the quiet place beside a wave, and
// out of a wave.
#pragma once

#include "suite/kxanalyze/beat.h"

namespace kx::analysis {

// The sizes of the values of a trace.
void Sizes(const Trace& trace, Trace& sizes);

// The place of the largest of curve[from, to), the range cut to the curve; `from` when nothing is left.
Place LargestPlace(const Trace& curve, Place from, Place to);

// The last place, seen from `from` in `direction` (-1 or +1), at which the curve is above the threshold,
// before it stays at or below for `quiet` ms or passes `end`.
Place LastAbove(const Trace& curve, Place from, int direction, double threshold, int quiet, Place end);

// The line beside a wave: the middle of the quietest stretch between two places, and the curve's mean there.
struct Line {
    Place place;
    double floor;
};
Line FindLine(const Trace& curve, Place from, Place to);

// The place of a wave as a whole number, at least 1: 0 says that there is none.
Place Rounded(double ms);

}  // namespace kx::analysis
