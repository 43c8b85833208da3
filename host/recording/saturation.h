// Leads that exceed the range of their recorder.
#pragma once

#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// The leads that stay at their highest or lowest value for 16 ms or longer and leave it steeply, as a wave
// does whose top is cut off, again and again; a rounded top begins to fall slowly. To be asked of a recording
// as it was read: what is subtracted from it later bends the plateaus.
std::vector<std::size_t> FindSaturatedLeads(const Recording& recording);

}  // namespace kx::recording
