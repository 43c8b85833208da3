// kxhost --print and --print-to: the page of one lead into a file or to a printer.
#pragma once

#include "host/analysis_client.h"
#include "host/command_line.h"

namespace kxhost {

// Each returns the program's exit code and throws RecordError when the recording cannot be read, or the page
// not be written or printed.
int RunPrintToFile(const PrintToFile& command, const AnalysisClient& analysis);
int RunPrintToPrinter(const PrintToPrinter& command, const AnalysisClient& analysis);

}  // namespace kxhost
