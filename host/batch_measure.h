// kxhost --measure: the measurements of a recording on standard output.
#pragma once

#include "host/analysis_client.h"
#include "host/command_line.h"

namespace kxhost {

// Returns the program's exit code. Throws RecordError when the recording cannot be read.
int RunMeasure(const Measure& command, const AnalysisClient& analysis);

}  // namespace kxhost
