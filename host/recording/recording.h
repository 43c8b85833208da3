// A 12-lead recording in memory, whatever it came from.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/leads.h"

namespace kx::recording {

// Leads in the order of the records' lead codes 0 to 11, named by kLeadNames.
inline constexpr std::size_t kLeadCount = KX_STANDARD_LEADS;

enum Lead : std::size_t { kLeadI, kLeadII, kLeadIII, kLeadAVR, kLeadAVL, kLeadAVF, kLeadV1 };

enum class Sex { kUnknown, kMale, kFemale };

// Samples [first, end) in which at least one lead had no value; they were bridged by straight lines.
struct Gap {
    std::size_t first = 0;
    std::size_t end = 0;
};

struct Recording {
    std::string name;       // the record's name, without folder and extension
    std::string source;     // what it came from, for the device name: "WFDB record", "Synthetic ECG"
    double sampleRate = 0;  // samples per second, > 0
    // Microvolts; all twelve of the same length. A lead that was not recorded is computed (see derived).
    std::array<std::vector<float>, kLeadCount> leads;
    std::array<bool, kLeadCount> derived{};  // computed from I and II: only III, aVR, aVL, aVF
    std::vector<Gap> gaps;                   // in order, apart from one another

    int ageYears = -1;  // -1: not known
    Sex sex = Sex::kUnknown;
    std::vector<std::string> diagnoses;  // one statement each, as written in the source (UTF-8)
    KxDateTime acquisitionTime{};        // year 0: not known
    // What a reader of the measurements should know: a gain that was assumed, samples that were missing.
    std::vector<std::string> remarks;

    std::size_t SampleCount() const { return leads[kLeadI].size(); }
    double DurationMs() const { return sampleRate > 0 ? double(SampleCount()) * 1000 / sampleRate : 0; }
};

// Fills the leads marked as derived from I and II: III = II - I, aVR = -(I + II) / 2, aVL = I - II / 2,
// aVF = II - I / 2 (Einthoven, Goldberger).
void DeriveLeads(Recording& recording);

}  // namespace kx::recording
