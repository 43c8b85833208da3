#include "dialogs/marker_view/trace/view_geometry.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kx {

namespace {

// The span of the paper from top to bottom.
constexpr std::int32_t kSpanMicrovolts = 2 * kLargestVerticalOffset;
// Beyond any screen, and small enough for every device.
constexpr std::int64_t kFarthestPixel = std::int64_t{1} << 26;

// The arithmetic of the scales holds its intermediate results to +-2^62 and its quotients to 32 bits.
constexpr std::int64_t kLargest = std::int64_t{1} << 62;

std::int64_t Times(std::int64_t a, std::int64_t b) {
    if (a == 0 || b == 0) {
        return 0;
    }
    if (std::llabs(a) > kLargest / std::llabs(b)) {
        return (a < 0) == (b < 0) ? kLargest : -kLargest;
    }
    return a * b;
}

// Truncated toward zero; 0 where there is nothing to divide by.
std::int64_t Over(std::int64_t a, std::int64_t b) {
    return b == 0 ? 0 : a / b;
}

std::int32_t Held(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, -INT32_MAX, INT32_MAX));
}

}  // namespace

ViewGeometry::ViewGeometry(const DeviceMeasure& device, const BeatMeasure& beat, const ViewSettings& settings,
                           std::int32_t width, std::int32_t height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      samples_(HeldToInt32(beat.samples)),
      rate_(HeldToInt32(beat.rate)) {
    // Every step truncates, in this order.
    const std::int64_t micrometresPerSample = Over(Times(settings.speed, 1000), rate_);
    horizontalScale_ =
        std::max(Held(Over(Times(micrometresPerSample, device.widthPixels), device.widthMm)), 0);
    const std::int64_t perMm = Times(Times(beat.resolutionNv, settings.gain), device.heightPixels);
    amplitudeScale_ = Held(Over(Over(perMm, device.heightMm), 1000));
    const std::int64_t pixelsPerMv = Times(settings.gain, device.heightPixels);
    derivativeScale_ = Held(Over(pixelsPerMv, device.heightMm));
    LayOutHorizontally(settings.horizontalPosition);
    LayOutVertically(settings.verticalOffset, Held(pixelsPerMv), Held(Times(device.heightMm, 1000)));
}

void ViewGeometry::LayOutHorizontally(std::int32_t percent) {
    const std::int32_t total = MulDivRound(samples_, horizontalScale_, 1000);
    if (total <= width_) {
        xOrigin_ = static_cast<std::int32_t>((std::int64_t{width_} - total) / 2);
        return;
    }
    const std::int32_t over = total - width_;
    const std::int32_t page = std::max(MulDivRound(over, width_, total), 1);
    horizontalBar_ = {over, page, MulDivRound(over - page + 1, percent, kFullScrollPercent)};
    xOrigin_ = MulDivRound(over, -percent, kFullScrollPercent);
}

void ViewGeometry::LayOutVertically(std::int32_t microvolts, std::int32_t pixelsPerMv, std::int32_t divisor) {
    const std::int32_t total = MulDivRound(kSpanMicrovolts, pixelsPerMv, divisor);
    baseline_ = height_ / 2;
    if (total <= height_) {
        return;
    }
    const std::int32_t over = total - height_;
    const std::int32_t page = std::max(MulDivRound(over, height_, total), 1);
    verticalBar_ = {over, page,
                    MulDivRound(over - page + 1, microvolts + kLargestVerticalOffset, kSpanMicrovolts)};
    baseline_ -= MulDivRound(microvolts, pixelsPerMv, divisor);
}

std::int32_t ViewGeometry::ColumnOf(std::int32_t sample) const {
    return static_cast<std::int32_t>(
        std::clamp(std::int64_t{MulDivRound(sample, horizontalScale_, 1000)} + xOrigin_, -kFarthestPixel,
                   kFarthestPixel));
}

std::int32_t ViewGeometry::SampleAt(std::int32_t column) const {
    return MulDivRound(Held(std::int64_t{column} - xOrigin_), 1000, horizontalScale_);
}

std::int32_t ViewGeometry::RowOf(std::int32_t height, bool inverted) const {
    const std::int64_t up = inverted ? -std::int64_t{height} : height;
    return static_cast<std::int32_t>(std::clamp(baseline_ - up, -kFarthestPixel, kFarthestPixel));
}

std::optional<std::int32_t> ViewGeometry::DragTarget(std::int32_t column) const {
    if (samples_ == 0 || horizontalScale_ == 0) {
        return std::nullopt;
    }
    const std::int32_t sample = SampleAt(column);
    if (IsInBeat(sample) && (column <= 0 || column >= width_ - 1)) {
        return std::nullopt;
    }
    return std::clamp(sample, 0, samples_ - 1);
}

std::int32_t ViewGeometry::Stepped(std::int32_t position, std::int32_t step) const {
    if (samples_ < 2 || rate_ == 0 || step == 0) {
        return position;
    }
    const std::int32_t last = samples_ - 1;
    std::int32_t target =
        static_cast<std::int32_t>(std::clamp<std::int64_t>(std::int64_t{position} + step, 1, last));
    const std::int32_t further = step < 0 ? -1 : 1;
    const std::int32_t before = MsFromSamples(position, rate_);
    while (MsFromSamples(target, rate_) == before && target + further >= 1 && target + further <= last) {
        target += further;
    }
    return target;
}

std::int32_t ViewGeometry::PercentShowing(std::int32_t sample) const {
    const std::int64_t left = std::int64_t{MulDivRound(sample, horizontalScale_, 1000)} - width_ / 2;
    return std::clamp(MulDivRound(Held(left), kFullScrollPercent, std::max(horizontalBar_.range, 1)), 0,
                      kFullScrollPercent);
}

bool HitsMarker(std::int32_t markerColumn, const LabelSize& label, std::int32_t viewHeight, std::int32_t x,
                std::int32_t y) {
    const std::int64_t distance = std::llabs(std::int64_t{x} - markerColumn);
    return distance <= kMarkerHalfWidth ||
           (y >= std::int64_t{viewHeight} - label.height && distance <= label.width / 2);
}

std::int32_t Scrolled(std::int32_t value, ScrollRequest request, std::int32_t thumb, std::int32_t range,
                      const ScrollSteps& steps) {
    std::int64_t wanted = value;
    switch (request) {
        case ScrollRequest::kEnd:
            break;
        case ScrollRequest::kLineBack:
            wanted -= steps.line;
            break;
        case ScrollRequest::kLineForward:
            wanted += steps.line;
            break;
        case ScrollRequest::kPageBack:
            wanted -= steps.page;
            break;
        case ScrollRequest::kPageForward:
            wanted += steps.page;
            break;
        case ScrollRequest::kThumbPosition:
        case ScrollRequest::kThumbTrack:
            wanted = std::int64_t{MulDivRound(thumb, steps.highest - steps.lowest,
                                              Held(std::int64_t{range} + 1))} +
                     steps.lowest;
            break;
        case ScrollRequest::kFirst:
            wanted = steps.lowest;
            break;
        case ScrollRequest::kLast:
            wanted = steps.highest;
    }
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(wanted, steps.lowest, steps.highest));
}

void FormatReadout(char (&text)[kReadoutSize], std::int32_t ms, std::int32_t microvolts, std::int32_t slope) {
    const int hundredths = std::abs(slope % 1000) / 10;
    // A slope between -1 and 0 has no whole part to carry its sign, and without it a falling edge reads as a
    // rising one.
    const char* sign = slope < 0 && slope / 1000 == 0 && hundredths != 0 ? "-" : "";
    std::snprintf(text, sizeof text, "%d ms\r\n%d uV\r\n%s%d.%02d uV/ms", ms, microvolts, sign, slope / 1000,
                  hundredths);
}

}  // namespace kx
