// Reading of beat and wave annotations in the MIT format of WFDB.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kx::recording {

// Codes of the marks that a delineated recording holds (the format's own numbering). The others, of rhythms,
// noise and beat types, keep their numbers in WfdbAnnotation::code.
enum AnnotationCode : std::uint8_t {
    kNormalBeat = 1,   // 'N', the peak of a QRS complex
    kPWavePeak = 24,   // 'p'
    kTWavePeak = 27,   // 't'
    kWaveOnset = 39,   // '('
    kWaveOffset = 40,  // ')'
    kUWavePeak = 29,   // 'u'
};

struct WfdbAnnotation {
    std::int64_t sample = 0;  // from the start of the recording, at the recording's rate
    std::uint8_t code = 0;    // 1 to 49
    std::int8_t subtype = 0;
    std::uint8_t channel = 0;
    std::int8_t number = 0;  // for ')' and '(' of some databases: the kind of wave (0 P, 1 QRS, 2 T)
    std::string text;        // the auxiliary text, empty when there is none
};

// The annotations in a file's bytes, in file order. Each is a 16-bit little-endian word with the code in the
// high 6 bits and the interval since the one before, in samples, in the low 10; SKIP (59) carries a longer
// interval, NUM (60), SUB (61), CHN (62) and AUX (63) belong to the annotation before them (NUM and CHN hold
// until changed). A word of zero ends the list. What a cut file holds in whole is returned: `truncated`, when
// given, tells that the end mark was missing. Never reads outside `bytes`; any bytes are safe.
std::vector<WfdbAnnotation> ParseAnnotations(std::span<const std::uint8_t> bytes, bool* truncated = nullptr);

// The annotations of a file. Nothing, and one line naming file and reason in `error`, when it cannot be read
// or is larger than any annotation file of a recording that is read here (16 MiB).
std::optional<std::vector<WfdbAnnotation>> ReadAnnotations(const std::filesystem::path& file,
                                                           std::string& error);

}  // namespace kx::recording
