// Measured beats made for the interpreter's tests, and the codes of the statements that they get.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/annotation_store.h"
#include "lib/resource_text.h"

namespace kx::test {

// A texts source that has a text for every code, "<code>" with a placeholder for every number.
class CodeTexts final : public ResourceTexts {
  public:
    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override;
};

// An ECG without any finding: sinus rhythm of 75 beats a minute, PR 160, QRS 90, QTc 410 ms, axis 50 degrees,
// small Q waves and upright T waves where they belong.
KxMeasurementSet NormalEcg();

// One wave of one lead, with its markers kept in order.
void SetQrs(KxMeasurementSet& set, int lead, int q, int r, int s, int rPrime = 0);

// Beats by their intervals: 'N' normal, 'S' supraventricular, 'V' ventricular, 'P' paced, 'u' unclassified,
// 'x' no beat.
AnnotationStore Beats(const std::string& kinds, const std::vector<std::uint32_t>& intervals);
// Ten of them, 800 ms apart.
AnnotationStore SteadyBeats();

// The codes in the result's text, classification included.
std::set<int> CodesOf(const KxMeasurementSet& set, const AnnotationStore* beats);

}  // namespace kx::test
