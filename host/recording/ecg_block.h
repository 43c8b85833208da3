// The recorded signal as a test record holds it (KxTestRecord.ecg).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// How the block begins; the samples of each lead follow as 16-bit numbers, lead after lead. Little-endian. A
// block by which nobody but its maker knew the exact rate and units has zeros in their places.
struct EcgHeader {
    std::uint32_t leads = 0;  // 12
    std::uint32_t samplesPerLead = 0;
    std::uint32_t sampleRate = 0;        // samples per second, rounded
    std::uint32_t resolutionNv = 0;      // nanovolts in a unit of lead I, rounded
    double exactRate = 0;                // samples per second
    double microvolts[kLeadCount] = {};  // in a unit of each lead
    std::uint32_t derivedLeads = 0;      // bit k: lead k was computed, not recorded
    std::uint8_t reserved[156] = {};
};
static_assert(sizeof(EcgHeader) == 280 && offsetof(EcgHeader, microvolts) == 24);

// The block of a recording. A lead whose samples are whole multiples of its resolution, or of a half of it as
// derived leads are, keeps them exactly; any other is rounded to a unit of which its largest sample has at
// most 32767, and that is no larger than 1 uV unless it must be.
std::vector<std::uint8_t> EncodeEcg(const Recording& recording);

// The samples, rate, resolutions and derived leads of a block; all else of the recording is empty. Nothing
// when these are no bytes of such a block.
std::optional<Recording> DecodeEcg(std::span<const std::uint8_t> block);

// The same for the block that a test record made here holds; its size is the one that its header says.
std::optional<Recording> DecodeEcg(const KxTestRecord& test);

}  // namespace kx::recording
