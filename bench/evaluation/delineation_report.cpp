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
#include "bench/evaluation/training_beats.h"

namespace {

using namespace kx::evaluation;

constexpr char kUsage[] =
    "delineation_report FOLDER [--leads] [--records] [--degraded] [--training FOLDER]\n"
    "  --leads     a table of each lead\n"
    "  --records   the errors of each record\n"
    "  --degraded  instead: how far the points move when the same records are degraded\n"
    "  --training  instead: write the beats for tools/train_delineator.py\n";

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

// A network for every record: that of its fold, or the one that is shipped.
class Networks {
  public:
    // folder: of the folds' tables; null for the shipped one.
    explicit Networks(const char* folder) {
        std::string error;
        for (std::size_t fold = 0; folder && fold < kFolds; ++fold) {
            const auto file = std::filesystem::path(folder) / ("fold" + std::to_string(fold) + ".weights");
            auto weights = FoldWeights::Read(file, error);
            if (!weights) {
                Fail(error);
            }
            weights_.push_back(std::move(*weights));
        }
        for (const FoldWeights& fold : weights_) {
            tables_.push_back(fold.Networks());
        }
        for (std::size_t fold = 0; fold < kFolds; ++fold) {
            workspaces_.push_back(std::make_unique<kx::analysis::Workspace>(
                folder ? tables_[fold] : kx::analysis::kTrainedNetworks));
        }
    }
    kx::analysis::Workspace& Of(std::size_t record) { return *workspaces_[FoldOf(record)]; }

  private:
    std::vector<FoldWeights> weights_;
    std::vector<kx::analysis::TrainedNetworks> tables_;
    std::vector<std::unique_ptr<kx::analysis::Workspace>> workspaces_;
};

std::vector<RecordErrors> JudgeAll(const std::vector<MarkedRecord>& records, Networks& networks) {
    std::vector<RecordErrors> errors;
    for (std::size_t n = 0; n < records.size(); ++n) {
        std::string refusal;
        if (const auto measured = Measure(records[n].recording, networks.Of(n), refusal)) {
            errors.push_back(Judge(records[n], *measured));
        } else {
            std::printf("record %d is refused: %s\n", records[n].number, refusal.c_str());
        }
    }
    return errors;
}

void PrintDegraded(const std::vector<MarkedRecord>& records, Networks& networks) {
    std::printf(
        "How far the global points move when the same %zu records are degraded: mean / sd / 95th percentile "
        "of the\n"
        "absolute movement, ms; records refused; P waves lost and gained.\n%-26s",
        records.size(), "");
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        if (i != kTOn) {
            std::printf(" %18s", kBoundaryNames[i]);
        }
    }
    std::printf(" %8s %5s %5s\n", "refused", "P -", "P +");
    const std::vector<RecordErrors> whole = JudgeAll(records, networks);
    for (const Degradation& degradation : kDegradations) {
        std::array<Errors, kBoundaries> moved;
        int refused = 0, lost = 0, gained = 0;
        for (std::size_t k = 0; k < records.size(); ++k) {
            MarkedRecord record = records[k];
            const int cutMs = degradation.apply(record.recording);
            std::string refusal;
            auto measured = Measure(record.recording, networks.Of(k), refusal);
            if (!measured) {
                ++refused;
                continue;
            }
            for (int& beat : measured->beatsMs) {
                beat += cutMs;
            }
            const RecordErrors errors = Judge(record, *measured);
            lost += errors.global[kPOn].missed - whole[k].global[kPOn].missed > 0;
            gained += errors.global[kPOn].invented - whole[k].global[kPOn].invented > 0;
            for (std::size_t i = 0; i < kBoundaries; ++i) {
                if (!errors.global[i].values.empty() && !whole[k].global[i].values.empty()) {
                    moved[i].values.push_back(errors.global[i].values[0] - whole[k].global[i].values[0]);
                }
            }
        }
        std::printf("%-26s", degradation.name);
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            if (i != kTOn) {
                std::printf(" %+6.1f/%5.1f/%5.1f", moved[i].Mean(), moved[i].Deviation(),
                            moved[i].Percentile95());
            }
        }
        std::printf(" %8d %5d %5d\n", refused, lost, gained);
        std::fflush(stdout);
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
    char** const folds = option("--folds");
    Networks networks(folds && folds + 1 < argv + argc ? folds[1] : nullptr);
    if (option("--degraded")) {
        PrintDegraded(ReadRecords(argv[1], Scale::kTrue), networks);
        return 0;
    }
    if (char** const training = option("--training"); training && training + 1 < argv + argc) {
        std::string error;
        for (const MarkedRecord& record : ReadRecords(argv[1], Scale::kTrue)) {
            if (!WriteTrainingBeats(training[1], record, error)) {
                Fail(error);
            }
        }
        return 0;
    }
    const auto judged = JudgeAll(ReadRecords(argv[1], Scale::kTrue), networks);
    PrintTable("All records, one unit = 1 uV", judged, option("--leads"));
    PrintTable("All records, by the gains of their headers",
               JudgeAll(ReadRecords(argv[1], Scale::kHeader), networks), false);
    if (option("--records")) {
        PrintRecords(judged);
    }
    return 0;
}
