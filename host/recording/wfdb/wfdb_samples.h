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

// The samples that have the value that stands for none.
std::vector<Gap> GapsOf(std::span<const std::int16_t> samples, std::int16_t missing);

}  // namespace kx::recording
