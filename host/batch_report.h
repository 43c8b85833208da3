// kxhost --fields and --expand: the report's texts of a recording on standard output.
#pragma once

#include "host/analysis_client.h"
#include "host/command_line.h"

namespace kxhost {

// Each returns the program's exit code and throws RecordError when the recording cannot be read or the texts
// cannot be made.
int RunListFields(const ListFields& command, const AnalysisClient& analysis);
int RunExpand(const Expand& command, const AnalysisClient& analysis);

}  // namespace kxhost
