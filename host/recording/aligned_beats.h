// The beats of a recording, compared, aligned, and freed of its baseline: what a median beat is made of.
#pragma once

#include <cstddef>
#include <vector>

#include "host/recording/mains_hum.h"
#include "host/recording/recording.h"

namespace kx::recording {

// Samples at kWorkingRate.
using Places = std::vector<std::ptrdiff_t>;

struct AlignedBeats {
    Recording recording;  // at kWorkingRate, without hum and baseline
    Recording heart;      // the same without pacing spikes (spikes.h)
    // Of every beat its place, aligned with the others of its shape, whether that is the dominant shape, and
    // whether the beat is to be in the median. All empty for a recording without beats.
    Places places;
    std::vector<bool> dominant;
    std::vector<bool> kept;
    int rrMs = 0;  // median RR interval; 0 when none is known
    MainsHum hum;  // that was removed
};

// The steps before the median; see median_beat.h.
AlignedBeats AlignBeats(const Recording& recording);

// The places that are chosen.
Places Chosen(const Places& places, const std::vector<bool>& chosen);

// Which samples lie in a gap.
std::vector<bool> MissingSamples(const Recording& recording);

// Sample `offset` from each place, as far as the lead has them.
void GatherSamples(const std::vector<float>& lead, const std::vector<bool>& missing, const Places& places,
                   std::ptrdiff_t offset, std::vector<float>& values);

}  // namespace kx::recording
