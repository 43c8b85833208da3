// The measurement of one marked record after the other.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/evaluation/error_table.h"

namespace kx::evaluation {

// The records of a folder of the Lobachevsky University Electrocardiography Database (A. I. Kalyakulina et
// al., IEEE Access 8, 186181-186190, 2020), ascending by number: each is read, its median beat made and
// measured as the workstation does it, and every boundary compared with the cardiologists' marks of the same
// beats. Nothing, and one line in `error`, when there is none or one cannot be measured.
std::optional<std::vector<RecordErrors>> JudgeRecords(const std::filesystem::path& folder,
                                                      std::string& error);

// Those in sinus rhythm.
std::vector<const RecordErrors*> SinusRecords(const std::vector<RecordErrors>& records);

}  // namespace kx::evaluation
