// The places at which the waves of a beat begin and end. 0 stands for "absent" throughout.
#pragma once

#include <array>

#include "suite/kxanalyze/beat.h"

namespace kx::analysis {

struct Interval {
    Place on = 0;
    Place off = 0;
    bool Present() const { return off > 0; }
};

// One wave (or complex): on all leads together, and lead by lead.
struct WaveBoundaries {
    Interval global;
    std::array<Interval, KX_MEASURED_LEADS> leads;
};

// Isoelectric level of a lead: the mean of the 16 ms before the QRS onset, or of as much of them as lies
// behind the end of the P wave, at least 4 ms. Microvolts.
double IsoelectricLevel(const BeatLead& lead, Place qrsOn, Place pOff);

// The level that a P wave rises from: the mean of the 16 ms before its onset. Microvolts.
double LevelBeforeP(const BeatLead& lead, Place pOn);

}  // namespace kx::analysis
