// The measurements of a median beat as lines of text, for scripts and for people.
#pragma once

#include <span>
#include <string>

#include "include/kxdialogs.h"

namespace kxhost {

// "beat" (one line per entry of beatsMs), "rPeak", the global values and fiducial points by their field
// names, and "LEAD.field" for the twelve standard leads; each line is name, tab, decimal value, \n. beatsMs:
// from the start of the recording; rPeakMs: from the start of the median beat.
std::string ListMeasurements(std::span<const int> beatsMs, int rPeakMs, const KxMeasurementSet& set);

}  // namespace kxhost
