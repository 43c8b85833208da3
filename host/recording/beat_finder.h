// The times of the QRS complexes of a recording.
#pragma once

#include <vector>

#include "host/recording/recording.h"

namespace kx::recording {

// Times of the beats, ms from the start of the recording, ascending, at least 200 ms apart: the place of the
// largest spatial magnitude of each QRS complex. Any sampling rate; empty for a recording without beats.
//
// The detector is that of J. Pan and W. J. Tompkins, "A real-time QRS detection algorithm", IEEE Trans.
// Biomed. Eng. BME-32, 230-236, 1985 (band-pass, derivative, square, moving-window integration, two adaptive
// levels, search-back, T-wave discrimination by slope), with its single lead replaced by the spatial
// velocity, the root of the summed squares of the slopes over the leads, so that a lead with a small complex
// loses no beat.
std::vector<int> FindBeats(const Recording& recording);

}  // namespace kx::recording
