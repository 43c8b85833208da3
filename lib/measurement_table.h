// The table of the wave amplitudes: one row per standard lead, one column per amplitude.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "include/kxdialogs.h"

namespace kx {

// An amplitude of a lead, µV, and its title in exported tables.
struct AmplitudeColumn {
    const char* title;
    std::int16_t KxLeadMeasurements::*value;
};

// In the order of the columns, behind the lead's own.
inline constexpr AmplitudeColumn kAmplitudeColumns[] = {
    {"aP1 (uV)", &KxLeadMeasurements::aP1}, {"aP2 (uV)", &KxLeadMeasurements::aP2},
    {"aQ (uV)", &KxLeadMeasurements::aQ},   {"aR (uV)", &KxLeadMeasurements::aR},
    {"aS (uV)", &KxLeadMeasurements::aS},   {"aR1 (uV)", &KxLeadMeasurements::aR1},
    {"aS1 (uV)", &KxLeadMeasurements::aS1}, {"aT1 (uV)", &KxLeadMeasurements::aT1},
    {"aT2 (uV)", &KxLeadMeasurements::aT2}};
inline constexpr std::size_t kAmplitudeColumnCount = sizeof kAmplitudeColumns / sizeof kAmplitudeColumns[0];

inline constexpr char kLeadColumnTitle[] = "Deriv";

// "I" to "V6" for the lead codes 0 to 11, else "?".
const char* StandardLeadName(std::uint32_t leadCode);

// The whole table as lines of cells joined by `separator` and ended by CR LF: the titles, then the twelve
// leads. With a tab it is what spreadsheets take from the clipboard; with a comma or a semicolon a CSV file
// (no cell holds one).
std::string MeasurementTableText(const KxMeasurementSet& set, char separator);

}  // namespace kx
