// What the constants that join rules and networks (joining.h) owe to having been chosen with all records in
// view.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "bench/evaluation/error_table.h"
#include "bench/evaluation/fold_weights.h"

namespace kx::evaluation {

using JudgeRecords = std::function<std::vector<RecordErrors>(FoldNetworks&)>;

// Prints, for each of the constants and the point of all leads or of each that it moves, what is chosen for
// every fold by the records of the other folds (the smallest standard deviation; what is left of their mean
// is taken off) and the errors of the records for which it was chosen so. folds: see FoldNetworks::Read.
// False, and one line in `error`, when the folds cannot be read.
bool PrintNestedJoining(const std::filesystem::path& folds, const JudgeRecords& judge, std::string& error);

}  // namespace kx::evaluation
