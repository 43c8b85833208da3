// From the signals that a file holds to those of a 12-lead recording.
#pragma once

#include <cstdint>
#include <vector>

#include "host/recording/lead_names.h"
#include "host/recording/recording.h"

namespace kx::recording {

// Longer recordings are refused: a resting ECG takes seconds, and everything is held in memory.
inline constexpr std::uint64_t kMostSamples = 1'000'000;  // per lead: 16 minutes at 1000 a second
inline constexpr double kLongestSeconds = 2000;           // however few samples they hold
// A QRS complex cannot be told below this rate, samples per second.
inline constexpr double kLowestSampleRate = 50;

// One lead as a file holds it. Other signals than the twelve leads are left out by the readers.
struct Channel {
    NamedLead lead;
    double resolutionUv = 0;  // microvolts in a unit; 0: not known
    std::vector<float> microvolts;
    std::vector<Gap> gaps;  // samples without a value, in order and apart
};

// What a group of signals is; the first kind that holds a whole recording is taken.
enum class SignalKind { kRecorded, kDerived, kRepresentativeBeat };

// Signals that were sampled together.
struct SignalGroup {
    SignalKind kind = SignalKind::kRecorded;
    double sampleRate = 0;  // samples per second
    double startMs = 0;     // against the other groups
    std::vector<Channel> channels;
    KxDateTime startTime{};  // year 0: not stated
};

// Fills the recording's leads, rate, resolutions and gaps: of the groups that hold two limb leads and V1 to
// V6 the longest of the first kind; when no group does, groups of the same rate, start and length together;
// when no recording does, the representative beat, which a remark says. Limb leads that are not there are
// derived, gaps bridged (a remark says so). An acquisition time is taken from the group unless the recording
// has one.
//
// Throws ReadFailure when leads are missing, differ in length, occur twice with different samples, were
// recorded one after another or hold no value, and when rate or length is outside the limits.
void TakeSignals(std::vector<SignalGroup> groups, Recording& recording);

}  // namespace kx::recording
