// How far the measured boundaries lie from the marked ones, over many records.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tests/evaluation/boundaries.h"

namespace kx::evaluation {

// Errors of one boundary, measured minus marked, ms.
struct Errors {
    std::vector<double> values;
    int missed = 0;    // marked, not measured
    int invented = 0;  // measured, marked in no beat

    double Mean() const;
    double Deviation() const;     // standard deviation, of n - 1
    double Percentile95() const;  // of the absolute errors
};

// A record's errors.
struct RecordErrors {
    int number = 0;
    bool sinus = false;
    std::array<Errors, kBoundaries> global;
    std::array<Errors, kBoundaries> widestOfBeats;  // the same points against the other reference
    std::array<std::array<Errors, kBoundaries>, recording::kLeadCount> leads;
};

// What the measurement is to reach over the records in sinus rhythm: the largest standard deviation of each
// boundary, ms (0: none is set), and the largest mean of all of them.
inline constexpr std::array<double, kBoundaries> kLargestDeviation = {15, 15, 10, 12, 0, 25};
inline constexpr double kLargestMean = 5;

void Append(Errors& sum, const Errors& more);

RecordErrors Compare(const Reference& reference, const BeatPlaces& measured);

// Prints a table over the records: of the global points ("all leads", and "by beat" against the widest marks
// of each beat), of the leads taken together, and, when asked, of each lead. Every row also shows the records
// of odd and of even number apart: a constant that serves a few records only shows in the difference.
void PrintTable(const char* title, const std::vector<const RecordErrors*>& records, bool leadByLead);

// Prints the errors of each record's global points.
void PrintRecords(const std::vector<RecordErrors>& records);

}  // namespace kx::evaluation
