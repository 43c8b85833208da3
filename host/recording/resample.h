// Change of a signal's sampling rate.
#pragma once

#include "host/recording/recording.h"

namespace kx::recording {

// The rate at which beats are found and averaged, samples per second.
inline constexpr int kWorkingRate = 500;

// The recording at kWorkingRate; sample 0 stays at time 0. Band-limited interpolation by a windowed sinc
// (Blackman window, 16 zero crossings to each side): up from lower rates it passes what the recording holds,
// down from higher rates it cuts at 0.45 x kWorkingRate so that nothing folds back. Gaps keep their times,
// widened to whole samples. The ends are continued by their last values.
Recording ResampleToWorkingRate(const Recording& recording);

}  // namespace kx::recording
