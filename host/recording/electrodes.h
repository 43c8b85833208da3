// Limb electrodes in each other's place.
#pragma once

#include "host/recording/median_beat.h"
#include "include/kxdialogs.h"

namespace kx::recording {

// A sentence about two limb electrodes that seem to have been exchanged, null when none do. The arms', or the
// right arm's and the left leg's: lead I (or II) then has its P wave upside down and a QRS complex opposite
// to that of V6, which looks from nearly the same side (J. A. Kors, G. van Herpen, "Accurate automatic
// detection of electrode interchange in the electrocardiogram", Am. J. Cardiol. 88, 396-399, 2001, for why
// the chest leads tell). The left arm's and the left leg's: the P wave of lead I is at least as high as that
// of II, and that of III ends upwards after it began downwards (H. Abdollah, J. A. Milliken, "Recognition of
// electrocardiographic left arm/left leg lead reversal", Am. J. Cardiol. 80, 1247-1249, 1997). Either sign
// alone would do for them; both are asked for, because every fifth person has the first one, so that most
// such records are not told from another person's. Without a P wave nothing is said.
const char* FindExchangedElectrodes(const MedianBeat& beat, const KxMeasurementSet& set);

}  // namespace kx::recording
