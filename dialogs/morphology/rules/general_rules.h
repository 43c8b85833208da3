// general_rules: the rules between the five global fiducial points.
#pragma once

#include "dialogs/morphology/rules/marker_edit.h"

namespace kx {

// The global points stand in block 0; the slots are in the order of their table.
inline constexpr MarkerLayout kGeneralLayout{kGlobalMarkers, &KxLeadMeasurements::globalManualFlags};

// Stores every field that differs from the record, limited by its neighbours: P onset <= P offset <= QRS
// onset < QRS offset <= T offset, QRS onset not before 20 ms, and 20 ms between onset and offset of a QRS
// complex that one of them was dragged across. noPWave: the box is checked; see ApplyGeneralWaveBox. At most
// one re-measurement, after all values are stored.
void ApplyGeneralMarkers(MarkerEdit& edit, bool noPWave);

// The box of the P wave was clicked. absent: it is checked now; both P markers are then absent, by hand, and
// the beat is re-measured if it had a P onset. Else, on a beat without P wave, both P markers are given back
// to the analysis. The other markers are left alone.
void ApplyGeneralWaveBox(MarkerEdit& edit, bool absent);

}  // namespace kx
