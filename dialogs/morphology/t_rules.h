// The rules between the markers of one lead's T wave.
#pragma once

#include "dialogs/morphology/wave_rules.h"

namespace kx {

extern const MarkerLayout kTLayout;

// Stores every field that differs from the record, in slot order, each limited by its neighbours and made
// manual; one re-measurement follows when there was any.
void ApplyTMarkers(MarkerEdit& edit);

// The box of the whole wave was clicked; see ApplyWaveBox. A wave that is given back stands from 450 to 500
// ms.
void ApplyTWaveBox(MarkerEdit& edit, bool absent);

}  // namespace kx
