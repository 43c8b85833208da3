// The waves of the atria in a recording: P waves, with or without a beat behind them, and flutter waves.
#pragma once

#include "host/recording/aligned_beats.h"

namespace kx::recording {

struct AtrialWaves {
    Places peaks;              // samples at kWorkingRate, ascending
    bool beforeBeats = false;  // the same wave is before the beats, at the same distance
};

// Waves are looked for in two ways:
// - before the beats: what lies before each QRS complex is compared with the median of the other beats, in
// all leads;
//   where most beats agree it is a P wave, and waves of its shape are looked for everywhere between the
//   beats, which finds those that no beat follows;
// - else apart from the beats: whole beats are subtracted from one another, and the largest waves that are
// left are
//   tried one after another as a pattern; a train of them at a regular interval is accepted, as of P waves in
//   complete AV block and of flutter waves. Fibrillation leaves no such train.
AtrialWaves FindAtrialWaves(const AlignedBeats& beats);

}  // namespace kx::recording
