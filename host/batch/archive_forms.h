// The forms of kxhost that work on the archive and end.
#pragma once

#include "host/batch/command_line.h"
#include "host/clients/analysis_client.h"
#include "host/clients/system_log.h"

namespace kxhost {

// Each returns the program's exit code. Throws RecordError when there is no archive to work with, or what is
// asked for cannot be read or written.
int RunImport(const ImportRecords& command, SystemLog& log, const AnalysisClient& analysis);
int RunListTests(const ListTests& command, SystemLog& log);
int RunExportTest(const ExportTest& command, SystemLog& log);

}  // namespace kxhost
