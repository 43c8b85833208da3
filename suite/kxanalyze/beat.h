// The median beat as the delineator sees it: one sample a millisecond, microvolts, and its smoothed forms.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "kxdialogs.h"
#include "lib/atrial_lead.h"

namespace kx::analysis {

using Trace = std::vector<double>;

// A place in a beat, in ms from its start; also an index into every trace.
using Place = int;

struct BeatLead {
    bool present = false;
    const char* refusal = nullptr;  // why one that is stored is not present, one line of English
    Trace level;                    // microvolts, pacing spikes bridged
    Trace fine;                     // smoothed for the QRS complex
    Trace fineSlope;                // microvolts per ms
    Trace wide;                     // smoothed for P and T waves
    Trace wideSlope;                // microvolts per ms
    double fineNoise = 0;           // slope that counts as noise, microvolts per ms
    double wideNoise = 0;
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
    AtrialLead atria = AtrialLead::kUnknown;
    Place spike = 0;   // of the last pacing spike before the complex, 0 = none
    Place centre = 0;  // of the QRS complex: its steepest place on all leads
    std::array<BeatLead, KX_MEASURED_LEADS> leads;
    // The leads' slopes joined, each in units of its own noise and weighted by how far it stands out of it.
    Trace fineVelocity;
    Trace wideVelocity;
    Trace working;  // of the steps that read and measure the beat, one after another

    mutable Trace curve;
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

inline constexpr char kNoComplex[] = "no QRS complex stands out of the noise of the beat";

// Takes the beat out of a record whose contents may be anything, and prepares what every wave is looked for
// in. Null; or why it cannot be measured, one line of English, and a beat of no meaning (see delineator.h).
const char* ReadBeat(const KxEpisodeRecord* episode, Beat& beat);

// Smooths every present lead and takes its slopes.
void SmoothLeads(Beat& beat);

// Three passes of a moving mean of `width` samples (odd): a quadratic spline window, no phase shift. The ends
// are continued by their last values. `result` and `working` are other traces than `level`.
void Smooth(const Trace& level, int width, Trace& result, Trace& working);

// Central difference, per sample; 0 at the ends.
void Slope(const Trace& level, Trace& slope);

// Finds pacing spikes before the QRS complex and puts straight lines in their place (beat_spikes.cpp).
void BridgeSpikes(Beat& beat);

// The steepest place on all leads, outside the excluded places.
Place FindCentre(Beat& beat, Place excludedFrom, Place excludedTo);

// Finds the centre of the complex and joins the slopes of the leads (velocity.cpp). False: nothing stands
// out.
bool JoinLeads(Beat& beat);

// Mean of trace[from, to), the range cut to the trace; `otherwise` when nothing is left.
double MeanBetween(const Trace& trace, Place from, Place to, double otherwise = 0);

// Value below which the given part (0 to 1) of the values lies; 0 of none. Sorted in the beat's memory.
double Quantile(const Beat& beat, std::span<const double> values, double part);

inline double Median(const Beat& beat, std::span<const double> values) {
    return Quantile(beat, values, 0.5);
}

// trace[from, to), cut to the trace.
std::span<const double> Between(const Trace& trace, Place from, Place to);

inline double At(const Trace& trace, Place place) {
    return trace[static_cast<std::size_t>(place)];
}

}  // namespace kx::analysis
