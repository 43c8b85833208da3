// Reading of 12-lead recordings in the WFDB format: a header (.hea) with its signal files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

struct ReadOptions {
    // For headers whose gain is not to be believed: this many units in a millivolt on every lead, in place of
    // the header's gain and physical unit (the baseline stays). 0: as the header says.
    double unitsPerMv = 0;
};

// Longer recordings are refused: a resting ECG takes seconds, and everything is held in memory.
inline constexpr std::uint64_t kMostSamples = 1'000'000;  // per lead: 16 minutes at 1000 a second
inline constexpr double kLongestSeconds = 2000;           // however few samples they hold
// A QRS complex cannot be told below this rate, samples per second.
inline constexpr double kLowestSampleRate = 50;

// Reads the record whose header is `path`, with or without ".hea". Formats 16 and 212; leads I, II and V1 to
// V6 must be there, in any order, in one or several signal files; III, aVR, aVL and aVF are derived where
// they are not; other signals are ignored. A header without gain, or with gain 0, means 200 units per mV by
// the format's convention (a remark says so). Missing samples (-32768, in format 212 -2048) are bridged and
// listed as gaps.
//
// Nothing is returned, and `error` holds one line "file: reason", when the header or a signal file cannot be
// read, is malformed or shorter than the header says; a needed lead is missing, occurs twice, has no value at
// all, has several samples per frame, a skew, another format or a unit that is no voltage; the rate is below
// or the length above its limit; the first sample or the checksum (modulo 65536, written signed or unsigned)
// is not the header's: a signal that is not the one described is not shown as an ECG. Sizes are checked
// against the files before memory is taken.
std::optional<Recording> ReadWfdb(const std::filesystem::path& path, const ReadOptions& options,
                                  std::string& error);

// Gives the bytes of a file of at most `largest` bytes; nothing, and "file: reason" in `error`, when it
// cannot.
using FileBytes = std::function<std::optional<std::vector<std::uint8_t>>(
    const std::filesystem::path& file, std::uint64_t largest, std::string& error)>;

// The same with files from anywhere.
std::optional<Recording> ReadWfdb(const std::filesystem::path& path, const ReadOptions& options,
                                  const FileBytes& files, std::string& error);

// The same for a path as text (UTF-8) in POSIX or Windows form: on a POSIX system a backslash counts as a
// separator too when no such file exists.
std::optional<Recording> ReadWfdbAt(std::string_view path, const ReadOptions& options, std::string& error);

}  // namespace kx::recording
