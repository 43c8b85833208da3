// The beats of a recording as the annotations of its test record.
#pragma once

#include "host/recording/median_beat.h"

namespace kx {
struct TestRecord;
}

namespace kx::recording {

// Makes the record's first annotation store: one entry a beat, in order of time, with a label of
// lib/beat_labels.h and the heart rate there. A beat of the dominant shape is normal, or a supraventricular
// ectopic when it comes early in an otherwise regular rhythm: after less than 0.8 of the median interval. One
// of another shape is a ventricular ectopic when it comes early or before a pause (the interval before it
// less than 0.8 of the one behind; of the last beat: of the one before), else unclassified. Pacing is not
// told from the signal. False: no memory.
bool FillAnnotations(TestRecord& test, const MedianBeat& beat);

}  // namespace kx::recording
