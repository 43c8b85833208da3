// The components of a lead's waves: Q, R, S, R', S' of the QRS complex, the second component of P and T.
#pragma once

#include <array>
#include <vector>

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/boundaries.h"

namespace kx::analysis {

// Onsets of Q, R, S, R', S' in this order, 0 = absent. The first component begins at the onset of the
// complex, each further one where the curve crosses the isoelectric level. A complex that only goes down is a
// Q wave without R.
// phases: working memory.
std::array<Place, 5> FindQrsComponents(const Trace& level, double isoelectric, Interval complex,
                                       std::vector<Phase>& phases);

// Where the second component of a wave with two phases of opposite sign begins; 0 for a wave with one.
// phases: working memory.
Place FindSecondComponent(const Trace& level, double base, Interval wave, std::vector<Phase>& phases);

// The value of level[from, to) furthest above (sign 1) or below (sign -1) the base, or furthest on either
// side (sign 0), less the base; 0 when the curve is never on that side or the range is empty.
double Extremum(const Trace& level, double base, Place from, Place to, int sign);

// The place of that value, 0 when there is none.
Place ExtremumPlace(const Trace& level, double base, Place from, Place to, int sign);

}  // namespace kx::analysis
