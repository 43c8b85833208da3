// kxhost --shot: a picture of a pane or of the whole window.
#pragma once

#include "host/batch/command_line.h"
#include "host/clients/analysis_client.h"
#include "host/clients/library_client.h"
#include "host/clients/system_log.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

// Returns the program's exit code. Throws RecordError when the recording cannot be read or the picture not be
// made.
int RunShot(const Shot& command, SystemLog& log, const LibraryClient& library, const AnalysisClient& analysis,
            const UiMetrics& metrics);

}  // namespace kxhost
