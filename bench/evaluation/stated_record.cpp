#include "bench/evaluation/stated_record.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "host/recording/test_builder.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxanalyze/delineator.h"
#include "suite/kxinterp/interpreter.h"

namespace kx::evaluation {

namespace fs = std::filesystem;

namespace {

// The database's headers state each lead's peak-to-peak value as its gain; its units are microvolts.
constexpr double kUnitsPerMv = 1000;

}  // namespace

bool StatedRecord::States(std::uint16_t code) const {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool StatedRecord::IsDiagnosed(std::string_view beginning) const {
    return std::any_of(diagnoses.begin(), diagnoses.end(), [beginning](const std::string& diagnosis) {
        return diagnosis.starts_with(beginning);
    });
}

std::optional<StatedRecord> StateRecord(const fs::path& header, analysis::Workspace& workspace,
                                        std::string& error) {
    const auto recording = recording::ReadWfdb(header, {.unitsPerMv = kUnitsPerMv}, error);
    if (!recording) {
        return std::nullopt;
    }
    const auto beat = recording::MakeMedianBeat(*recording, error);
    if (!beat) {
        return std::nullopt;
    }
    TestRecord test;
    EpisodeRecord* episode = recording::FillTestRecord(test, *recording, *beat);
    if (episode == nullptr || analysis::MeasureEpisode(episode, workspace) == 0) {
        error = header.string() + ": the median beat cannot be measured";
        return std::nullopt;
    }
    StatedRecord record;
    record.name = header.stem().string();
    record.diagnoses = recording->diagnoses;
    record.set = episode->measurements;
    // Modules of the suite know a store by what it begins with.
    record.codes =
        interp::StatementCodes(record.set, reinterpret_cast<const KxAnnotationStore*>(test.Annotations()));
    return record;
}

std::vector<StatedRecord> StateRecords(const fs::path& folder, FoldNetworks& networks,
                                       std::vector<std::string>& errors) {
    std::map<int, fs::path> headers;
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, failure)) {
        const std::string name = entry.path().stem().string();
        int number = 0;
        const auto [end, bad] = std::from_chars(name.data(), name.data() + name.size(), number);
        if (entry.path().extension() == ".hea" && bad == std::errc{} && end == name.data() + name.size()) {
            headers[number] = entry.path();
        }
    }
    std::vector<StatedRecord> records;
    for (const auto& [number, header] : headers) {
        std::string error;
        if (auto record = StateRecord(header, networks.Of(number), error)) {
            records.push_back(std::move(*record));
        } else {
            errors.push_back(error);
        }
    }
    return records;
}

}  // namespace kx::evaluation
