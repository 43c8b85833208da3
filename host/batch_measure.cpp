#include "host/batch_measure.h"

#include "host/measurement_listing.h"
#include "host/record_session.h"
#include "host/standard_output.h"
#include "host/text_conversion.h"

namespace kxhost {

int RunMeasure(const Measure& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (!session->MeasuringFailure().empty())
        throw RecordError(ToUtf8(L"the median beat could not be measured: " + session->MeasuringFailure()));
    WriteOutput(ListMeasurements(session->BeatsMs(), session->RPeakMs(), session->Measurements()));
    return 0;
}

}  // namespace kxhost
