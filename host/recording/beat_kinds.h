// What kind each beat of a recording is, by when it comes and what it looks like.
#pragma once

#include <cstdint>
#include <vector>

namespace kx::recording {

// What is known of one beat.
struct BeatSigns {
    int ms = 0;            // from the start of the recording
    bool dominant = true;  // of the shape that most beats have
    double likeness = 1;   // correlation with that shape, all leads together
    int widthMs = 0;       // how long its QRS complex moves
    bool whole = true;     // not cut by the ends of the recording
    bool paced = false;    // behind a pacemaker's impulse
};

// A label of lib/beat_labels.h for each beat (in order of time):
// - paced: behind an impulse;
// - unclassified: not whole and of another shape;
// - of the dominant shape: normal, or a supraventricular ectopic when it comes early, that is after at most
// 0.85 of the
//   interval before it and at most 0.85 of the one behind it (of the last beat: 0.8 of the median interval).
//   Sinus arrhythmia is slower to return. Only where `atriaLead`, i.e. the same P wave is before the beats:
//   in fibrillation no beat is early;
// - of another shape: a ventricular ectopic when it is clearly another (correlation below 0.75), broad (100
// ms or more)
//   and early or before a pause (the interval before it less than 0.8 of the median or of the one behind; of
//   the last beat: of the one before); early, narrow and behind leading atria: an aberrated atrial beat; else
//   unclassified.
std::vector<std::uint8_t> KindsOfBeats(const std::vector<BeatSigns>& beats, bool atriaLead);

}  // namespace kx::recording
