// What an annotation's label says of a beat. The codes are those of the WFDB annotation format, the field's
// common one (physionet.org), of which the annotation store itself knows the normal beat. Portable.
#pragma once

#include <cstdint>

#include "lib/annotation_store.h"

namespace kx {

inline constexpr std::uint8_t kLabelLeftBundleBranchBlock = 2;
inline constexpr std::uint8_t kLabelRightBundleBranchBlock = 3;
inline constexpr std::uint8_t kLabelAberratedAtrial = 4;
inline constexpr std::uint8_t kLabelVentricularEctopic = 5;
inline constexpr std::uint8_t kLabelFusion = 6;
inline constexpr std::uint8_t kLabelJunctionalEctopic = 7;
inline constexpr std::uint8_t kLabelAtrialEctopic = 8;
inline constexpr std::uint8_t kLabelSupraventricularEctopic = 9;
inline constexpr std::uint8_t kLabelVentricularEscape = 10;
inline constexpr std::uint8_t kLabelJunctionalEscape = 11;
inline constexpr std::uint8_t kLabelPaced = 12;
inline constexpr std::uint8_t kLabelUnclassifiedBeat = 13;

constexpr bool IsBeatLabel(std::uint8_t label) {
    return label >= kLabelNormalBeat && label <= kLabelUnclassifiedBeat;
}

// What is no beat.
inline constexpr std::uint8_t kLabelPWave = 24;          // the peak of a wave of the atria
inline constexpr std::uint8_t kLabelPacingImpulse = 26;  // not captured, or before the beat that it made
// A change of rhythm. The one at 0 ms says that waves of the atria and impulses were looked for; its second
// value (in place of the heart rate) is how long the usual QRS complex begins slowly, ms.
inline constexpr std::uint8_t kLabelRhythm = 28;

}  // namespace kx
