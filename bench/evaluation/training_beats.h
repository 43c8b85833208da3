// The beats of marked recordings as tools/delineator/train.py reads them.
#pragma once

#include <filesystem>
#include <string>

#include "bench/evaluation/marked_record.h"

namespace kx::evaluation {

// Writes two files: NUMBER.i16, the recording as its beats are averaged (500 samples a second, without
// baseline and pacing spikes), lead after lead, microvolts as 16-bit little-endian words; and NUMBER.txt,
// lines of "rr MS", "centre MS" (of the QRS complex in the median beat), "beat SAMPLE KEPT" and "mark LEAD
// PEAK PON POFF QRSON QRSOFF TON TOFF" (ms from the start of the recording, "-" where there is no mark).
// False, and one line in `error`, when they cannot be written.
bool WriteTrainingBeats(const std::filesystem::path& folder, const MarkedRecord& record, std::string& error);

}  // namespace kx::evaluation
