// The samples of WFDB signal files: from bytes to numbers, and over those that are missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// The format whose samples are the differences from those before: the header states what they begin from.
inline constexpr int kDifferencesFormat = 8;

// Whether samples of the format are read: 8, 16, 24, 32, 61, 80, 160, 212, 310 and 311 are.
bool IsSampleFormat(int format);

// How many samples of a format that is read so many bytes hold.
std::uint64_t SamplesIn(int format, std::uint64_t bytes);

// `count` samples, as they are stored. Fewer when bytes end before.
std::vector<std::int32_t> DecodeSamples(int format, std::span<const std::uint8_t> bytes, std::size_t count);

// The samples that have the value that stands for none.
std::vector<Gap> GapsOf(int format, std::span<const std::int32_t> samples);

}  // namespace kx::recording
