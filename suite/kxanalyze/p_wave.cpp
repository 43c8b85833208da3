#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/slope_walk.h"

namespace kx::analysis {
namespace {

// Where the wave is looked for before the QRS onset, ms.
constexpr int kSearch = 320;
constexpr int kShortestSearch = 40;
constexpr int kClearOfQrs = 12;
// The level before the complex is the mean of this stretch before its onset.
constexpr int kLevelFrom = 12;
constexpr int kLevelTo = 2;
constexpr int kProminenceReach = 120;
constexpr int kHalfWidth = 70;

// A wave is there when it rises this far above its surroundings (root mean square over the leads,
// microvolts), lasts as long as a P wave can, and is at least this much steeper than the line between the T
// wave before and itself: flutter and fibrillation leave no line, and a single wave of theirs is shorter. A
// line below the shortest is the foot of the T wave and tells nothing.
constexpr double kLeastProminence = 9;
constexpr int kShortest = 75;
constexpr int kLongest = 200;
constexpr double kSteeperThanLine = 2.2;
constexpr int kShortestLine = 60;
constexpr int kClearOfWave = 10;

// No atrium depolarises this fast (root mean square over the leads, microvolts per ms): it is an atrial
// pacing impulse. The P wave begins with it and ends with what it sets off.
constexpr double kPacedSlope = 7;
constexpr int kAfterImpulse = 60;

// Boundaries on all leads: part of the steepest velocity on that side, or so many times the quietest tenth's.
constexpr double kOnsetPart = 0.2;
constexpr double kOnsetNoise = 2.0;
constexpr int kOnsetQuiet = 8;
constexpr double kOffsetPart = 0.3;
constexpr double kOffsetNoise = 0.8;
constexpr int kOffsetQuiet = 14;
constexpr int kReach = 100;
constexpr int kOnsetLead = 7;
constexpr int kOffsetLag = -6;
// The latest offset is shown by few leads: it is joined with the place behind the last marked slope of any
// lead.
constexpr double kLateLeast = 0.8;
constexpr double kLatePart = 0.6;
constexpr int kLateQuiet = 60;
constexpr double kLateQuantile = 0.9;
constexpr double kLateWeight = 0.3;

// Boundaries in one lead, slopes in microvolts per ms, levels in microvolts.
constexpr double kLeadLeast = 0.2;
constexpr double kLeadOnsetPart = 0.2;
constexpr double kLeadOffsetPart = 0.45;
constexpr int kLeadQuiet = 10;
constexpr int kLeadEarlierOnset = 10;
constexpr int kLeadLaterOnset = 50;
constexpr int kLeadEarlierOffset = 50;
constexpr int kLeadLaterOffset = 10;
// Readers see a lead's onset later than the slope begins, the more so the fainter the wave is in it.
constexpr int kLeadOnsetLag = 3;
constexpr int kFaintOnsetLag = 16;
constexpr int kLeadOffsetLead = 3;
// The eye ends the wave where the level has come back to the segment before the QRS complex.
constexpr double kReturnedLeast = 10;
constexpr double kReturnedPart = 0.15;
constexpr double kReturnedWeight = 0.3;
// A lead speaks for itself as far as its slopes reach this part of the steepest lead's.
constexpr double kClearPart = 0.5;
constexpr double kOwnWeight = 0.7;

double At(const Trace& trace, Place place) {
    return trace[static_cast<std::size_t>(place)];
}

double LevelBeforeQrs(const BeatLead& lead, Place qrsOn) {
    return MeanBetween(lead.wide, qrsOn - kLevelFrom, qrsOn - kLevelTo, lead.wide.front());
}

struct Wave {
    Place from = 0;  // where the search begins
    Place qrsOn = 0;
    Place peak = 0;
    double prominence = 0;
    Place rise = 0;  // steepest places on all leads before and behind the peak
    Place fall = 0;
    Interval all;
};

// Lowest value on the way from the peak to a higher one, at most kProminenceReach away and not past `end`.
double Valley(const Trace& trace, Place peak, int direction, Place end) {
    double lowest = At(trace, peak);
    for (int away = 1; away <= kProminenceReach; ++away) {
        const Place i = peak + direction * away;
        if ((end - i) * direction < 0 || At(trace, i) > At(trace, peak)) {
            break;
        }
        lowest = std::min(lowest, At(trace, i));
    }
    return lowest;
}

std::span<const double> Between(const Trace& trace, Place from, Place to) {
    return std::span(trace).subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

void FindPeak(const Beat& beat, Wave& wave) {
    const Trace& deflection =
        DistanceFrom(beat, wave.qrsOn - kLevelFrom, wave.qrsOn - kLevelTo, wave.from, wave.qrsOn);
    for (Place i = wave.from + 1; i < wave.qrsOn - kClearOfQrs; ++i) {
        const double value = At(deflection, i);
        if (value < At(deflection, i - 1) || value <= At(deflection, i + 1)) {
            continue;
        }
        const double prominence =
            value - std::max(Valley(deflection, i, -1, wave.from), Valley(deflection, i, +1, wave.qrsOn - 1));
        if (prominence > wave.prominence) {
            wave.prominence = prominence;
            wave.peak = i;
        }
    }
}

void FindOnAllLeads(const Beat& beat, Wave& wave) {
    const Trace& velocity = beat.wideVelocity;
    wave.rise = Steepest(velocity, std::max(wave.from, wave.peak - kHalfWidth), wave.peak);
    wave.fall = Steepest(velocity, wave.peak, std::min(wave.qrsOn - kClearOfQrs, wave.peak + kHalfWidth));
    const double noise = Quantile(beat, Between(velocity, wave.from, wave.qrsOn), 0.1);
    const double onset = std::max(kOnsetNoise * noise, kOnsetPart * At(velocity, wave.rise));
    const double offset = std::max(kOffsetNoise * noise, kOffsetPart * At(velocity, wave.fall));
    wave.all.on = WalkOut(velocity, wave.rise, -1, {onset, kOnsetQuiet, kReach});
    wave.all.off = std::min(wave.qrsOn - 2, WalkOut(velocity, wave.fall, +1, {offset, kOffsetQuiet, kReach}));
}

// The line between the end of the T wave before (known from this beat's own and the RR interval) and the
// onset.
bool StandsOutOfLine(const Beat& beat, const Wave& wave, Place tOff) {
    const Trace& velocity = beat.wideVelocity;
    const Place previousT = tOff > 0 && beat.rr > 0 ? tOff - beat.rr : 0;
    const Place from = std::max(previousT + 2 * kClearOfWave, kClearOfWave);
    const Place to = wave.all.on - kClearOfWave;
    if (to - from < kShortestLine) {
        return true;
    }
    const double line = Median(beat, Between(velocity, from, to));
    return std::min(At(velocity, wave.rise), At(velocity, wave.fall)) > kSteeperThanLine * line;
}

Interval FindInLead(const BeatLead& lead, const Wave& wave, Place rise, Place fall) {
    const Trace& slope = lead.wideSlope;
    const double onset = std::max(kLeadLeast, kLeadOnsetPart * std::fabs(At(slope, rise)));
    const double offset = std::max(kLeadLeast, kLeadOffsetPart * std::fabs(At(slope, fall)));
    Interval own{WalkOut(slope, rise, -1, {onset, kLeadQuiet, kReach}),
                 WalkOut(slope, fall, +1, {offset, kLeadQuiet, kReach})};

    const double base = LevelBeforeQrs(lead, wave.qrsOn);
    const double returned =
        std::max(kReturnedLeast, kReturnedPart * std::fabs(At(lead.wide, wave.peak) - base));
    Place last = wave.qrsOn - 4;
    while (last > fall && std::fabs(At(lead.wide, last) - base) <= returned) {
        --last;
    }
    if (last > fall) {
        own.off = Towards(own.off, last, kReturnedWeight);
    }
    own.on = std::clamp(own.on, wave.all.on - kLeadEarlierOnset, wave.all.on + kLeadLaterOnset);
    own.off = std::clamp(own.off, wave.all.off - kLeadEarlierOffset, wave.all.off + kLeadLaterOffset);
    own.off = std::min(own.off, wave.qrsOn - 2);
    return own;
}

// The leads' own boundaries, and where the last marked slope of each ends.
WaveBoundaries FindInLeads(const Beat& beat, const Wave& wave, LeadValues& lateOffsets) {
    WaveBoundaries p;
    LeadValues onsets, offsets;
    std::array<double, KX_MEASURED_LEADS> riseSlope{}, fallSlope{};
    double steepest = 0;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        const BeatLead& lead = beat.leads[code];
        if (!lead.present) {
            continue;
        }
        const Trace& slope = lead.wideSlope;
        const Place rise = Steepest(slope, std::max(wave.from, wave.all.on), wave.peak);
        const Place fall = Steepest(slope, wave.peak, wave.all.off);
        riseSlope[code] = std::fabs(At(slope, rise));
        fallSlope[code] = std::fabs(At(slope, fall));
        steepest = std::max({steepest, riseSlope[code], fallSlope[code]});
        p.leads[code] = FindInLead(lead, wave, rise, fall);
        onsets.Add(p.leads[code].on);
        offsets.Add(p.leads[code].off);
        const double late = std::max(kLateLeast, kLatePart * fallSlope[code]);
        lateOffsets.Add(std::min(WalkOut(slope, fall, +1, {late, kLateQuiet, kReach}), wave.qrsOn - 2));
    }
    const double agreedOnset = Median(beat, onsets), agreedOffset = Median(beat, offsets);
    const auto clearness = [&](double slope) { return std::min(1.0, slope / (kClearPart * steepest)); };
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            Interval& own = p.leads[code];
            const double rise = clearness(riseSlope[code]);
            const auto lag = kLeadOnsetLag + static_cast<int>(std::lround(kFaintOnsetLag * (1 - rise)));
            own.on = std::max(1, Towards(agreedOnset, own.on, kOwnWeight * rise) + lag);
            own.off =
                Towards(agreedOffset, own.off, kOwnWeight * clearness(fallSlope[code])) - kLeadOffsetLead;
            own.off = std::max(own.off, own.on + 1);
        }
    }
    return p;
}

}  // namespace

WaveBoundaries FindP(const Beat& beat, const WaveBoundaries& qrs, const WaveBoundaries& t) {
    Wave wave;
    wave.qrsOn = qrs.global.on;
    wave.from = std::max(4, wave.qrsOn - kSearch);
    if (wave.qrsOn - wave.from < kShortestSearch) {
        return {};
    }
    FindPeak(beat, wave);
    if (wave.prominence < kLeastProminence) {
        return {};
    }
    FindOnAllLeads(beat, wave);
    const bool paced =
        std::max(At(beat.wideVelocity, wave.rise), At(beat.wideVelocity, wave.fall)) > kPacedSlope;
    const int duration = wave.all.off - wave.all.on;
    if (duration > kLongest ||
        (!paced && (duration < kShortest || !StandsOutOfLine(beat, wave, t.global.off)))) {
        return {};
    }
    LeadValues lateOffsets;
    WaveBoundaries p = FindInLeads(beat, wave, lateOffsets);
    p.global.on = std::max(1, wave.all.on - kOnsetLead);
    p.global.off =
        Towards(wave.all.off, static_cast<Place>(Quantile(beat, lateOffsets, kLateQuantile)), kLateWeight);
    if (paced) {
        const Trace& velocity = beat.wideVelocity;
        const Place fall = Steepest(velocity, wave.fall + kAfterImpulse, wave.qrsOn - kClearOfQrs - 4);
        const Place end =
            WalkOut(velocity, fall, +1, {kOffsetPart * At(velocity, fall), kOffsetQuiet, kReach});
        p.global.off = std::max(p.global.off, end);
    }
    p.global.off = std::min(p.global.off + kOffsetLag, wave.qrsOn - 2);
    return p;
}

}  // namespace kx::analysis
