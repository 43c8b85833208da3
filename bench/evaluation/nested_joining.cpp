#include "bench/evaluation/nested_joining.h"

#include <cstdio>
#include <string>

namespace kx::evaluation {
namespace {

struct Constant {
    double analysis::Joining::*value;
    Boundary boundary;
    bool ofLeads;  // else of all leads together
    std::vector<double> candidates;

    Errors ErrorsOf(const RecordErrors& record) const {
        if (!ofLeads) {
            return record.global[boundary];
        }
        Errors sum;
        for (const auto& lead : record.leads) {
            sum.Add(lead[boundary]);
        }
        return sum;
    }
};
const Constant kConstants[] = {
    {&analysis::Joining::onsetByRules, kQrsOn, false, {0, 0.25, 0.5, 0.6, 0.7, 0.75, 0.8, 0.9, 1}},
    {&analysis::Joining::offsetByRules, kQrsOff, false, {0, 0.1, 0.2, 0.25, 0.3, 0.4, 0.5, 0.75, 1}},
    {&analysis::Joining::lateQuantile, kTOff, false, {0.5, 0.6, 0.7, 0.75, 0.8, 0.85, 0.9, 0.95, 1}},
    {&analysis::Joining::earlyPOff, kPOff, true, {0, 0.2, 0.3, 0.4, 0.5, 0.6, 0.8}},
    {&analysis::Joining::pOffByRules, kPOff, true, {0, 0.04, 0.08, 0.12, 0.16, 0.2, 0.3}},
};

// Of one candidate: the errors of the point by the fold that their record belongs to.
using ErrorsOfFolds = std::array<Errors, kFolds>;

Errors OfOthers(const ErrorsOfFolds& folds, std::size_t left) {
    Errors sum;
    for (std::size_t fold = 0; fold < kFolds; ++fold) {
        if (fold != left) {
            sum.Add(folds[fold]);
        }
    }
    return sum;
}

void Print(const Constant& constant, const std::vector<ErrorsOfFolds>& candidates) {
    Errors nested;
    std::string chosen;
    for (std::size_t fold = 0; fold < kFolds; ++fold) {
        const auto best =
            std::min_element(candidates.begin(), candidates.end(), [&](const auto& a, const auto& b) {
                return OfOthers(a, fold).Deviation() < OfOthers(b, fold).Deviation();
            });
        const double mean = OfOthers(*best, fold).Mean();
        for (const double value : (*best)[fold].values) {
            nested.values.push_back(value - mean);
        }
        char word[16];
        std::snprintf(word, sizeof word, " %.2f",
                      constant.candidates[static_cast<std::size_t>(best - candidates.begin())]);
        chosen += word;
    }
    std::printf("%s %-8s %+6.1f %6.1f %6.1f   chosen:%s\n", constant.ofLeads ? "each lead" : "all leads",
                kBoundaryNames[constant.boundary], nested.Mean(), nested.Deviation(), nested.Percentile95(),
                chosen.c_str());
    std::fflush(stdout);
}

}  // namespace

bool PrintNestedJoining(const std::filesystem::path& folds, const JudgeRecords& judge, std::string& error) {
    std::printf(
        "The constants that join rules and networks chosen for each fold by the other four. Points of all "
        "leads and of each, ms:\n"
        "mean, standard deviation, 95th percentile of the absolute error; the constants of the folds.\n");
    for (const Constant& constant : kConstants) {
        std::vector<ErrorsOfFolds> candidates;
        for (const double candidate : constant.candidates) {
            analysis::Joining joining;
            joining.*constant.value = candidate;
            const auto networks = FoldNetworks::Read(folds, error, joining);
            if (!networks) {
                return false;
            }
            ErrorsOfFolds errors;
            for (const RecordErrors& record : judge(*networks)) {
                if (const auto fold = networks->FoldOf(record.number)) {
                    errors[*fold].Add(constant.ErrorsOf(record));
                }
            }
            candidates.push_back(std::move(errors));
        }
        Print(constant, candidates);
    }
    return true;
}

}  // namespace kx::evaluation
