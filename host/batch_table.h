// kxhost --table: the table of the wave amplitudes of a recording as a file.
#pragma once

#include "host/analysis_client.h"
#include "host/command_line.h"

namespace kxhost {

// Returns the program's exit code. Throws RecordError when the recording cannot be read or measured, or the
// file not be written.
int RunExportTable(const ExportTable& command, const AnalysisClient& analysis);

}  // namespace kxhost
