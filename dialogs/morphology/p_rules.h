// The rules between the markers of one lead's P wave.
#pragma once

#include "dialogs/morphology/wave_rules.h"

namespace kx {

extern const MarkerLayout kPLayout;

// Stores every field that differs from the record, in slot order, each limited by its neighbours, made manual
// and followed by a re-measurement of its own.
void ApplyPMarkers(MarkerEdit& edit);

// The box of the whole wave was clicked; see ApplyWaveBox. A wave that is given back stands from 50 to 100
// ms.
void ApplyPWaveBox(MarkerEdit& edit, bool absent);

}  // namespace kx
