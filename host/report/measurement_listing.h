// The measurements of a median beat as lines of text, for scripts and for people.
#pragma once

#include <span>
#include <string>

#include "include/kxdialogs.h"

namespace kxhost {

struct MeasuredRecord {
    std::string name;              // UTF-8
    std::span<const int> beatsMs;  // from the start of the recording
    int rPeakMs;                   // from the start of the median beat
    const KxMeasurementSet& set;
};

// "beat" (one line per beat), "rPeak", the global values and fiducial points by their field names, and
// "LEAD.field" for the twelve standard leads; each line is name, tab, decimal value, \n. named: begins with
// "record", tab, the name.
std::string ListMeasurements(const MeasuredRecord& record, bool named);

// The same as a JSON object: "record", "beats" as an array, the values by their names, and "leads" as an
// object of an object for each lead.
std::string MeasurementsJson(const MeasuredRecord& record);

}  // namespace kxhost
