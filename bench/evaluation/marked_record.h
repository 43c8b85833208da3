// A recording with the marks of its cardiologists.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "bench/evaluation/marked_beats.h"
#include "host/recording/recording.h"

namespace kx::evaluation {

struct MarkedRecord {
    int number = 0;
    recording::Recording recording;
    std::vector<std::vector<MarkedBeat>> marks;  // of the twelve leads
};

// How amplitudes are read. The database's headers state each lead's peak-to-peak value as its gain, which
// makes every lead 1 mV high; its units are microvolts, one for all leads.
enum class Scale { kTrue, kHeader };

// The numbers of the records in a folder of the Lobachevsky University Electrocardiography Database (A. I.
// Kalyakulina et al., IEEE Access 8, 186181-186190, 2020), ascending.
std::vector<int> RecordNumbers(const std::filesystem::path& folder);

// Nothing, and one line in `error`, when it cannot be read.
std::optional<MarkedRecord> ReadMarkedRecord(const std::filesystem::path& folder, int number, Scale scale,
                                             std::string& error);

}  // namespace kx::evaluation
