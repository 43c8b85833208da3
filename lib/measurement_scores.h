// The criteria for left ventricular hypertrophy as the reports of the suite print them. Microvolts.
//
// The hypertrophy pane scores by itself (dialogs/hypertrophy/hypertrophy_score.h names the sources): the two
// differ in the P amplitude that stands for the left atrium, and a report keeps printing what it always
// printed.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// S in V1 + the taller R of V5 and V6.
std::int32_t ReportedSokolowLyon(const KxMeasurementSet& set);
// R in aVL + S in V3.
std::int32_t ReportedCornell(const KxMeasurementSet& set);
// The point score, 0 to 13, taken without digitalis.
std::int32_t ReportedPointScore(const KxMeasurementSet& set);

}  // namespace kx
