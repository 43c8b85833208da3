// The signals of an annotated ECG.
#pragma once

#include <pugixml.hpp>
#include <vector>

#include "host/recording/signal_groups.h"

namespace kx::recording {

// A group for each set of sequences of the series and of the series derived from it. Throws ReadFailure when
// a set does not say its sampling interval, or a lead not its voltages.
std::vector<SignalGroup> ReadAecgSeries(const pugi::xml_node& series);

// What filters the series has passed.
Filters ReadAecgFilters(const pugi::xml_node& series);

}  // namespace kx::recording
