// The automatic interpretation of a resting ECG: the statements that apply to a measured beat and its rhythm.
// Portable.
#pragma once

#include <cstdint>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/reporter.h"
#include "lib/resource_text.h"

namespace kx::interp {

// Fills the result from the measurements and the beats; the same input always gives the same text.
//
// - text: one statement a line, joined by CR LF, in the order of the rules, with the overall classification
//   at the end; at most 1023 characters. What does not fit is left out from the end of the lightest
//   statements up, never the classification. An ECG that cannot be interpreted gets one line that says why.
//   Statement texts come from `texts` by their code; a text that is missing is reported, and the code stands
//   in its place.
// - code: "NOR", "BOR" or "ABN", empty when the ECG could not be interpreted.
// - flags: bit 0 interpreted, bit 1 not normal.
// - extra: the number of statements before the classification.
// - resultTime: the episode's time.
//
// annotations may be null, and is read only as a KxAnnotationStore. False, nothing changed and the reason
// reported: no measurement set or no result, or a measurement set of another size.
bool Interpret(const KxMeasurementSet* set, const KxAnnotationStore* annotations, const ResourceTexts& texts,
               KxInterpretationResult* result, Reporter& log);

// The codes of the statements that Interpret would make, in their order and with the classification at the
// end, without regard to how much room their texts take.
std::vector<std::uint16_t> StatementCodes(const KxMeasurementSet& set, const KxAnnotationStore* annotations);

}  // namespace kx::interp
