// What a recording shows of the atria: the signal with the ventricles taken out.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "host/recording/aligned_beats.h"
#include "host/recording/signal_math.h"

namespace kx::recording {

// Samples per second of these signals: what is of interest lies below 20 Hz.
inline constexpr std::ptrdiff_t kAtrialRate = 250;

constexpr std::ptrdiff_t ToAtrialSamples(std::ptrdiff_t ms) {
    return ms * kAtrialRate / 1000;
}

using Traces = std::array<Trace, kLeadCount>;

// Places and spans are samples at kAtrialRate.
struct AtrialSignal {
    Traces leads;  // microvolts, smoothed
    Places beats;
    std::vector<bool> dominant;
    std::vector<bool> kept;
    std::ptrdiff_t qrsOnset = 0;  // from a beat's place, negative
    std::ptrdiff_t qt = 0;        // from there to where the T wave should be over
    std::ptrdiff_t rr = 0;

    std::ptrdiff_t Count() const { return static_cast<std::ptrdiff_t>(leads[0].size()); }
};

AtrialSignal MakeAtrialSignal(const AlignedBeats& beats);

// What is left of it without the ventricles, and where that can be believed.
struct Residual {
    Traces leads;
    std::vector<bool> valid;
};

// Takes out of each dominant beat the median of these beats, from the QRS onset to the end of T (kQrst) or to
// the next beat (kCycle). The first leaves waves between T and QRS that go with every beat, the second only
// what does not keep pace with the beats. QRS complexes, beats of other shapes and what too few beats cover
// are not valid.
enum class Subtraction { kQrst, kCycle };
Residual Subtract(const AtrialSignal& signal, Subtraction subtraction);

}  // namespace kx::recording
