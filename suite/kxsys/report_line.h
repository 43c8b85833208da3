// How a report becomes one line of the log.
#pragma once

#include <cstddef>

namespace kx::sys {

// Local time of a report.
struct ReportTime {
    unsigned year, month, day, hour, minute, second, millisecond;
};

// A line of the length that the longest report can have: time and kind, a text in the longest frame around
// it.
inline constexpr std::size_t kLineSize = 2304;

// Makes a text fit for one line, in place: control characters become blanks, blanks at both ends go.
void TidyText(char* text);

// Writes "TIME <tab> KIND <tab> TEXT" into line, cut to its size and terminated. Returns its length.
std::size_t ComposeLine(char (&line)[kLineSize], const ReportTime& time, const char* kind, const char* text);

}  // namespace kx::sys
