// What the readers of marked recordings wrote, and which statements say the same.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kx::evaluation {

// A finding is read in a recording when one of its diagnoses begins with one of these, and stated when one of
// these codes is. Unused places are empty.
struct Finding {
    std::string_view name;
    std::string_view diagnoses[6];
    std::uint16_t codes[10];
    // What is asked of the statements, per cent; 0: nothing is.
    int sensitivity;
    int specificity;
};

std::span<const Finding> Findings();

// The classes of the rhythm by what drives it: a recording belongs to the first whose finding it has.
std::span<const Finding> RhythmClasses();

// Left and right deviation of the axis; a recording with neither lies between them.
std::span<const Finding> AxisClasses();

}  // namespace kx::evaluation
