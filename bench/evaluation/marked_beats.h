// The beats of one lead as cardiologists marked them.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/recording/wfdb/annotations.h"

namespace kx::evaluation {

// Times in ms from the start of the recording. A boundary is absent where its mark is: some triplets of
// onset, peak and offset are not whole.
struct MarkedWave {
    double peak = 0;
    std::optional<double> on;
    std::optional<double> off;
};

struct MarkedBeat {
    MarkedWave qrs;
    std::optional<MarkedWave> p;  // the last one before the QRS complex
    std::optional<MarkedWave> t;  // the first one behind it
};

// Joins the marks of a lead into beats: a P wave belongs to the QRS complex that is marked next if that
// follows within 450 ms, a T wave to the one marked before if that lies within 700 ms.
std::vector<MarkedBeat> JoinMarks(std::span<const recording::WfdbAnnotation> marks, double sampleRate);

// The beats in an annotation file. Nothing, and one line naming file and reason in `error`, when it cannot be
// read.
std::optional<std::vector<MarkedBeat>> ReadMarkedBeats(const std::filesystem::path& file, double sampleRate,
                                                       std::string& error);

}  // namespace kx::evaluation
