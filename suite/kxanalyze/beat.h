// The median beat as the delineator sees it: one sample a millisecond, microvolts, and its smoothed forms.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "kxdialogs.h"

namespace kx::analysis {

using Trace = std::vector<double>;

// A place in a beat, in ms from its start; also an index into every trace.
using Place = int;

struct BeatLead {
    bool present = false;
    Trace level;      // microvolts
    Trace fine;       // smoothed for the QRS complex
    Trace fineSlope;  // microvolts per ms
    Trace wide;       // smoothed for P and T waves
    Trace wideSlope;  // microvolts per ms
};

struct Beat {
    int length = 0;  // ms
    int rr = 0;      // ms, 0 = not known
    std::array<BeatLead, KX_MEASURED_LEADS> leads;
    Trace fineVelocity;  // root mean square of fineSlope over the leads, microvolts per ms
    Trace wideVelocity;  // the same of wideSlope
};

// Takes the beat out of a record whose contents may be anything. Nothing when it cannot be measured (see
// delineator.h).
std::optional<Beat> ReadBeat(const KxEpisodeRecord* episode);

// Three passes of a moving mean of `width` samples (odd): a quadratic spline window, no phase shift. The ends
// are continued by their last values.
Trace Smooth(const Trace& level, int width);

// Central difference, per sample.
Trace Slope(const Trace& level);

// Root mean square over the present leads of one of their traces.
Trace OverLeads(const Beat& beat, const Trace BeatLead::*trace);

// Mean of trace[from, to), the range cut to the trace; `otherwise` when nothing is left.
double MeanBetween(const Trace& trace, Place from, Place to, double otherwise = 0);

double Median(std::vector<double> values);  // 0 of none

// Value below which the given part (0 to 1) of the values lies; 0 of none.
double Quantile(std::vector<double> values, double part);

}  // namespace kx::analysis
