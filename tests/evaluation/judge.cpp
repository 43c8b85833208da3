#include "tests/evaluation/judge.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "host/recording/median_beat.h"
#include "host/recording/wfdb_reader.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/evaluation/boundaries.h"
#include "tests/evaluation/marked_beats.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::evaluation {
namespace {

namespace fs = std::filesystem;

// The database's headers state each lead's peak-to-peak value as its gain; its units are microvolts.
constexpr double kUnitsPerMv = 1000;

// Extensions of the annotation files, in the order of the lead codes.
constexpr std::array<const char*, recording::kLeadCount> kExtensions = {
    ".i", ".ii", ".iii", ".avr", ".avl", ".avf", ".v1", ".v2", ".v3", ".v4", ".v5", ".v6"};

bool Contains(const std::vector<std::string>& statements, const char* word) {
    return std::any_of(statements.begin(), statements.end(), [&](const std::string& statement) {
        return statement.find(word) != std::string::npos;
    });
}

// The atria drive the ventricles: sinus rhythm of any rate and regularity, without a pacemaker.
bool IsSinusRhythm(const recording::Recording& recording) {
    return (Contains(recording.diagnoses, "sinus") || Contains(recording.diagnoses, "Sinus")) &&
           !Contains(recording.diagnoses, "pacing");
}

std::optional<RecordErrors> Evaluate(const fs::path& header, std::string& error) {
    const auto recording = recording::ReadWfdb(header, {.unitsPerMv = kUnitsPerMv}, error);
    if (!recording) {
        return std::nullopt;
    }
    const auto beat = recording::MakeMedianBeat(*recording, error);
    if (!beat) {
        return std::nullopt;
    }
    std::vector<std::vector<MarkedBeat>> marks;
    for (const char* extension : kExtensions) {
        auto beats =
            ReadMarkedBeats(fs::path(header).replace_extension(extension), recording->sampleRate, error);
        if (!beats) {
            return std::nullopt;
        }
        marks.push_back(std::move(*beats));
    }
    analysis::Episode episode({beat->leads.begin(), beat->leads.end()}, recording::kWorkingRate,
                              recording::kResolutionNv);
    episode.Set().rrInterval = static_cast<std::uint16_t>(beat->rrMs);
    if (analysis::MeasureEpisode(episode.Get()) == 0) {
        error = header.string() + ": the median beat cannot be measured";
        return std::nullopt;
    }
    RecordErrors errors = Compare(MakeReference(marks, beat->alignedMs, recording::kAlignmentMs),
                                  MeasuredPlaces(episode.Set()));
    errors.sinus = IsSinusRhythm(*recording);
    return errors;
}

// The numbers of the records in a folder, ascending.
std::vector<int> RecordNumbers(const fs::path& folder) {
    std::vector<int> numbers;
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, failure)) {
        const std::string name = entry.path().stem().string();
        int number = 0;
        const auto [end, bad] = std::from_chars(name.data(), name.data() + name.size(), number);
        if (entry.path().extension() == ".hea" && bad == std::errc{} && end == name.data() + name.size()) {
            numbers.push_back(number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

}  // namespace

std::optional<std::vector<RecordErrors>> JudgeRecords(const fs::path& folder, std::string& error) {
    std::vector<RecordErrors> records;
    for (const int number : RecordNumbers(folder)) {
        auto errors = Evaluate(folder / (std::to_string(number) + ".hea"), error);
        if (!errors) {
            return std::nullopt;
        }
        errors->number = number;
        records.push_back(std::move(*errors));
    }
    if (records.empty()) {
        error = folder.string() + ": no recordings in this folder";
        return std::nullopt;
    }
    return records;
}

std::vector<const RecordErrors*> SinusRecords(const std::vector<RecordErrors>& records) {
    std::vector<const RecordErrors*> sinus;
    for (const RecordErrors& record : records) {
        if (record.sinus) {
            sinus.push_back(&record);
        }
    }
    return sinus;
}

}  // namespace kx::evaluation
