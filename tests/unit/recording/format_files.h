// Files of the kinds that the workstation reads beside WFDB, made from a recording.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

using Octets = std::vector<std::uint8_t>;

// Whole multiples of 5 uV in twelve leads that obey the laws of the limb leads: beats, a wander and some noise, always the same.
Recording MakeLawfulRecording(std::size_t count);

inline const std::vector<std::size_t> kAllLeads = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

struct ScpLayout {
    std::vector<std::size_t> leads = kAllLeads;
    enum Coding { kPlain, kDefaultTable, kOwnTables } coding = kDefaultTable;
    unsigned differences = 2;
    bool subtractBeat = false;
    unsigned decimation = 1;
    bool backwards = false;  // the sections in reverse order
    bool checksums = true;
    bool beatOnly = false;  // the recording as reference beat, without a rhythm
};
Octets EncodeScp(const Recording& recording, const ScpLayout& layout);

struct DicomLayout {
    std::vector<std::size_t> leads = kAllLeads;
    bool explicitTypes = true, undefinedLengths = false, isSigned = true, preamble = true;
    unsigned bits = 16;
    std::string scheme = "MDC";  // "SCPECG", or "" for labels alone
    std::string unit = "uV";
    double sensitivity = 2.5, correction = 1, baseline = 0;  // in the unit
    std::size_t groups = 1;                                  // that the leads are spread over
};
Octets EncodeDicom(const Recording& recording, const DicomLayout& layout);

}  // namespace kx::recording
