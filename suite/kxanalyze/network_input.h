// A beat as the network sees it.
#pragma once

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/network.h"

namespace kx::analysis {

// The networks have learned PR intervals of up to 230 ms. Of a longer one they are shown what lies before
// `at` so many ms later, as if the segment between P wave and complex were shorter.
struct ShortenedSegment {
    Place at = 0;
    int ms = 0;
};

// Fills in the rows of one lead, none of which depends on its gain: level, slopes at both scales in units of
// its noise and of its range, time in ms and as part of the RR interval, and whether the place lies in the
// beat.
void FillInput(const Beat& beat, const BeatLead& lead, ShortenedSegment segment, Rows& input);

}  // namespace kx::analysis
