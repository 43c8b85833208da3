// The samples of a recording for spreadsheets.
#pragma once

#include <string>

#include "host/recording/recording.h"

namespace kx::recording {

// A line of titles, then one for each sample: its time from the start in ms (to the microsecond) and the
// twelve leads in microvolts, each with the digits that tell it from its neighbours. Cells are separated by
// semicolons and decimals by a comma, as spreadsheets in Italian read them; lines end with CR LF.
std::string SamplesCsv(const Recording& recording);

}  // namespace kx::recording
