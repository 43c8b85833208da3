// The measurements of a median beat as the texts of report fields, by the suite's field codes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// How an ST level is written.
enum class AmplitudeUnit : std::uint32_t {
    kMicrovolts = 0,   // "-150"
    kMillimetres = 1,  // of 100 microvolts: "-1.5"
    kMillivolts = 2    // "-0.15"
};

// Writes the text of a field and returns true; false, and nothing written, for a code that is no measurement
// (lib/measurement_text.cpp lists them all). A set that is not measured gives ".." for every one. stTimeMs:
// the time for which ST levels and slopes are asked, from the end of the QRS complex. At most size - 1
// characters are written and always terminated; nothing without a buffer.
bool MeasurementFieldText(const KxMeasurementSet& set, int code, char* buffer, std::size_t size,
                          AmplitudeUnit amplitudeUnit, std::int32_t stTimeMs);

// The same for the three intervals that go with a rhythm strip, codes 17 to 19; "... ms" while not measured.
bool RhythmFieldText(const KxMeasurementSet& set, int code, char* buffer, std::size_t size);

}  // namespace kx
