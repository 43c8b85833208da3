// Reading of 12-lead recordings in the WFDB format: a header (.hea) with its signal files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/recording/file_bytes.h"
#include "host/recording/recording.h"

namespace kx::recording {

struct ReadOptions {
    // For headers whose gain is not to be believed: this many units in a millivolt on every lead, in place of
    // the header's gain and physical unit (the baseline stays). 0: as the header says.
    double unitsPerMv = 0;
};

// Reads the record whose header is `path`, with or without ".hea". The formats of
// IsSampleFormat; the leads, in any
// order, in one or several signal files, as signal_groups.h wants them; other signals are ignored. A header
// without gain, or with gain 0, means 200 units per mV by the format's convention (a remark says so). Missing
// samples (of the lowest value that the format has, as -32768 in format 16) are bridged and listed as gaps.
//
// Nothing is returned, and `error` holds one line "file: reason", when the header or a signal file cannot be
// read, is malformed or shorter than the header says; a needed lead is missing, occurs twice, has no value at
// all, has several samples per frame, a skew, another format or a unit that is no voltage; the rate is below
// or the length above its limit; the first sample or the checksum (modulo 65536, written signed or unsigned)
// is not the header's: a signal that is not the one described is not shown as an ECG. Sizes are checked
// against the files before memory is taken.
std::optional<Recording> ReadWfdb(const std::filesystem::path& path, const ReadOptions& options,
                                  std::string& error);

// The same with files from anywhere.
std::optional<Recording> ReadWfdb(const std::filesystem::path& path, const ReadOptions& options,
                                  const FileBytes& files, std::string& error);

// The same for a header under any name: nothing is put behind the path.
std::optional<Recording> ReadWfdbHeader(const std::filesystem::path& headerFile, const ReadOptions& options,
                                        const FileBytes& files, std::string& error);

// Whether the name ends in ".hea", in any letter case.
bool HasHeaderExtension(const std::filesystem::path& path);

}  // namespace kx::recording
