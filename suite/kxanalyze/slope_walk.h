// Steps along a slope by its size, whatever its sign: to the steepest place, and from there out of the wave.
#pragma once

#include <vector>

#include "suite/kxanalyze/beat.h"

namespace kx::analysis {

// The steepest place of slope[from, to], the range cut to the trace.
Place Steepest(const Trace& slope, Place from, Place to);

// How a walk leaves a wave: the slope counts as part of it above `threshold`; the wave is over when it stays
// at or below for `quiet` ms; the walk ends after `reach` ms at the latest.
struct WalkRule {
    double threshold;
    int quiet;
    int reach;
};

// The last place, seen from `from` in `direction` (-1 or +1), at which the slope belongs to the wave.
Place WalkOut(const Trace& slope, Place from, int direction, const WalkRule& rule);

// `own` moved towards the place that the leads agree on; weight 1 keeps it, 0 gives it up.
Place Towards(double agreed, Place own, double weight);

}  // namespace kx::analysis
