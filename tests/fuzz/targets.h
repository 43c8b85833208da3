// What the fuzz targets share. A target takes any bytes as what it reads and ends, whatever they are; what is not as it must be
// ends the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

namespace kx::fuzz {

using Bytes = std::span<const std::uint8_t>;

inline std::string_view TextOf(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

using Run = void(Bytes input);
Run Aecg, AnnotationBlock, Dicom, EpisodeBlock, RecordTexts, Scp, Script, StatementFile, TypedTime, Wfdb;

}  // namespace kx::fuzz
