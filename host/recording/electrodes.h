// Limb electrodes in each other's place.
#pragma once

#include "host/recording/median_beat.h"
#include "include/kxdialogs.h"

namespace kx::recording {

// A sentence about two limb electrodes that seem to have been exchanged, null when none do: the arms', or the
// right arm's and the left leg's. Lead I (or II) then has its P wave upside down and a QRS complex opposite
// to that of V6, which looks from nearly the same side (J. A. Kors, G. van Herpen, "Accurate automatic
// detection of electrode interchange in the electrocardiogram", Am. J. Cardiol. 88, 396-399, 2001, for why
// the chest leads tell). Without a P wave nothing is said. Exchanged electrodes of left arm and left leg
// leave a record that could be another person's, and are not found.
const char* FindExchangedElectrodes(const MedianBeat& beat, const KxMeasurementSet& set);

}  // namespace kx::recording
