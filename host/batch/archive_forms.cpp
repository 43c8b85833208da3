#include "host/batch/archive_forms.h"

#include <algorithm>
#include <string>

#include "host/batch/standard_output.h"
#include "host/clients/archive_client.h"
#include "host/session/record_session.h"
#include "host/windows/text_conversion.h"
#include "host/worklist/listing_words.h"

namespace kxhost {
namespace {

constexpr std::uint32_t kPage = 256;  // tests that are asked for at once

// The reason for which it does not open has been reported by the module, last.
void RequireArchive(const ArchiveClient& archive, SystemLog& log) {
    if (archive.IsAvailable()) {
        return;
    }
    std::wstring reason;
    const LogListening listening(log,
                                 [&reason](const std::wstring&, const std::wstring& text) { reason = text; });
    throw RecordError(ToUtf8(archive.FailureText() + (reason.empty() ? L"" : L": " + reason)));
}

std::string LineOf(const ArchivedLine& line) {
    return std::to_string(line.key.id) + '\t' + ToUtf8(DateText(line.time)) + '\t' +
           ToUtf8(NameText(line.name)) + '\t' + ToUtf8(FromRecordText(line.patientId)) + '\t' +
           ToUtf8(TestTypeText(line.testType)) + '\t' + ToUtf8(StateText(line.stateFlags)) + '\n';
}

}  // namespace

// Each recording on its own: one that cannot be read keeps none of the others out.
int RunImport(const ImportRecords& command, SystemLog& log, const AnalysisClient& analysis) {
    const ArchiveClient archive(command.archive);
    RequireArchive(archive, log);
    std::string failures;
    for (const RecordRequest& record : command.records) {
        try {
            const auto session = RecordSession::Open(record, analysis);
            const ArchiveClient::Result saved = session->Save(archive);
            if (saved.answer != kx::kArchiveDone) {
                throw RecordError(record.path + ": " + ToUtf8(saved.text));
            }
            WriteOutput(std::to_string(session->Key().id) + '\t' +
                        (record.path.empty() ? "--builtin" : record.path) + '\n');
        } catch (const RecordError& error) {
            failures += (failures.empty() ? "" : "; ") + std::string(error.what());
        }
    }
    if (!failures.empty()) {
        throw RecordError(failures);
    }
    return 0;
}

int RunListTests(const ListTests& command, SystemLog& log) {
    const ArchiveClient archive(command.archive);
    RequireArchive(archive, log);
    kx::ArchiveFilter filter{};
    filter.size = sizeof filter;
    const std::string words = ToRecordText(FromUtf8(command.filter));
    if (words.size() >= sizeof filter.words) {
        throw RecordError("the filter is longer than " + std::to_string(sizeof filter.words - 1) +
                          " characters");
    }
    std::copy(words.begin(), words.end(), filter.words);
    for (std::uint32_t first = 0;; first += kPage) {
        const auto lines = archive.List(filter, kx::kArchiveNewestFirst, first, kPage);
        std::string output;
        for (const ArchivedLine& line : lines) {
            output += LineOf(line);
        }
        WriteOutput(output);
        if (lines.size() < kPage) {
            return 0;
        }
    }
}

int RunExportTest(const ExportTest& command, SystemLog& log) {
    const ArchiveClient archive(command.archive);
    RequireArchive(archive, log);
    const auto session = RecordSession::OpenArchived(archive, {command.id, 0});
    if (!session->Export(PathFromUtf8(command.file), command.format)) {
        throw RecordError(command.file + ": the test could not be written");
    }
    return 0;
}

}  // namespace kxhost
