// What the P and the T wave of a lead have in common: an onset, the onset of a second component, and an
// offset.
#pragma once

#include "dialogs/morphology/marker_edit.h"

namespace kx {

enum WaveMarker : std::size_t { kWaveOn, kWavePrimeOn, kWaveOff };

// Limits one moved marker by the two others, 5 ms apart where it was dragged onto or across them. A second
// component at 0 is absent and bounds nothing. Stores nothing.
void LimitWaveMarker(MarkerEdit& edit, WaveMarker marker);

// The wave's own box was clicked. absent: it is checked now, and all three markers become 0; else the wave
// stands from `onset` to `offset` (ms) without second component. All three are manual; the beat is
// re-measured.
void ApplyWaveBox(MarkerEdit& edit, bool absent, std::int32_t onset, std::int32_t offset);

// The box of the second component was clicked. absent: it is checked now and the component is removed; else
// it is put into the middle of the wave. Stored as manual and re-measured. False: refused, for the wave is
// shorter than 10 ms; nothing was changed, and the box is to be put back.
bool ApplySecondComponentBox(MarkerEdit& edit, bool absent);

}  // namespace kx
