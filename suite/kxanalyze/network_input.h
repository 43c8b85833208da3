// A beat as the network sees it.
#pragma once

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/network.h"

namespace kx::analysis {

// Fills in the rows of one lead, none of which depends on its gain: level, slopes at both scales in units of
// its noise and of its range, time in ms and as part of the RR interval, and whether the place lies in the
// beat.
void FillInput(const Beat& beat, const BeatLead& lead, Rows& input);

}  // namespace kx::analysis
