// What stands on a printed page, as texts and numbers.
#pragma once

#include <string>
#include <vector>

#include "lib/dbclient/test_record.h"

namespace kxhost {

struct PrintedValue {
    std::wstring name;
    std::wstring value;
};

struct PrintedMarker {
    std::wstring name;
    int ms = 0;  // from the start of the beat
    bool manual = false;
};

struct PrintedPage {
    std::wstring patient;
    std::wstring details;      // id, sex, age, time of the recording
    std::wstring reportState;  // with who reviewed or confirmed
    std::wstring lead;         // its name
    std::vector<double> microvolts;
    double samplesPerMs = 0;
    std::vector<PrintedValue> globalValues;
    std::vector<PrintedValue> leadValues;
    std::vector<PrintedMarker> globalMarkers;  // those that are present, in order of the beat
    std::vector<PrintedMarker> leadMarkers;
    std::wstring statement;  // lines separated by \n; empty: none yet
};

// The page of one lead (0 to 11) of the test's first episode, which must be there. A lead that the episode
// does not hold, or that has no sample, gives a page without a waveform.
PrintedPage DescribePage(const kx::TestRecord& test, unsigned lead);

}  // namespace kxhost
