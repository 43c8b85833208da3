#include "tests/evaluation/error_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>

namespace kx::evaluation {
namespace {

void CompareOne(const Places& reference, const std::array<bool, kBoundaries>& absent, const Places& measured,
                std::array<Errors, kBoundaries>& errors) {
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        if (reference[i] && measured[i]) {
            errors[i].values.push_back(*measured[i] - *reference[i]);
        }
        errors[i].missed += reference[i] && !measured[i];
        errors[i].invented += absent[i] && measured[i];
    }
}

using Selector = std::function<Errors(const RecordErrors&)>;
using Records = std::vector<const RecordErrors*>;

Errors Sum(const Records& records, const Selector& select, int parity) {
    Errors sum;
    for (const RecordErrors* record : records) {
        if (parity < 0 || record->number % 2 == parity) {
            Append(sum, select(*record));
        }
    }
    return sum;
}

void PrintRow(const char* scope, std::size_t boundary, const Records& records, const Selector& select) {
    const Errors all = Sum(records, select, -1);
    if (all.values.empty() && all.missed + all.invented == 0) {
        return;
    }
    const Errors odd = Sum(records, select, 1);
    const Errors even = Sum(records, select, 0);
    std::printf("%-9s %-8s %5zu  %+6.1f %6.1f %6.1f  %5d %5d   %+6.1f %6.1f   %+6.1f %6.1f", scope,
                kBoundaryNames[boundary], all.values.size(), all.Mean(), all.Deviation(), all.Percentile95(),
                all.missed, all.invented, odd.Mean(), odd.Deviation(), even.Mean(), even.Deviation());
    if (kLargestDeviation[boundary] > 0) {
        const bool met =
            std::fabs(all.Mean()) <= kLargestMean && all.Deviation() <= kLargestDeviation[boundary];
        std::printf("   %2.0f %s", kLargestDeviation[boundary], met ? "met" : "over");
    }
    std::printf("\n");
}

}  // namespace

void Append(Errors& sum, const Errors& more) {
    sum.values.insert(sum.values.end(), more.values.begin(), more.values.end());
    sum.missed += more.missed;
    sum.invented += more.invented;
}

double Errors::Mean() const {
    return values.empty()
               ? 0
               : std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double Errors::Deviation() const {
    if (values.size() < 2) {
        return 0;
    }
    const double mean = Mean();
    double sum = 0;
    for (const double value : values) {
        sum += (value - mean) * (value - mean);
    }
    return std::sqrt(sum / static_cast<double>(values.size() - 1));
}

double Errors::Percentile95() const {
    if (values.empty()) {
        return 0;
    }
    std::vector<double> sizes;
    std::transform(values.begin(), values.end(), std::back_inserter(sizes),
                   [](double value) { return std::fabs(value); });
    std::sort(sizes.begin(), sizes.end());
    const auto rank = static_cast<std::size_t>(std::ceil(0.95 * static_cast<double>(sizes.size())));
    return sizes[rank - 1];
}

RecordErrors Compare(const Reference& reference, const BeatPlaces& measured) {
    RecordErrors errors;
    // No field holds an onset of T on all leads together.
    Places global = reference.places.global, widest = reference.widestOfBeats;
    global[kTOn].reset();
    widest[kTOn].reset();
    CompareOne(global, reference.absentGlobal, measured.global, errors.global);
    CompareOne(widest, reference.absentGlobal, measured.global, errors.widestOfBeats);
    for (std::size_t lead = 0; lead < recording::kLeadCount; ++lead) {
        CompareOne(reference.places.leads[lead], reference.absent[lead], measured.leads[lead],
                   errors.leads[lead]);
    }
    return errors;
}

void PrintTable(const char* title, const Records& records, bool leadByLead) {
    std::printf("\n%s: %zu records. Errors in ms, measured minus marked.\n", title, records.size());
    std::printf("%-9s %-8s %5s  %6s %6s %6s  %5s %5s   %-13s   %-13s   %s\n", "", "", "n", "mean", "sd",
                "95 %", "miss.", "inv.", "odd: mean, sd", "even: mean,sd", "largest sd");
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        PrintRow("all leads", i, records, [i](const RecordErrors& record) { return record.global[i]; });
    }
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        PrintRow("by beat", i, records, [i](const RecordErrors& record) { return record.widestOfBeats[i]; });
    }
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        PrintRow("each lead", i, records, [i](const RecordErrors& record) {
            Errors sum;
            for (const auto& lead : record.leads) {
                Append(sum, lead[i]);
            }
            return sum;
        });
    }
    for (std::size_t lead = 0; leadByLead && lead < recording::kLeadCount; ++lead) {
        for (std::size_t i = 0; i < kBoundaries; ++i) {
            PrintRow(kLeadNames[lead], i, records,
                     [lead, i](const RecordErrors& record) { return record.leads[lead][i]; });
        }
    }
}

void PrintRecords(const std::vector<RecordErrors>& records) {
    std::printf("\nGlobal points of each record: error in ms, - not marked, missed, invented\n%7s", "record");
    for (const char* name : kBoundaryNames) {
        std::printf(" %9s", name);
    }
    std::printf("\n");
    for (const RecordErrors& record : records) {
        std::printf("%6d%c", record.number, record.sinus ? ' ' : '*');
        for (const Errors& errors : record.global) {
            if (!errors.values.empty()) {
                std::printf(" %+9.0f", errors.values[0]);
            } else {
                std::printf(" %9s", errors.missed ? "missed" : errors.invented ? "invented" : "-");
            }
        }
        std::printf("\n");
    }
}

}  // namespace kx::evaluation
