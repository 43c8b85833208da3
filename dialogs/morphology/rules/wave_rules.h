// wave_rules: the rules between the markers of one lead's P wave, and of its T wave: an onset, the onset of a
// second component, and an offset.
#pragma once

#include "dialogs/morphology/rules/marker_edit.h"

namespace kx {

enum WaveMarker : std::size_t { kWaveOn, kWavePrimeOn, kWaveOff };

inline constexpr MarkerLayout kPLayout{LeadMarkersOf(Wave::kP), &KxLeadMeasurements::markerFlags};
inline constexpr MarkerLayout kTLayout{LeadMarkersOf(Wave::kT), &KxLeadMeasurements::markerFlags};

// Stores every field that differs from the record, in slot order, each limited by the two others and made
// manual: 5 ms apart where it was dragged onto or across them; a second component at 0 is absent and bounds
// nothing. Each stored marker of a P wave is followed by a re-measurement of its own, those of a T wave by
// one for all.
void ApplyPMarkers(MarkerEdit& edit);
void ApplyTMarkers(MarkerEdit& edit);

// The wave's own box was clicked. absent: it is checked now, and all three markers become 0; else the wave
// stands from 50 to 100 ms (P) or from 450 to 500 ms (T) without second component. All three are manual; the
// beat is re-measured.
void ApplyPWaveBox(MarkerEdit& edit, bool absent);
void ApplyTWaveBox(MarkerEdit& edit, bool absent);

// The box of the second component was clicked. absent: it is checked now and the component is removed; else
// it is put into the middle of the wave. Stored as manual and re-measured. False: refused, for the wave is
// shorter than 10 ms; nothing was changed, and the box is to be put back.
bool ApplySecondComponentBox(MarkerEdit& edit, bool absent);

}  // namespace kx
