// view_geometry: where things are in a marker view: scales, scrolling, traces, markers, and the text of the
// readout. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "lib/muldiv.h"

namespace kx {

// What a device says of itself (HORZRES, HORZSIZE, VERTRES, VERTSIZE). A size of 0 is possible.
struct DeviceMeasure {
    std::int32_t widthPixels = 0;
    std::int32_t widthMm = 0;
    std::int32_t heightPixels = 0;
    std::int32_t heightMm = 0;
};

// What a median beat says of the lead that is shown. Any value is possible.
struct BeatMeasure {
    std::uint32_t samples = 0;  // of the lead; 0: the lead or the beat is missing
    std::uint32_t rate = 0;     // samples per second
    std::uint32_t resolutionNv = 0;

    bool operator==(const BeatMeasure&) const = default;
};

inline constexpr std::int32_t kFullScrollPercent = 100;
inline constexpr std::int32_t kLargestVerticalOffset = 2500;  // microvolts, up and down

struct ViewSettings {
    std::int32_t gain = 20;               // mm per mV
    std::int32_t speed = 50;              // mm per s
    std::int32_t horizontalPosition = 0;  // percent, 0 to kFullScrollPercent
    std::int32_t verticalOffset = 0;      // microvolts, within kLargestVerticalOffset
};

// What a scroll bar shows: from 0 to range, all 0 when there is nothing to scroll.
struct ScrollBarState {
    std::int32_t range = 0;
    std::int32_t page = 0;
    std::int32_t position = 0;

    bool operator==(const ScrollBarState&) const = default;
};

// Computed once for a beat, its settings and the size of the view; every question is then a few integer
// operations. Coordinates are pixels of the client area. Nothing is undefined for any input: what the device
// or the beat leaves open (a size or a rate of 0) makes a scale of 0, and what does not fit is held to the
// range.
class ViewGeometry {
  public:
    ViewGeometry() = default;
    ViewGeometry(const DeviceMeasure& device, const BeatMeasure& beat, const ViewSettings& settings,
                 std::int32_t width, std::int32_t height);

    std::int32_t Width() const { return width_; }
    std::int32_t Height() const { return height_; }
    std::int32_t Samples() const { return samples_; }
    std::int32_t Rate() const { return rate_; }
    // The y of 0 microvolts.
    std::int32_t Baseline() const { return baseline_; }
    // The column of sample 0.
    std::int32_t XOrigin() const { return xOrigin_; }
    // 1000 x pixels per sample.
    std::int32_t HorizontalScale() const { return horizontalScale_; }
    const ScrollBarState& HorizontalBar() const { return horizontalBar_; }
    const ScrollBarState& VerticalBar() const { return verticalBar_; }

    // Pixels above the baseline of a sample value, and of a slope in thousandths of a microvolt per
    // millisecond: 100 uV/ms stand as high as 1 mV.
    std::int32_t SampleHeight(std::int32_t sample) const {
        return MulDivRound(sample, amplitudeScale_, 1000);
    }
    std::int32_t SlopeHeight(std::int32_t slope) const {
        return MulDivRound(slope, derivativeScale_, 100000);
    }

    // Held to what a device takes, as RowOf.
    std::int32_t ColumnOf(std::int32_t sample) const;
    // Also before the beat and behind it; -1 when the scale is 0.
    std::int32_t SampleAt(std::int32_t column) const;
    bool IsInBeat(std::int32_t sample) const { return sample >= 0 && sample < samples_; }

    // The y of a point so many pixels above the baseline, held to what a device takes.
    std::int32_t RowOf(std::int32_t height, bool inverted) const;

    // Calls emit(x, y) for the points of a trace from sample 0 to the first one beyond the right edge, so
    // that the line reaches the edge. height(i): pixels above the baseline.
    template <typename Height, typename Emit>
    void Trace(bool inverted, Height&& height, Emit&& emit) const {
        for (std::int32_t i = 0; i < samples_; ++i) {
            const std::int32_t x = ColumnOf(i);
            emit(x, RowOf(height(i), inverted));
            if (x >= width_) {
                break;
            }
        }
    }

    // The sample to which a drag with the pointer in this column moves a marker; none when the move is to be
    // ignored: on the view's first and last column while the beat goes on there, and when there is no beat or
    // no scale. Beyond the beat it is the beat's first or last sample.
    std::optional<std::int32_t> DragTarget(std::int32_t column) const;

    // The sample to which `step` samples move a marker, held to the beat. At rates above 1000 Hz as many more
    // as change the position in whole milliseconds, which is all that the owner hears and sends back. Never
    // sample 0: a marker there is an absent one, and to remove a wave is not what a step means. A marker
    // beyond the beat comes back to its end. The position itself when there is no beat or no rate.
    std::int32_t Stepped(std::int32_t position, std::int32_t step) const;

    // The horizontal position that brings a sample to the middle of the view, as far as the beat reaches.
    std::int32_t PercentShowing(std::int32_t sample) const;

  private:
    void LayOutHorizontally(std::int32_t percent);
    void LayOutVertically(std::int32_t microvolts, std::int32_t pixelsPerMv, std::int32_t divisor);

    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::int32_t samples_ = 0;
    std::int32_t rate_ = 0;
    std::int32_t horizontalScale_ = 0;
    std::int32_t amplitudeScale_ = 0;
    std::int32_t derivativeScale_ = 0;
    std::int32_t xOrigin_ = 0;
    std::int32_t baseline_ = 0;
    ScrollBarState horizontalBar_;
    ScrollBarState verticalBar_;
};

// A marker's position in samples and in milliseconds.
constexpr std::int32_t SamplesFromMs(std::int32_t ms, std::int32_t rate) {
    return MulDivRound(ms, rate, 1000);
}
constexpr std::int32_t MsFromSamples(std::int32_t samples, std::int32_t rate) {
    return MulDivRound(samples, 1000, rate);
}

// A count of the record as the arithmetic takes it.
constexpr std::int32_t HeldToInt32(std::uint32_t value) {
    return value > INT32_MAX ? INT32_MAX : static_cast<std::int32_t>(value);
}

// How a marker looks: a label that stands on the bottom edge, centred on the column, and a line of 5 pixels.
inline constexpr std::int32_t kMarkerHalfWidth = 2;
struct LabelSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// Whether a point takes hold of the marker in a column: within its line, or within its label, on both sides
// alike.
bool HitsMarker(std::int32_t markerColumn, const LabelSize& label, std::int32_t viewHeight, std::int32_t x,
                std::int32_t y);

// The requests of a scroll bar, numbered as Win32 does (SB_LINEUP and its kin).
enum class ScrollRequest : std::uint8_t {
    kLineBack,
    kLineForward,
    kPageBack,
    kPageForward,
    kThumbPosition,
    kThumbTrack,
    kFirst,
    kLast,
    kEnd,
};

struct ScrollSteps {
    std::int32_t line;
    std::int32_t page;
    std::int32_t lowest;
    std::int32_t highest;
};
inline constexpr ScrollSteps kHorizontalSteps = {1, 10, 0, kFullScrollPercent};
inline constexpr ScrollSteps kVerticalSteps = {50, 500, -kLargestVerticalOffset, kLargestVerticalOffset};

// The value after a request, held to the steps' range. thumb: the thumb's position on the bar's range.
std::int32_t Scrolled(std::int32_t value, ScrollRequest request, std::int32_t thumb, std::int32_t range,
                      const ScrollSteps& steps);

// Three lines: time in ms, amplitude in microvolts, slope in microvolts per millisecond with two decimals.
inline constexpr std::size_t kReadoutSize = 64;
void FormatReadout(char (&text)[kReadoutSize], std::int32_t ms, std::int32_t microvolts, std::int32_t slope);
// What stands there when the pointer is not on the beat.
inline constexpr char kNoReadout[] = "...";

}  // namespace kx
