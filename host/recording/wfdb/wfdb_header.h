// The header of a WFDB record (.hea) as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// One signal line.
struct WfdbSignal {
    std::string file;  // bare name, in the header's folder
    int format = 0;
    int samplesPerFrame = 1;
    int skew = 0;                  // frames by which the signal's samples are late
    std::uint64_t byteOffset = 0;  // of the first sample in the file
    double gain = 0;               // units per physical unit; 0: not stated
    double baseline = 0;  // the unit value that means 0 V; the ADC's zero where no baseline is written
    std::string units;    // "mV" where none is written
    std::optional<std::int32_t> initialValue;
    std::optional<std::int32_t> checksum;  // as written, signed or unsigned
    std::string description;               // the lead's name
};

struct WfdbHeader {
    std::string name;
    double sampleRate = 250;        // the format's default
    std::uint64_t sampleCount = 0;  // per signal; 0: not stated, the signal files tell
    KxDateTime baseTime{};          // year 0: without a date
    std::vector<WfdbSignal> signals;
    // From the comment lines.
    int ageYears = -1;
    Sex sex = Sex::kUnknown;
    std::vector<std::string> diagnoses;
};

// Reads the text of a header. Nothing, and one line that says what is wrong and in which line, in `error`,
// for: no record line; a record of several segments; a number that is none or out of its range; fewer signal
// lines than the record line promises; a signal file with a folder in its name. Fields left out at the end of
// a line take the format's defaults. Any text is safe.
//
// Comment lines give age, sex and diagnoses in the styles "<age>: 51", "Age: 85", "# age: 81"; diagnoses are
// the lines after "<diagnoses>:" or "Diagnose:", up to the next empty line, or the codes after "Dx:". "ECG
// date: dd/mm/yyyy" serves when the record line has no date.
std::optional<WfdbHeader> ParseWfdbHeader(std::string_view text, std::string& error);

}  // namespace kx::recording
