// qrs_rules: the rules between the components of one lead's QRS complex.
#pragma once

#include "dialogs/morphology/rules/marker_edit.h"

namespace kx {

enum QrsMarker : std::size_t { kQOn, kROn, kSOn, kRPrimeOn, kSPrimeOn, kQrsOff };

inline constexpr MarkerLayout kQrsLayout{LeadMarkersOf(Wave::kQrs), &KxLeadMeasurements::markerFlags};

// Stores every field that differs from the record, in slot order, each limited by its neighbours and each
// followed by a re-measurement of its own. A component keeps 5 ms from the one before it and from the one
// behind it, or from the QRS offset when the one behind is absent; an offset dragged into the complex stands
// 5 ms behind its latest component.
//
// Every value stored here makes the onsets of all five components manual, and never the offset: a component
// moved by hand would otherwise be measured against automatic neighbours that jump, while the offset stays
// the analysis's.
void ApplyQrsMarkers(MarkerEdit& edit);

// The box of component `component` (kQOn to kSPrimeOn) was clicked. absent: it is checked now; the component
// is removed, else inserted near its neighbour, and the beat re-measured. False: refused, nothing was
// changed, and the box is to be put back: Q and R are not both absent by hand, and a component never goes
// before its successor or comes without its predecessor. Where a component is inserted at or past the QRS
// offset the offset's field moves behind it; the record's offset is the analysis's.
bool ApplyQrsWaveBox(MarkerEdit& edit, QrsMarker component, bool absent);

}  // namespace kx
