// Judges the measurement of the median beat against the marks of the Lobachevsky University
// Electrocardiography Database (A. I. Kalyakulina et al., IEEE Access 8, 186181-186190, 2020): every record
// is read, its median beat made and measured as the workstation does it, and each boundary compared with the
// cardiologists' marks of the same beats.
//
// delineation_report FOLDER [--leads] [--records]
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/recording/median_beat.h"
#include "host/recording/wfdb_reader.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/evaluation/boundaries.h"
#include "tests/evaluation/error_table.h"
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

int Run(const fs::path& folder, bool leadByLead, bool recordByRecord) {
    std::vector<RecordErrors> records;
    for (const int number : RecordNumbers(folder)) {
        std::string error;
        auto errors = Evaluate(folder / (std::to_string(number) + ".hea"), error);
        if (!errors) {
            std::fprintf(stderr, "%s\n", error.c_str());
            return 1;
        }
        errors->number = number;
        records.push_back(std::move(*errors));
    }
    if (records.empty()) {
        std::fprintf(stderr, "%s: no recordings in this folder\n", folder.string().c_str());
        return 1;
    }
    std::vector<const RecordErrors*> all, sinus;
    for (const RecordErrors& record : records) {
        all.push_back(&record);
        if (record.sinus) {
            sinus.push_back(&record);
        }
    }
    PrintTable("Sinus rhythm", sinus, leadByLead);
    PrintTable("All records", all, false);
    if (recordByRecord) {
        PrintRecords(records);
    }
    return 0;
}

}  // namespace
}  // namespace kx::evaluation

int main(int argc, char** argv) {
    const auto given = [&](const char* option) {
        return std::any_of(argv + std::min(argc, 2), argv + argc,
                           [&](const char* argument) { return std::strcmp(argument, option) == 0; });
    };
    if (argc < 2) {
        std::fprintf(stderr, "delineation_report FOLDER [--leads] [--records]\n");
        return 2;
    }
    return kx::evaluation::Run(argv[1], given("--leads"), given("--records"));
}
