// A recording as the test record that the library's panes work on.
#pragma once

#include "host/recording/median_beat.h"
#include "host/recording/recording.h"

namespace kx {
struct TestRecord;
struct EpisodeRecord;
}  // namespace kx

namespace kx::recording {

// Fills a new test record: a resting test (testType 2) with patient, device, filters and acquisition time as
// the recording knows them, recordingDurationMs, the diagnoses of the source in text332, one per line, cut
// where the field ends, the recorded signal (ecg_block.h), an original report without text by the automatic
// analysis at the acquisition time, the beats as its annotations (rhythm.h), and one episode: twelve
// leads of the median beat at 500 samples a second, 1000 nV a unit, with rrInterval set and nothing measured
// yet (`measured` 0). Limb leads that were not recorded are filled by the episode's DeriveLimbLeads. Returns
// the episode, which the test record owns; null, and the record without episode, when there is no memory.
EpisodeRecord* FillTestRecord(TestRecord& test, const Recording& recording, const MedianBeat& beat);

}  // namespace kx::recording
