// One representative beat of a recording.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/recording/recording.h"
#include "host/recording/resample.h"
#include "host/recording/rhythm.h"

namespace kx::recording {

// The median beat's length, and the place in it of the alignment point, which is the largest spatial
// magnitude of the QRS complex. 450 ms before it hold a P wave with a PR interval of 400 ms (first-degree
// block); 750 ms behind it hold the T wave of a QT interval of 700 ms (long QT at 40 beats a minute). At high
// rates the ends show parts of the neighbouring beats; the RR interval tells where they begin.
inline constexpr int kMedianBeatMs = 1200;
inline constexpr int kAlignmentMs = 450;
inline constexpr int kMedianBeatSamples = kMedianBeatMs * kWorkingRate / 1000;
inline constexpr int kResolutionNv = 1000;  // one unit is one microvolt

struct MedianBeat {
    // kMedianBeatSamples each, at kWorkingRate, in microvolts; values beyond 16 bits are saturated.
    std::array<std::vector<std::int16_t>, kLeadCount> leads;
    int rrMs = 0;  // median RR interval of the recording; 0 with a single beat
    // All beats, ms from the start of the recording. One of the dominant shape stands where its alignment
    // point lies, so that a place in the recording less that of its beat is a place in the median beat less
    // kAlignmentMs; one of another shape stands at its own largest spatial magnitude.
    std::vector<int> beatsMs;
    std::vector<bool> dominant;        // for each of them, whether it has the dominant shape
    std::vector<bool> kept;            // and whether it is in the median
    Rhythm rhythm;                     // of the whole recording
    std::vector<std::string> remarks;  // what was done to the signal that a reader should know
};

// The median beat over the beats of the dominant shape. Steps:
// - leads that exceed the range of the recorder (saturation.h) are left out: they are 0 throughout;
// - to kWorkingRate (resample.h); a mains hum is taken out (mains_hum.h); pacing spikes are bridged for every
//   step but the last (spikes.h); beats by FindBeats;
// - shapes: the QRS complexes of all leads together are compared by normalised cross-correlation within
//   +/- 40 ms; beats that correlate with a class at 0.9 or more belong to it; the largest class wins, and of
//   two of nearly the same size the one whose beats come later after their predecessors (in bigeminy the
//   normal beats);
// - premature beats of the winning shape (RR below 0.8 of the median, as of atrial extrasystoles) are left
//   out as long as they are few; in an irregular rhythm (more than a quarter of them) all stay;
// - beats whose window leaves the recording or touches a gap are left out, unless no others are there; then
//   each sample is taken from the beats that have it;
// - baseline: a natural cubic spline through the level before each QRS complex (C. R. Meyer and H. N. Keiser,
//   "Electrocardiogram baseline noise estimation and removal using cubic splines and state-space computation
//   techniques", Comput. Biomed. Res. 10, 459-470, 1977) is subtracted, then what is left of the wander
//   between them (baseline.h); unlike a high-pass filter this does not bend the ST segment. The level before
//   the complex is 0 in the median beat;
// - the beats are aligned by cross-correlation with their mean, and each sample of the result is the median
//   over them.
//
// Nothing, and the reason in `error`: when the recording holds no beats; when no two of four or more look
// alike; when a sample from 300 ms before to 530 ms behind the alignment point is missing in every beat; when
// memory is short.
std::optional<MedianBeat> MakeMedianBeat(const Recording& recording, std::string& error);

}  // namespace kx::recording
