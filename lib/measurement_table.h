// The table of the wave amplitudes: one row per standard lead, one column per amplitude.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "include/kxdialogs.h"
#include "lib/leads.h"

namespace kx {

// An amplitude of a lead, microvolts.
struct AmplitudeColumn {
    const char* title;  // in exported tables
    const char* field;  // as the record names it
    const char* wave;
    std::int16_t KxLeadMeasurements::*value;
};

// In the order of the columns, behind the lead's own.
inline constexpr AmplitudeColumn kAmplitudeColumns[] = {
    {"aP1 (uV)", "aP1", "P", &KxLeadMeasurements::aP1},  {"aP2 (uV)", "aP2", "P'", &KxLeadMeasurements::aP2},
    {"aQ (uV)", "aQ", "Q", &KxLeadMeasurements::aQ},     {"aR (uV)", "aR", "R", &KxLeadMeasurements::aR},
    {"aS (uV)", "aS", "S", &KxLeadMeasurements::aS},     {"aR1 (uV)", "aR1", "R'", &KxLeadMeasurements::aR1},
    {"aS1 (uV)", "aS1", "S'", &KxLeadMeasurements::aS1}, {"aT1 (uV)", "aT1", "T", &KxLeadMeasurements::aT1},
    {"aT2 (uV)", "aT2", "T'", &KxLeadMeasurements::aT2}};
inline constexpr std::size_t kAmplitudeColumnCount = sizeof kAmplitudeColumns / sizeof kAmplitudeColumns[0];

inline constexpr char kLeadColumnTitle[] = "Deriv";

// The whole table as lines of cells joined by `separator` and ended by CR LF: the titles, then the twelve
// leads. With a tab it is what spreadsheets take from the clipboard; with a comma or a semicolon a CSV file
// (no cell holds one).
std::string MeasurementTableText(const KxMeasurementSet& set, char separator);

}  // namespace kx
