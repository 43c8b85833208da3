// The impulses of a pacemaker in a recording: where they are, and the recording without them.
#pragma once

#include <cstddef>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// Samples at which a recording at kWorkingRate holds a pacing spike, ascending: a deflection of a few
// milliseconds in several leads at once, out of proportion to everything else in them.
std::vector<std::ptrdiff_t> FindSpikes(const Recording& recording);

// Puts a straight line in the place of each spike, in every lead: what is left is the heart's own, by which
// beats are found and compared.
void BridgeSpikes(Recording& recording, const std::vector<std::ptrdiff_t>& spikes);

}  // namespace kx::recording
