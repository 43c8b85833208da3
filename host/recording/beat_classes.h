// Which beats of a recording look alike, and how they lie to one another.
#pragma once

#include <cstddef>
#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

struct BeatClasses {
    std::vector<bool> dominant;           // for each beat, whether it has the dominant shape
    std::vector<std::ptrdiff_t> aligned;  // its place, samples, aligned with the others of its shape
};

// beats: places of the QRS complexes in a recording at kWorkingRate, samples, ascending. See median_beat.h
// for the rule.
BeatClasses ClassifyBeats(const Recording& recording, const std::vector<std::ptrdiff_t>& beats);

}  // namespace kx::recording
