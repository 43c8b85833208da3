// What was found in an ECG, as the annotations of an annotated ECG.
#pragma once

#include <pugixml.hpp>
#include <string>

namespace kx {
struct TestRecord;
}

namespace kx::recording {

// "YYYYMMDDHHMMSS.mmm", `ms` after the record's acquisition time; empty when that is not known.
std::string TimeText(const TestRecord& test, std::uint32_t ms);

// The record's beats, in an annotation set of the series; none when it has none.
void AddBeatAnnotations(pugi::xml_node series, const TestRecord& test);

// The measurements, markers and interpretation of episode 0, in annotation sets of the series of its median
// beat.
void AddBeatMeasurements(pugi::xml_node series, const TestRecord& test);

}  // namespace kx::recording
