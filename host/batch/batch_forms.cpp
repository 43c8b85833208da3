#include "host/batch/batch_forms.h"

#include <algorithm>
#include <memory>

#include "host/batch/standard_output.h"
#include "host/clients/interpretation_client.h"
#include "host/clients/library_client.h"
#include "host/clients/library_resources.h"
#include "host/printing/page_output.h"
#include "host/printing/print_page.h"
#include "host/printing/tracing_output.h"
#include "host/report/measurement_listing.h"
#include "host/report/report_listing.h"
#include "host/report/statement_listing.h"
#include "host/session/record_session.h"
#include "host/windows/text_conversion.h"
#include "lib/modules/system_services.h"

namespace kxhost {
namespace {

const ReportRow& RowOfCode(const std::vector<ReportRow>& rows, int code) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [code](const ReportRow& r) { return r.code == code; });
    if (row == rows.end()) {
        throw RecordError("no report field has the code " + std::to_string(code));
    }
    return *row;
}

std::string LineOf(const ReportRow& row) {
    return std::to_string(row.code) + '\t' + OneLine(std::string_view(ToUtf8(FromRecordText(row.text)))) +
           '\n';
}

void WriteSizes(const PageSizes& sizes) {
    WriteOutput("rawBytes\t" + std::to_string(sizes.raw) + "\npackedBytes\t" + std::to_string(sizes.packed) +
                '\n');
}

std::unique_ptr<PageImage> Draw(const RecordSession& session, const PrintSettings& settings) {
    return settings.lead ? DrawPage(DescribePage(session.Test(), *settings.lead), settings.paper)
                         : DrawTracingUpright(DescribeTracing(session.Test()));
}

}  // namespace

// Each recording on its own: one that cannot be read keeps none of the others from being printed.
int RunMeasure(const Measure& command, const AnalysisClient& analysis) {
    std::string output;
    std::string failures;
    for (const RecordRequest& record : command.records) {
        try {
            const auto session = RecordSession::Open(record, analysis);
            if (!session->MeasuringFailure().empty()) {
                throw RecordError(
                    ToUtf8(L"the median beat could not be measured: " + session->MeasuringFailure()));
            }
            const MeasuredRecord measured{record.path.empty() ? "--builtin" : record.path, session->BeatsMs(),
                                          session->RPeakMs(), session->Measurements()};
            if (command.json) {
                output += (output.empty() ? "" : ",\n") + MeasurementsJson(measured);
            } else {
                output += ListMeasurements(measured, command.records.size() > 1);
            }
        } catch (const RecordError& error) {
            failures += (failures.empty() ? "" : "; ") + std::string(error.what());
        }
    }
    if (command.json) {
        output = "[" + output + "]\n";
    }
    WriteOutput(output);
    if (!failures.empty()) {
        throw RecordError(failures);
    }
    return 0;
}

int RunExportSignal(const ExportSignal& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (!session->SaveSignal(PathFromUtf8(command.file), command.format)) {
        throw RecordError(command.file + ": the recording could not be written");
    }
    return 0;
}

int RunInterpret(const InterpretRecord& command, const AnalysisClient& analysis) {
    const LibraryClient library;
    if (!library.IsLoaded()) {
        throw RecordError(ToUtf8(library.FailureText()));
    }
    const LibraryResources texts;
    const auto session = RecordSession::Open(command.record, analysis);
    const std::wstring failure = InterpretationClient().Interpret(session->Test());
    if (!failure.empty()) {
        throw RecordError(ToUtf8(failure));
    }
    const std::string listing = ListStatements(session->Test().Episode(0)->interpretation.text, texts);
    WriteOutput(ToUtf8(FromRecordText(listing)));
    return 0;
}

int RunExportTable(const ExportTable& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (!session->MeasuringFailure().empty()) {
        throw RecordError(ToUtf8(L"the median beat could not be measured: " + session->MeasuringFailure()));
    }
    if (!session->SaveTable(PathFromUtf8(command.file), command.format)) {
        throw RecordError(command.file + ": the table could not be written");
    }
    return 0;
}

int RunListFields(const ListFields& command, const AnalysisClient& analysis) {
    const LibraryResources texts;
    if (!texts.AreLoaded()) {
        throw RecordError(ToUtf8(texts.FailureText()));
    }
    const auto session = RecordSession::Open(command.record, analysis);
    const std::vector<ReportRow> rows = ListReport(session->Test(), {texts, kx::UserLocale()});
    std::string output;
    if (command.codes.empty()) {
        for (const ReportRow& row : rows) {
            output += LineOf(row);
        }
    }
    for (const int code : command.codes) {
        output += LineOf(RowOfCode(rows, code));
    }
    WriteOutput(output);
    return 0;
}

int RunExpand(const Expand& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    const std::string text = ToRecordText(FromUtf8(command.text));
    WriteOutput(ToUtf8(FromRecordText(ExpandTemplate(session->Test(), text))) + '\n');
    return 0;
}

int RunPrintToFile(const PrintToFile& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (!command.settings.lead &&
        (command.format == PageFormat::kPdf || command.format == PageFormat::kPng)) {
        if (!SaveTracing(DescribeTracing(session->Test()), command.format, PathFromUtf8(command.file),
                         session->Title())) {
            throw RecordError(command.file + ": the page could not be written");
        }
        return 0;
    }
    const auto page = Draw(*session, command.settings);
    const PageSizes sizes = SizesOf(*page);
    if (!SavePage(*page, command.settings.paper, command.format, PathFromUtf8(command.file))) {
        throw RecordError(command.file + ": the page could not be written");
    }
    WriteSizes(sizes);
    return 0;
}

int RunPrintToPrinter(const PrintToPrinter& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    if (command.byDriver) {
        std::wstring reason;
        if (!PrintTracing(DescribeTracing(session->Test()), FromUtf8(command.printer), session->Title(),
                          reason)) {
            throw RecordError(command.printer + ": " + ToUtf8(reason));
        }
        return 0;
    }
    const auto page = Draw(*session, command.settings);
    const PageSizes sizes = SizesOf(*page);
    kx::SystemServices services(nullptr);
    if (!PrintPage(*page, command.settings.paper, ToSystemText(FromUtf8(command.printer)),
                   ToSystemText(session->Title()), services)) {
        throw RecordError(command.printer + ": the printer is not there, or refuses the page");
    }
    WriteSizes(sizes);
    return 0;
}

}  // namespace kxhost
