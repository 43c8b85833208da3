// One marked recording: what its readers wrote of it, and what the automatic interpretation states.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "bench/evaluation/fold_weights.h"
#include "host/recording/median_beat.h"
#include "include/kxdialogs.h"

namespace kx::evaluation {

struct StatedRecord {
    std::string name;
    std::vector<std::string> diagnoses;  // the readers', a sentence each
    std::vector<std::uint16_t> codes;    // of the statements, the classification at the end
    KxMeasurementSet set{};

    bool States(std::uint16_t code) const;
    // Whether one of the diagnoses begins with this.
    bool IsDiagnosed(std::string_view beginning) const;
};

// The record whose header is given, read with one unit as one microvolt, measured and interpreted. Nothing,
// and one line in `error`, when it cannot be read or measured.
std::optional<StatedRecord> StateRecord(const std::filesystem::path& header, analysis::Workspace& workspace,
                                        std::string& error);

// The records of a folder whose names are numbers, each measured by a network that has not seen it, ascending
// by number; those that fail are reported in `errors`.
std::vector<StatedRecord> StateRecords(const std::filesystem::path& folder, FoldNetworks& networks,
                                       std::vector<std::string>& errors);

}  // namespace kx::evaluation
