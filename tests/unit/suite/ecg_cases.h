// Measured beats made for the interpreter's tests, and the codes of the statements that they get.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/annotation_store.h"

namespace kx::test {

// An ECG without any finding (sinus rhythm of 75 beats a minute, PR 160, QRS 90, QTc 410 ms, axis 50 degrees, small Q
// waves and upright T waves where they belong), with changes, in their order, between blanks: "pr=201";
// "V1=0,200,500,700" (Q, R, S, R' as depths and heights, each 30 ms long); "V5+V6.t=-150". Values of the whole: p
// (duration), pr, qrs, qtc, bazett, axis, paxis; of leads ("all": the twelve): t, p, p2, p2on, poff, peak, r and s
// (onsets), end, st (all levels), st0 to st90.
KxMeasurementSet EcgWith(const std::string& changes);

void SetQrs(KxMeasurementSet& set, int lead, int q, int r, int s, int rPrime = 0);

// Beats by their intervals: 'N' normal, 'S' supraventricular, 'V' ventricular, 'P' paced, 'u' unclassified, 'x' none.
AnnotationStore Beats(const std::string& kinds, const std::vector<std::uint32_t>& intervals);
inline AnnotationStore SteadyBeats() { return Beats("NNNNNNNNNN", {800}); }

// The codes of the statements, classification included.
std::set<int> CodesOf(const KxMeasurementSet& set, const AnnotationStore* beats);

}  // namespace kx::test
