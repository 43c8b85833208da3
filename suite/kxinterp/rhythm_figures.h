// What the annotations of a recording tell of its rhythm. Portable.
#pragma once

#include <cstdint>
#include <vector>

#include "include/kxdialogs.h"

namespace kx::interp {

enum class BeatKind { kNormal, kSupraventricular, kVentricular, kPaced, kUnknown };

struct AnnotatedBeat {
    std::uint32_t ms = 0;
    BeatKind kind = BeatKind::kUnknown;
};

// The entries of a store by what they are, each list ascending; what comes out of order of time is left out.
struct Annotated {
    std::vector<AnnotatedBeat> beats;
    std::vector<std::uint32_t> waves;     // of the atria, ms
    std::vector<std::uint32_t> impulses;  // of a pacemaker, ms
    bool watched = false;                 // waves and impulses were looked for
    std::uint32_t slowOnsetMs = 0;        // how long the usual complex begins slowly; where watched
};

// A null store, one without entries and one that holds less than it says give what can be told of them.
Annotated ReadAnnotations(const KxAnnotationStore* store);

// All intervals in ms between one beat and the next.
struct BeatFigures {
    std::uint32_t beats = 0;  // of known kind
    std::uint32_t paced = 0;
    std::uint32_t ventricular = 0;       // ectopic
    std::uint32_t supraventricular = 0;  // ectopic
    std::uint32_t ventricularPairs = 0;  // two in a row
    std::uint32_t bigeminalSteps = 0;    // from a ventricular one over one other beat to the next
    std::uint32_t spanMs = 0;            // from the first beat to the last
    std::uint32_t meanIntervalMs = 0;    // between beats of known kind
    // Between beats that are neither ectopic nor paced.
    std::uint32_t normalIntervals = 0;
    std::uint32_t shortestMs = 0;
    std::uint32_t longestMs = 0;
    std::uint32_t meanNormalMs = 0;
    std::uint32_t successiveDifferenceMs =
        0;  // root mean square of the differences between neighbouring ones

    // Whether there are beats enough to speak of regular and irregular.
    bool KnowsRegularity() const { return normalIntervals >= 4; }
    std::uint32_t PerMinute(std::uint32_t count) const { return spanMs != 0 ? count * 60000 / spanMs : 0; }
};

BeatFigures BeatFiguresOf(const std::vector<AnnotatedBeat>& beats);

// How the waves of the atria and the beats follow one another; beats here are normal, paced and unknown ones.
struct AtrialFigures {
    bool watched = false;
    std::uint32_t waves = 0;
    std::uint32_t beats = 0;
    std::uint32_t intervalMs = 0;  // from wave to wave, the median; 0 with less than four waves
    bool regular = false;          // most of them follow at that interval or at two or three of it
    std::uint32_t led = 0;         // beats with a wave before them at nearly the same distance as most
    std::uint32_t distances = 0;   // beats with a wave before them at all
    std::uint32_t blocked = 0;     // waves in time that no beat follows, between two that are followed
    std::uint32_t longestRun = 0;  // of blocked ones
    bool lengthening = false;      // before most blocked waves the distance had become longer

    bool Lead() const { return beats > 0 && 10 * led >= 6 * beats; }
};

AtrialFigures AtrialFiguresOf(const Annotated& annotated);

// How many beats have an impulse close before them (ventricular pacing) and one farther away (atrial pacing).
struct PacingFigures {
    std::uint32_t ventricular = 0;
    std::uint32_t atrial = 0;
    std::uint32_t both = 0;
};

PacingFigures PacingFiguresOf(const Annotated& annotated);

}  // namespace kx::interp
