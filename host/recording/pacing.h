// Pacing: impulses that keep their distance to the beats.
#pragma once

#include <vector>

#include "host/recording/aligned_beats.h"

namespace kx::recording {

struct Pacing {
    Places impulses;          // before the beats that they made, samples at kWorkingRate, ascending
    std::vector<bool> paced;  // for each beat, whether an impulse is before it
};

// An impulse is a jump from one sample to the next in several leads at once, out of proportion to the slopes
// of the QRS complexes and to those beside it, so that a notch or a steep complex is none. A recording is
// paced when at least half of its beats follow an impulse at a place where it can have made them; else there
// are none. Jumps of an electrode do not keep that distance.
Pacing FindPacing(const AlignedBeats& beats);

}  // namespace kx::recording
