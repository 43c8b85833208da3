#include "host/batch_report.h"

#include <algorithm>

#include "host/library_texts.h"
#include "host/record_session.h"
#include "host/report_listing.h"
#include "host/standard_output.h"
#include "host/text_conversion.h"

namespace kxhost {
namespace {

const ReportRow& RowOfCode(const std::vector<ReportRow>& rows, int code) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [code](const ReportRow& r) { return r.code == code; });
    if (row == rows.end())
        throw RecordError("no report field has the code " + std::to_string(code));
    return *row;
}

std::string LineOf(const ReportRow& row) {
    return std::to_string(row.code) + '\t' + OneLine(std::string_view(ToUtf8(FromRecordText(row.text)))) +
           '\n';
}

}  // namespace

int RunListFields(const ListFields& command, const AnalysisClient& analysis) {
    const LibraryTexts texts;
    if (!texts.AreLoaded())
        throw RecordError(ToUtf8(texts.FailureText()));
    const auto session = RecordSession::Open(command.record, analysis);
    const std::vector<ReportRow> rows = ListReport(session->Test(), {texts, kx::UserLocale()});
    std::string output;
    if (command.codes.empty()) {
        for (const ReportRow& row : rows)
            output += LineOf(row);
    }
    for (const int code : command.codes)
        output += LineOf(RowOfCode(rows, code));
    WriteOutput(output);
    return 0;
}

int RunExpand(const Expand& command, const AnalysisClient& analysis) {
    const auto session = RecordSession::Open(command.record, analysis);
    const std::string text = ToRecordText(FromUtf8(command.text));
    WriteOutput(ToUtf8(FromRecordText(ExpandTemplate(session->Test(), text))) + '\n');
    return 0;
}

}  // namespace kxhost
