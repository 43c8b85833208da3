// The forms of kxhost that print, write or list and end.
#pragma once

#include "host/batch/command_line.h"
#include "host/clients/analysis_client.h"

namespace kxhost {

// Each returns the program's exit code. Throws RecordError when the recording cannot be read or measured, or
// what is asked for not be written or printed.
int RunMeasure(const Measure& command, const AnalysisClient& analysis);
int RunExportSignal(const ExportSignal& command, const AnalysisClient& analysis);
int RunInterpret(const InterpretRecord& command, const AnalysisClient& analysis);
int RunExportTable(const ExportTable& command, const AnalysisClient& analysis);
int RunListFields(const ListFields& command, const AnalysisClient& analysis);
int RunExpand(const Expand& command, const AnalysisClient& analysis);
int RunPrintToFile(const PrintToFile& command, const AnalysisClient& analysis);
int RunPrintToPrinter(const PrintToPrinter& command, const AnalysisClient& analysis);

}  // namespace kxhost
