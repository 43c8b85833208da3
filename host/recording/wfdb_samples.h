// The samples of WFDB signal files: from bytes to numbers, and over those that are missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// `count` samples of format 16: two's complement, low byte first. Fewer when bytes end before.
std::vector<std::int16_t> Decode16(std::span<const std::uint8_t> bytes, std::size_t count);

// `count` samples of format 212: pairs of 12-bit two's complement numbers in three bytes. Fewer when bytes
// end before.
std::vector<std::int16_t> Decode212(std::span<const std::uint8_t> bytes, std::size_t count);

// Bridges the samples of no value by straight lines (the ends by the nearest value) in the lead made from
// them, of the same length, and lists them. False when none has a value.
bool Bridge(std::vector<float>& lead, std::span<const std::int16_t> samples, std::int16_t missing,
            std::vector<Gap>& gaps);

// Joins more gaps to those of a recording, which are kept in order and apart.
void AddGaps(std::vector<Gap>& gaps, const std::vector<Gap>& more);

}  // namespace kx::recording
