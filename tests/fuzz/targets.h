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

void Aecg(Bytes input);
void AnnotationBlock(Bytes input);
void BmpFormat(Bytes input);
void Dicom(Bytes input);
void EpisodeBlock(Bytes input);
void RecordTexts(Bytes input);
void Scp(Bytes input);
void Script(Bytes input);
void Staff(Bytes input);
void StatementFile(Bytes input);
void TypedTime(Bytes input);
void Wfdb(Bytes input);

struct Target {
    std::string_view name;  // also that of its folder in corpus/
    void (*run)(Bytes input);
};
inline constexpr Target kTargets[] = {
    {"aecg", Aecg},
    {"annotation_block", AnnotationBlock},
    {"bmp_format", BmpFormat},
    {"dicom", Dicom},
    {"episode_block", EpisodeBlock},
    {"record_texts", RecordTexts},
    {"scp", Scp},
    {"script", Script},
    {"staff_list", Staff},
    {"statement_library", StatementFile},
    {"typed_time", TypedTime},
    {"wfdb", Wfdb},
};

}  // namespace kx::fuzz
