// The median beat as the delineator sees it: one sample a millisecond, microvolts, and its smoothed forms.
#pragma once

#include <array>
#include <cstddef>
#include <span>
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

// A stretch of a wave on one side of its base.
struct Phase {
    Place from;
    Place to;
    double extremum;  // signed
};

// The traces keep their memory from one ReadBeat to the next: a beat that is used again for a record of the
// same form takes none.
struct Beat {
    int length = 0;  // ms
    int rr = 0;      // ms, 0 = not known
    std::array<BeatLead, KX_MEASURED_LEADS> leads;
    Trace fineVelocity;  // root mean square of fineSlope over the leads, microvolts per ms
    Trace wideVelocity;  // the same of wideSlope
    Trace working;       // of ReadBeat

    // Memory of the steps that measure the beat, one after another.
    mutable Trace distance;
    mutable Trace sorted;
    mutable std::vector<Phase> phases;
};

// One value of each lead that has one.
class LeadValues {
  public:
    void Add(double value) { values_[count_++] = value; }
    operator std::span<const double>() const { return {values_.data(), count_}; }

  private:
    std::array<double, KX_MEASURED_LEADS> values_{};
    std::size_t count_ = 0;
};

// Takes the beat out of a record whose contents may be anything. False, and a beat of no meaning, when it
// cannot be measured (see delineator.h).
bool ReadBeat(const KxEpisodeRecord* episode, Beat& beat);

// Three passes of a moving mean of `width` samples (odd): a quadratic spline window, no phase shift. The ends
// are continued by their last values. `result` and `working` are other traces than `level`.
void Smooth(const Trace& level, int width, Trace& result, Trace& working);

// Central difference, per sample; 0 at the ends.
void Slope(const Trace& level, Trace& slope);

// Root mean square over the present leads of one of their traces.
void OverLeads(const Beat& beat, const Trace BeatLead::*trace, Trace& result);

// Root mean square over the present leads of the distance of `wide` from its own mean in [baseFrom, baseTo),
// at the places [from, to); 0 elsewhere. Valid until the next call for the beat.
const Trace& DistanceFrom(const Beat& beat, Place baseFrom, Place baseTo, Place from, Place to);

// Mean of trace[from, to), the range cut to the trace; `otherwise` when nothing is left.
double MeanBetween(const Trace& trace, Place from, Place to, double otherwise = 0);

// Value below which the given part (0 to 1) of the values lies; 0 of none. Sorted in the beat's memory.
double Quantile(const Beat& beat, std::span<const double> values, double part);

inline double Median(const Beat& beat, std::span<const double> values) {
    return Quantile(beat, values, 0.5);
}

}  // namespace kx::analysis
