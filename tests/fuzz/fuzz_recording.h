// What a fuzz target asks of a recording that a reader made of any bytes.
#pragma once

#include <cmath>
#include <cstdlib>
#include <numeric>
#include <string>

#include "host/recording/median_beat.h"

namespace kx::recording {

inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// It is whole; for one input in eight beats are sought in it, which takes a hundred times as long as a reading.
inline void UseEverything(const Recording& recording, const std::uint8_t* input, std::size_t size) {
    Require(recording.SampleCount() > 0 && recording.sampleRate > 0);
    for (const auto& lead : recording.leads) {
        Require(lead.size() == recording.SampleCount());
        for (const float value : lead) {
            Require(std::isfinite(value));
        }
    }
    std::size_t end = 0;
    for (const auto& gap : recording.gaps) {
        Require(gap.first < gap.end && gap.first >= end && gap.end <= recording.SampleCount());
        end = gap.end;
    }
    // Seconds of signal only: the search takes time in proportion.
    if (std::accumulate(input, input + size, 0u) % 8 == 0 && recording.DurationMs() < 3000 && recording.sampleRate < 5000) {
        std::string error;
        const auto beat = MakeMedianBeat(recording, error);
        Require(beat.has_value() != !error.empty());
    }
}

}  // namespace kx::recording
