#include "host/batch_table.h"

#include "host/record_session.h"
#include "host/text_conversion.h"

namespace kxhost {

int RunExportTable(const ExportTable& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (!session->MeasuringFailure().empty())
        throw RecordError(ToUtf8(L"the median beat could not be measured: " + session->MeasuringFailure()));
    if (!session->SaveTable(PathFromUtf8(command.file), command.format))
        throw RecordError(command.file + ": the table could not be written");
    return 0;
}

}  // namespace kxhost
