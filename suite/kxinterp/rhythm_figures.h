// What the beats of a recording tell of its rhythm. Portable.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx::interp {

// All intervals in ms between one beat and the next; entries that are no beats (segment markers, noise) are
// passed over.
struct RhythmFigures {
    std::uint32_t beats = 0;
    std::uint32_t paced = 0;
    std::uint32_t ventricular = 0;       // ectopic
    std::uint32_t supraventricular = 0;  // ectopic
    std::uint32_t ventricularPairs = 0;  // two in a row
    std::uint32_t bigeminalSteps = 0;    // from a ventricular one over one other beat to the next
    std::uint32_t spanMs = 0;            // from the first beat to the last
    std::uint32_t meanIntervalMs = 0;
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

// A null store, one without entries and one whose times do not ascend give what can be told of them.
RhythmFigures FiguresOf(const KxAnnotationStore* store);

}  // namespace kx::interp
