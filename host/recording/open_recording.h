// A recording from a file of any kind that is read.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "host/recording/recording.h"
#include "host/recording/wfdb/wfdb_reader.h"

namespace kx::recording {

enum class FileKind { kUnknown, kWfdbHeader, kScp, kDicom, kXml };

// What a file is by its first bytes (all of it, or at least 1024), whatever its name is.
FileKind KindOf(std::span<const std::uint8_t> bytes);

// Reads the file, or the WFDB record of that name without ".hea". Nothing, and one line "file: reason" in
// `error`, when it is of no kind that is read, cut or contradictory; of a file that can be told apart the
// reason says where.
std::optional<Recording> OpenRecording(const std::filesystem::path& path, const ReadOptions& options,
                                       std::string& error);

// The same for the bytes of a file that stands alone (SCP-ECG, DICOM, HL7 aECG); `name` is the recording's.
std::optional<Recording> ReadRecordingBytes(std::span<const std::uint8_t> bytes, const std::string& name,
                                            std::string& error);

}  // namespace kx::recording
