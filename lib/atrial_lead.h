// What a whole recording tells of the waves before the complexes of its median beat. One beat does not tell
// whether a wave before its complex belongs to it: a wave of flutter may stand there, a flat P wave may hide
// in its noise. Who made the beat may say so in its record (KxEpisodeRecord::value36), where the suite's
// analysis looks for it. Portable.
#pragma once

#include <cstdint>

namespace kx {

// Four letters each, so that whatever else others keep in that word says nothing.
enum class AtrialLead : std::uint32_t {
    kUnknown = 0,
    kEveryBeat = 0x2B50414B,  // "KAP+": a P wave leads the complexes, at their own rate
    kNone = 0x2D50414B,  // "KAP-": no wave is at one distance before them, as in flutter, complete block,
                         // Wenckebach periods
};

constexpr AtrialLead AtrialLeadOf(std::uint32_t word) {
    const auto lead = static_cast<AtrialLead>(word);
    return lead == AtrialLead::kEveryBeat || lead == AtrialLead::kNone ? lead : AtrialLead::kUnknown;
}

}  // namespace kx
