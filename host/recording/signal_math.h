// Small operations on one lead.
#pragma once

#include <cstddef>
#include <vector>

#include "host/recording/resample.h"

namespace kx::recording {

using Trace = std::vector<float>;

// Mean over `width` samples centred on each (width odd; even widths lean one sample to the past), over as
// many as there are at the ends.
Trace MovingMean(const Trace& trace, std::size_t width);

// Difference of the means over the 20 ms after and the 20 ms before each sample, at kWorkingRate: a band-pass
// derivative with its largest response near 18 Hz, none at 0 and at 50 Hz, and no phase shift. 0 at the ends.
Trace BandSlope(const Trace& trace);

// The middle value, of an even number the mean of the two in the middle; reorders values; 0 of none.
double Median(std::vector<float>& values);

// Samples at kWorkingRate in a span of milliseconds.
constexpr std::ptrdiff_t ToSamples(std::ptrdiff_t ms) {
    return ms * kWorkingRate / 1000;
}

}  // namespace kx::recording
