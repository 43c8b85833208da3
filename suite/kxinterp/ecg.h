// A measured beat and its rhythm, in the words of the criteria. Portable.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "include/kxdialogs.h"
#include "suite/kxinterp/rhythm_figures.h"

namespace kx::interp {

// AHA III, adults. The limit was drawn in single leads, so it is compared with how long the complex lasts in
// a typical lead; from the earliest onset in any lead to the latest end in any other it is some 15 ms longer
// (AHA II).
inline constexpr int kBroadQrsMs = 120;

// Voltages in microvolts, of downward waves as depths; times in ms; 0 where there is no wave.
class Ecg {
  public:
    Ecg(const KxMeasurementSet& set, const KxAnnotationStore* annotations)
        : Ecg(set, ReadAnnotations(annotations)) {}
    Ecg(const KxMeasurementSet& set, const Annotated& annotated)
        : set_(set),
          beats_(BeatFiguresOf(annotated.beats)),
          atria_(AtrialFiguresOf(annotated)),
          impulses_(PacingFiguresOf(annotated)),
          slowOnsetMs_(static_cast<int>(annotated.slowOnsetMs)) {}

    const KxMeasurementSet& Set() const { return set_; }
    const BeatFigures& Beats() const { return beats_; }
    const AtrialFigures& Atria() const { return atria_; }
    const PacingFigures& Impulses() const { return impulses_; }
    // How long the usual complex begins slowly; 0: not known.
    int SlowOnset() const { return slowOnsetMs_; }

    // From the beats, else from the beat's own interval; 0: not known.
    std::uint32_t HeartRate() const {
        const std::uint32_t interval = beats_.meanIntervalMs != 0 ? beats_.meanIntervalMs : set_.rrInterval;
        return interval != 0 ? (60000 + interval / 2) / interval : 0;
    }
    bool HasP() const { return set_.pDuration != 0 && set_.prInterval != 0; }

    const KxLeadMeasurements& Lead(int lead) const { return set_.leads[lead]; }
    int Q(int lead) const { return std::max<int>(0, -Lead(lead).aQ); }
    int R(int lead) const { return std::max<int>({0, Lead(lead).aR, Lead(lead).aR1}); }
    int S(int lead) const { return std::max<int>({0, -Lead(lead).aS, -Lead(lead).aS1}); }
    int RPrime(int lead) const { return std::max<int>(0, Lead(lead).aR1); }
    // The downward part before the R wave: Q, or S where a small r stands before both and R' is the larger.
    int DepthBeforeR(int lead) const {
        const int first = Lead(lead).aR;
        return first < Lead(lead).aR1 ? std::max(Q(lead), std::max<int>(0, -Lead(lead).aS)) : Q(lead);
    }
    int Depth(int lead) const { return std::max(Q(lead), S(lead)); }
    int Net(int lead) const { return R(lead) - Depth(lead); }
    int PeakToPeak(int lead) const { return R(lead) + Depth(lead); }
    bool HasQrs(int lead) const { return PeakToPeak(lead) != 0; }
    bool IsQs(int lead) const { return R(lead) == 0 && Q(lead) != 0; }

    // The median over the leads of how long their own complexes last. The set's QRS duration, from the
    // earliest onset in any lead to the latest end in any other, is longer.
    int TypicalQrsDuration() const;
    bool IsBroad() const { return TypicalQrsDuration() >= kBroadQrsMs; }
    int QDuration(int lead) const { return Span(lead, 0); }
    int RDuration(int lead) const { return Span(lead, 1); }
    int SDuration(int lead) const { return Span(lead, 2); }
    // From the onset of the complex to the peak of the last R wave.
    int RPeakTime(int lead) const { return Lead(lead).intrinsicoidDeflection; }

    // The larger phase of the T wave, signed.
    int T(int lead) const {
        const int first = Lead(lead).aT1;
        const int second = Lead(lead).aT2;
        return std::max(second, -second) > std::max(first, -first) ? second : first;
    }
    // The level of the ST segment, signed, `ms` after the J point.
    int St(int lead, int ms) const { return Lead(lead).stLevel[ms / 10]; }

  private:
    // How long component k of Q, R, S, R', S' lasts: up to the next one, or to the end of the complex.
    int Span(int lead, std::size_t k) const;

    const KxMeasurementSet& set_;
    BeatFigures beats_;
    AtrialFigures atria_;
    PacingFigures impulses_;
    int slowOnsetMs_;
};

}  // namespace kx::interp
