// How well the statements of the automatic interpretation agree with what readers wrote.
#pragma once

#include <string>
#include <vector>

#include "bench/evaluation/stated_record.h"

namespace kx::evaluation {

// The report as Markdown: the classes of rhythm and axis, a row of sensitivity and specificity for each
// finding, and below each the records that differ.
std::string ReportStatements(const std::vector<StatedRecord>& records);

}  // namespace kx::evaluation
