// How far the measured boundaries lie from the marked ones, over many records.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "bench/evaluation/reference.h"

namespace kx::evaluation {

// Errors of one boundary, measured minus marked, ms.
struct Errors {
    std::vector<double> values;
    int missed = 0;    // marked, not measured
    int invented = 0;  // measured, marked in no beat

    void Add(const Errors& more);
    double Mean() const;
    double Deviation() const;     // standard deviation, of n - 1
    double Percentile95() const;  // of the absolute errors
    double Largest() const;       // absolute
};

// A record's errors.
struct RecordErrors {
    int number = 0;
    std::string diagnosis;
    std::array<Errors, kBoundaries> global;
    std::array<std::array<Errors, kBoundaries>, recording::kLeadCount> leads;
};

RecordErrors Compare(const Reference& reference, const BeatPlaces& measured);

// Prints mean, standard deviation, 95th percentile and largest error of the global points and of the leads
// taken together, each beside what is aimed at; then P waves missed and invented, the points that lie far
// out, and the ten worst records. leadByLead: also a table of each lead.
void PrintTable(const char* title, const std::vector<RecordErrors>& records, bool leadByLead);

// Prints the errors of each record's global points.
void PrintRecords(const std::vector<RecordErrors>& records);

}  // namespace kx::evaluation
