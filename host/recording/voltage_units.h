// Units of voltage as files write them.
#pragma once

#include <optional>
#include <string_view>

namespace kx::recording {

// Microvolts in one unit: "uV" with a u or either micro sign (UTF-8, and the sign in Windows-1252), "mV",
// "V", "nV", in any letter case, since some write the case-insensitive codes of UCUM. Nothing for a unit that
// is no voltage.
std::optional<double> MicrovoltsOfUnit(std::string_view unit);

}  // namespace kx::recording
