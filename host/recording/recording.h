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

// As far as the source tells; texts are UTF-8, empty when it does not.
struct Patient {
    std::string id;
    std::string lastName;
    std::string firstName;
    std::string middleName;
    KxDate birthDate{};  // year 0: not known
    int ageDays = -1;    // at the recording; -1: not known
    Sex sex = Sex::kUnknown;
};

struct Device {
    std::string name;  // maker and model
    std::string serial;
    std::string revision;
};

// The filters that the samples have passed already, beyond the recorder's own range of 0.05 to 150 Hz.
struct Filters {
    int mainsHz = 0;        // of the notch filter, 50 or 60; 0: none
    bool baseline = false;  // against wander of the baseline
    bool artifact = false;  // against the noise of muscles

    // By the limits in Hz that a source states; 0: not stated. Any other notch than of the mains is left
    // aside.
    void TakeLimits(double highPassHz, double lowPassHz, double notchHz);
};

struct Recording {
    std::string name;       // the record's name, without folder and extension
    std::string source;     // what it came from: "WFDB record", "SCP-ECG file", "Synthetic ECG"
    double sampleRate = 0;  // samples per second, > 0
    // Microvolts; all twelve of the same length. A lead that was not recorded is computed (see derived).
    std::array<std::vector<float>, kLeadCount> leads;
    // Microvolts in one unit of the source: its samples are whole multiples of it. 0: not known, or a lead
    // that is computed.
    std::array<double, kLeadCount> resolutionUv{};
    std::array<bool, kLeadCount> derived{};  // computed from two other limb leads
    std::vector<Gap> gaps;                   // in order, apart from one another

    Patient patient;
    Device device;
    Filters filters;
    std::vector<std::string> diagnoses;  // one statement each, as written in the source (UTF-8)
    KxDateTime acquisitionTime{};        // year 0: not known
    // What a reader of the measurements should know: a gain that was assumed, samples that were missing.
    std::vector<std::string> remarks;

    std::size_t SampleCount() const { return leads[kLeadI].size(); }
    double DurationMs() const { return sampleRate > 0 ? double(SampleCount()) * 1000 / sampleRate : 0; }
};

// Fills the limb leads marked as derived from the others, of which two must be there (Einthoven, Goldberger):
// III = II - I, aVR = -(I + II) / 2, aVL = I - II / 2, aVF = II - I / 2.
void DeriveLeads(Recording& recording);

// Puts a sample behind the others.
void AppendToGaps(std::vector<Gap>& gaps, std::size_t sample);

// Bridges the samples of the gaps by straight lines, the ends by the nearest value. False when nothing is
// left of the lead.
bool BridgeGaps(std::vector<float>& lead, const std::vector<Gap>& gaps);

// Joins more gaps to those of a recording, which are kept in order and apart.
void AddGaps(std::vector<Gap>& gaps, const std::vector<Gap>& more);

}  // namespace kx::recording
