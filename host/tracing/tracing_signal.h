// The recorded signal of a test, as the tracing shows it. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "include/kxdialogs.h"

namespace kxhost {

// A view of the signal behind KxTestRecord.ecg; the record outlives it.
struct TracingSignal {
    std::vector<std::span<const std::int16_t>> leads;  // by lead code, all of one length
    double sampleRate = 0;                             // per second, > 0
    std::vector<double> unitMv;                        // of each lead, millivolts per unit, > 0

    std::size_t SampleCount() const { return leads.empty() ? 0 : leads[0].size(); }
    double DurationMs() const { return double(SampleCount()) * 1000 / sampleRate; }
    double Millivolts(std::size_t lead, std::size_t sample) const {
        return leads[lead][sample] * unitMv[lead];
    }
};

// None without a signal, or with a header that makes no sense.
std::optional<TracingSignal> SignalOf(const KxTestRecord& test);

// One beat of the recording.
struct TracedBeat {
    double timeMs = 0;
    std::uint8_t label = 0;  // lib/beat_labels.h
    bool inMedian = false;   // it is one of those that the median beat was made of
};

std::vector<TracedBeat> BeatsOf(const KxTestRecord& test);

// The letter by which a beat is ticked: N normal, S supraventricular, V ventricular, P paced, ? unclassified;
// and its name in words (Italian, UTF-16).
wchar_t LetterOf(std::uint8_t label);
const wchar_t* NameOfBeat(std::uint8_t label);

}  // namespace kxhost
