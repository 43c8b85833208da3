// The waves before the QRS complexes of a recording: whether they are the same before every beat.
#pragma once

#include <optional>
#include <vector>

#include "host/recording/atrial_signal.h"
#include "host/recording/wave_search.h"

namespace kx::recording {

struct WavesBeforeBeats {
    std::ptrdiff_t peak = 0;   // from a beat's place, negative, samples at kAtrialRate
    LeadScales noise{};        // of each lead: by how much the beats differ there, microvolts
    std::vector<bool> before;  // for each beat, whether the wave is before it
    double part = 0;           // of the beats of the median, that have it
};

// Compares what lies before each dominant beat, in all leads, with the median of the others. Nothing with
// less than three beats to compare.
std::optional<WavesBeforeBeats> FindWavesBeforeBeats(const AtrialSignal& signal);

}  // namespace kx::recording
