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

}  // namespace kx
