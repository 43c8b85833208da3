// Where the waves of all leads together begin and end, by rules: a boundary is where the joined slopes of the
// leads leave the line beside the wave. They need a beat of ReadBeat.
#pragma once

#include "suite/kxanalyze/boundaries.h"

namespace kx::analysis {

struct QrsByRules {
    Interval all;        // not present when no complex stands out of the noise
    bool paced = false;  // it begins with a pacing spike
};
QrsByRules FindQrs(const Beat& beat);

// The end of the T wave behind a complex, 0 when there is none.
Place FindTOff(const Beat& beat, Interval qrs);

struct PByRules {
    Interval all;  // the likeliest wave before the complex, not present when there is none
    // How much it stands out of the line between the T wave before and itself; above 1 it is a P wave.
    double clearness = 0;
};
// tOff: of this beat; with the RR interval it tells where the T wave of the beat before has ended.
PByRules FindP(const Beat& beat, Interval qrs, Place tOff);

// The end of the P wave in one lead, where its slope comes to rest behind the steepest place of its fall. on:
// where it begins there; qrsOn: of all leads, and the answer where both leave no room for a wave.
Place FindLeadPOff(const Beat& beat, const BeatLead& lead, Place on, Place qrsOn);

}  // namespace kx::analysis
