// Prints how far the measurement lies from the cardiologists' marks; see kUsage.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "bench/evaluation/degradations.h"
#include "bench/evaluation/fold_weights.h"
#include "bench/evaluation/judge.h"
#include "bench/evaluation/nested_joining.h"
#include "bench/evaluation/training_beats.h"

namespace {

using namespace kx::evaluation;

constexpr char kUsage[] =
    "delineation_report FOLDER [--leads] [--records] [--shipped] [--degraded] [--nested] [--training "
    "FOLDER]\n"
    "  --leads     a table of each lead\n"
    "  --records   the errors of each record\n"
    "  --shipped   by the network that is shipped, which has seen the records, not by those of the folds\n"
    "  --degraded  instead: how far the points move when the same records are degraded\n"
    "  --nested    instead: with the constants that join rules and networks chosen for each fold by the "
    "others\n"
    "  --training  instead: write the beats for tools/delineator/train.py\n";

[[noreturn]] void Fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(1);
}

std::vector<MarkedRecord> ReadRecords(const char* folder, Scale scale) {
    std::vector<MarkedRecord> records;
    std::string error;
    for (const int number : RecordNumbers(folder)) {
        auto record = ReadMarkedRecord(folder, number, scale, error);
        if (!record) {
            Fail(error);
        }
        records.push_back(std::move(*record));
    }
    if (records.empty()) {
        Fail(std::string(folder) + ": no recordings in this folder");
    }
    return records;
}

std::vector<RecordErrors> JudgeAll(const std::vector<MarkedRecord>& records, FoldNetworks& networks) {
    std::vector<RecordErrors> errors;
    for (const MarkedRecord& record : records) {
        std::string refusal;
        if (const auto measured = Measure(record.recording, networks.Of(record.number), refusal)) {
            errors.push_back(Judge(record, *measured));
        } else {
            std::printf("record %d is refused: %s\n", record.number, refusal.c_str());
        }
    }
    return errors;
}

// How far the points of all leads have moved from where they were measured in the whole recordings.
struct Movements {
    std::array<Errors, kBoundaries> moved;
    int refused = 0, lost = 0, gained = 0, exchanged = 0;

    void Add(const RecordErrors& before, const RecordErrors& after) {
        lost += after.global[kPOn].missed - before.global[kPOn].missed > 0;
        gained += after.global[kPOn].invented - before.global[kPOn].invented > 0;
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            if (!after.global[i].values.empty() && !before.global[i].values.empty()) {
                moved[i].values.push_back(after.global[i].values[0] - before.global[i].values[0]);
            }
        }
    }

    void Print(const char* name) const {
        std::printf("| %s ", name);
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            if (i != kTOn) {
                std::printf("| %+.1f, %.1f, %.0f ", moved[i].Mean(), moved[i].Deviation(),
                            moved[i].Percentile95());
            }
        }
        std::printf("| %d | %d, %d | %d |\n", refused, lost, gained, exchanged);
        std::fflush(stdout);
    }
};

Movements Degrade(const std::vector<MarkedRecord>& records, const Degradation& degradation,
                  FoldNetworks& networks) {
    Movements movements;
    for (const MarkedRecord& whole : records) {
        std::string refusal;
        const auto before = Measure(whole.recording, networks.Of(whole.number), refusal);
        MarkedRecord record = whole;
        const int cutMs = degradation.apply(record.recording);
        auto after = Measure(record.recording, networks.Of(record.number), refusal);
        if (!before || !after) {
            ++movements.refused;
            continue;
        }
        for (int& beat : after->beatsMs) {
            beat += cutMs;
        }
        movements.exchanged += after->electrodesExchanged;
        movements.Add(Judge(record, *before), Judge(record, *after));
    }
    return movements;
}

void PrintDegraded(const std::vector<MarkedRecord>& records, FoldNetworks& networks) {
    std::printf(
        "How far the global points move when the same %zu records are degraded, ms: mean, standard "
        "deviation, 95th\npercentile of the absolute movement. P: waves lost and gained.\n\n"
        "| | P on | P off | QRS on | QRS off | T off | refused | P | electrodes remarked |\n"
        "|---|---|---|---|---|---|---|---|---|\n",
        records.size());
    for (const Degradation& degradation : kDegradations) {
        Degrade(records, degradation, networks).Print(degradation.name);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto option = [&](const char* name) -> char** {
        char** const end = argv + argc;
        char** const found = std::find_if(argv + std::min(argc, 2), end, [&](const char* argument) {
            return std::strcmp(argument, name) == 0;
        });
        return found == end ? nullptr : found;
    };
    if (argc < 2) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    std::string error;
    if (char** const training = option("--training"); training && training + 1 < argv + argc) {
        for (const MarkedRecord& record : ReadRecords(argv[1], Scale::kTrue)) {
            if (!WriteTrainingBeats(training[1], record, error)) {
                Fail(error);
            }
        }
        return 0;
    }
    const auto networks =
        option("--shipped") ? std::make_unique<FoldNetworks>() : FoldNetworks::Read(KX_FOLDS, error);
    if (!networks) {
        Fail(error);
    }
    if (option("--degraded")) {
        PrintDegraded(ReadRecords(argv[1], Scale::kTrue), *networks);
        return 0;
    }
    if (option("--nested")) {
        for (const Scale scale : {Scale::kTrue, Scale::kHeader}) {
            const auto records = ReadRecords(argv[1], scale);
            const auto judge = [&](FoldNetworks& folds) { return JudgeAll(records, folds); };
            if (!PrintNestedJoining(KX_FOLDS, judge, error)) {
                Fail(error);
            }
        }
        return 0;
    }
    const auto judged = JudgeAll(ReadRecords(argv[1], Scale::kTrue), *networks);
    PrintTable("All records, one unit = 1 uV", judged, option("--leads"));
    PrintTable("All records, by the gains of their headers",
               JudgeAll(ReadRecords(argv[1], Scale::kHeader), *networks), false);
    if (option("--records")) {
        PrintRecords(judged);
    }
    return 0;
}
