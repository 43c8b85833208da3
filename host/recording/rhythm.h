// What a recording tells of its rhythm: its beats by kind, the waves of its atria, a pacemaker's impulses.
#pragma once

#include <cstdint>
#include <vector>

#include "host/recording/aligned_beats.h"
#include "lib/atrial_lead.h"

namespace kx {
struct TestRecord;
}

namespace kx::recording {

// All times are ms from the start of the recording, ascending.
struct Rhythm {
    struct Beat {
        int ms = 0;
        std::uint8_t label = 0;  // of lib/beat_labels.h
        bool inMedian = false;
    };
    std::vector<Beat> beats;
    std::vector<int> atrialMs;    // the peaks of P waves and flutter waves
    std::vector<int> impulsesMs;  // of a pacemaker
    // How long the QRS complex of the dominant shape begins slowly, as with a delta wave: from where the
    // leads together begin to move until they first do so at 0.4 of their largest velocity.
    int slowOnsetMs = 0;
    // kEveryBeat: the same wave is before most beats, and four of five such waves follow one another at the
    // interval of the beats, or at two of it. kNone: a regular train of waves goes its own way, or
    // its waves come as often as those of flutter.
    AtrialLead atrialLead = AtrialLead::kUnknown;
};

Rhythm FindRhythm(const AlignedBeats& beats);

// Makes the record's first annotation store of it: one entry a beat with the heart rate there and the
// sub-label kSubLabelInMedian of one that is in the median beat, one a wave (kLabelPWave), one an impulse
// (kLabelPacingImpulse), and at 0 ms one that says that these were looked for (kLabelRhythm). False: no
// memory.
bool FillAnnotations(TestRecord& test, const Rhythm& rhythm);

}  // namespace kx::recording
