// Where the P wave of all leads begins and ends, by the curve of joined slopes (waves_by_rules.h).
#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/curve.h"
#include "suite/kxanalyze/waves_by_rules.h"

namespace kx::analysis {
namespace {

// Where the wave is looked for before the QRS onset, ms.
constexpr int kSearch = 320;
constexpr int kClearOfQrs = 12;
constexpr int kShortestSearch = 40;
// The level before the complex is the mean of this stretch before its onset.
constexpr int kLevelFrom = 14;
constexpr int kLevelTo = 4;
constexpr int kShortestWave = 18;
constexpr int kProminenceReach = 120;
constexpr int kHalfWidth = 76;
// Its edges: part of the steepest place on each side, not below so many times the quietest tenth; how long
// the curve stays below.
constexpr double kOnsetPart = 0.25;
constexpr double kOffsetPart = 0.40;
constexpr double kNoiseFactor = 1.5;
constexpr int kOnsetQuiet = 10;
constexpr int kOffsetQuiet = 12;
// Readers see the wave begin earlier. They see it end where the level of the PQ segment is reached, which few
// slopes tell: its end is drawn towards the complex.
constexpr double kOnsetLead = 2.2;
constexpr double kOwnOffset = 0.65;
constexpr double kOffsetLead = 13;
// A wave is steeper than the line before it by this factor: the waves of fibrillation and flutter leave no
// line. A line below the shortest is the foot of the T wave and tells nothing; then a wave is steeper than
// the noise of the beat.
constexpr double kSteeperThanLine = 2.46;
constexpr int kShortestLine = 24;
constexpr double kLeastLine = 0.2;
constexpr int kClearOfWave = 10;

// The lowest value on the way from a peak to a higher one.
double Valley(const Trace& curve, Place peak, int direction, Place end) {
    double lowest = At(curve, peak);
    for (int away = 1; away <= kProminenceReach; ++away) {
        const Place i = peak + direction * away;
        if ((end - i) * direction < 0 || At(curve, i) > At(curve, peak)) {
            break;
        }
        lowest = std::min(lowest, At(curve, i));
    }
    return lowest;
}

// The most prominent place of all leads together, each in units of its noise.
Place FindPeak(const Beat& beat, Place from, Place qrsOn) {
    Trace& height = beat.curve;
    height.assign(static_cast<std::size_t>(beat.length), 0);
    for (const BeatLead& lead : beat.leads) {
        if (!lead.present || lead.wideNoise <= 0) {
            continue;
        }
        const double base = MeanBetween(lead.wide, qrsOn - kLevelFrom, qrsOn - kLevelTo, lead.wide.front());
        for (Place i = from; i < qrsOn; ++i) {
            const double away = (At(lead.wide, i) - base) / lead.wideNoise;
            height[static_cast<std::size_t>(i)] += away * away;
        }
    }
    std::transform(height.begin(), height.end(), height.begin(),
                   [](double value) { return std::sqrt(value); });
    Place peak = 0;
    double most = 0;
    for (Place i = from + 1; i < qrsOn - kClearOfQrs; ++i) {
        const double value = At(height, i);
        if (value < At(height, i - 1) || value <= At(height, i + 1)) {
            continue;
        }
        const double prominence =
            value - std::max(Valley(height, i, -1, from), Valley(height, i, +1, qrsOn - kClearOfQrs));
        if (prominence > most) {
            most = prominence;
            peak = i;
        }
    }
    return peak;
}

}  // namespace

PByRules FindP(const Beat& beat, Interval qrs, Place tOff) {
    const Trace& curve = beat.wideVelocity;
    const Place previousT = tOff > 0 && beat.rr > 0 ? std::max(1, tOff - beat.rr) : 1;
    const Place from = std::max(qrs.on - kSearch, previousT);
    const Place to = qrs.on - kClearOfQrs;
    if (qrs.on - from < kShortestSearch) {
        return {};
    }
    const Place peak = FindPeak(beat, from, qrs.on);
    if (peak == 0) {
        return {};
    }
    const Place rise = LargestPlace(curve, std::max(from, peak - kHalfWidth), peak + 1);
    const Place fall = LargestPlace(curve, peak, std::min(to, peak + kHalfWidth) + 1);
    const double least = kNoiseFactor * Quantile(beat, Between(curve, from, qrs.on), 0.1);
    const Place onset = LastAbove(curve, rise, -1, std::max(kOnsetPart * At(curve, rise), least), kOnsetQuiet,
                                  std::max(1, from - kClearOfWave));
    const Place offset =
        LastAbove(curve, fall, +1, std::max(kOffsetPart * At(curve, fall), least), kOffsetQuiet, qrs.on);
    const auto line = Between(curve, previousT, onset - kClearOfWave);
    const double noise =
        static_cast<int>(line.size()) < kShortestLine ? 1 : std::max(kLeastLine, Median(beat, line));
    PByRules p;
    p.clearness = std::min(At(curve, rise), At(curve, fall)) / (kSteeperThanLine * noise);
    p.all.on = Rounded(onset - kOnsetLead);
    p.all.off =
        std::clamp(Rounded(qrs.on + kOwnOffset * (offset - qrs.on) - kOffsetLead), peak + 1, qrs.on - 1);
    return p;
}

Place FindLeadPOff(const Beat& beat, const BeatLead& lead, Place on, Place qrsOn) {
    const Place from = std::max(on, 1), to = qrsOn - kClearOfQrs;
    if (to - from < kShortestWave) {
        return qrsOn;
    }
    // The peak stands farthest from the line between the ends of the wave.
    const double first = At(lead.wide, from),
                 last = MeanBetween(lead.wide, qrsOn - kLevelFrom, qrsOn - kLevelTo, first);
    const double slope = (last - first) / (qrsOn - from);
    Place peak = from;
    double most = 0;
    for (Place i = from; i < to; ++i) {
        const double away = std::fabs(At(lead.wide, i) - first - slope * (i - from));
        if (away > most) {
            most = away;
            peak = i;
        }
    }
    Sizes(lead.wideSlope, beat.curve);
    const Place fall = LargestPlace(beat.curve, peak, std::min(to, peak + kHalfWidth));
    const double rest = std::max(kOffsetPart * At(beat.curve, fall), lead.wideNoise);
    return LastAbove(beat.curve, fall, +1, rest, kOffsetQuiet, qrsOn);
}

}  // namespace kx::analysis
