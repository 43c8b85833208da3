// How a shown number is coloured: an inner band, an outer band around it, and what lies outside both.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

// A colour as the platform packs it: 0x00BBGGRR.
using PackedColor = std::uint32_t;

inline constexpr PackedColor kOutOfRangeColor = 0x0000FF;  // red
inline constexpr PackedColor kOuterBandColor = 0x008080;   // olive
inline constexpr PackedColor kInnerBandColor = 0x008000;   // green

// The seven range words of a value label. Values are in the label's own unit (µV or points); every bound
// belongs to the band it closes.
struct ValueRange {
    PackedColor outOfRange;
    PackedColor outerBand;
    PackedColor innerBand;
    std::int32_t minimum;
    std::int32_t innerLow;
    std::int32_t innerHigh;
    std::int32_t maximum;

    // Out of range below minimum or above maximum; inner band from innerLow to innerHigh; outer band between.
    constexpr PackedColor ColorOf(std::int32_t value) const {
        if (value < minimum || value > maximum) {
            return outOfRange;
        }
        return innerLow <= value && value <= innerHigh ? innerBand : outerBand;
    }
};

// The review panes' own ranges: red, olive and green, from zero.
constexpr ValueRange RangeFromZero(std::int32_t innerHigh, std::int32_t maximum) {
    return {kOutOfRangeColor, kOuterBandColor, kInnerBandColor, 0, 0, innerHigh, maximum};
}

// The colour ranges of the pane's numbers.
inline constexpr ValueRange kSingleAmplitudeRange = RangeFromZero(1000, 2000);  // µV
inline constexpr ValueRange kSokolowLyonRange = RangeFromZero(2000, 3500);      // µV
inline constexpr ValueRange kCriterionPointsRange = RangeFromZero(0, 1);
inline constexpr ValueRange kTotalPointsRange = RangeFromZero(4, 5);

// sex: KX_SEX_...; every value but KX_SEX_FEMALE has the men's limit. µV.
constexpr ValueRange CornellRange(std::uint32_t sex) {
    return RangeFromZero(1500, sex == KX_SEX_FEMALE ? 2000 : 2800);
}

}  // namespace kx
