#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/curve.h"

namespace kx::analysis {
namespace {

// Where the wave is looked for before the QRS onset, ms.
constexpr int kSearch = 320;
constexpr int kClearOfQrs = 12;
constexpr int kShortestSearch = 40;
// The level before the complex is the mean of this stretch before its onset.
constexpr int kLevelFrom = 14;
constexpr int kLevelTo = 4;
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
// In one lead.
constexpr double kOwnWeight = 0.5;
constexpr int kLeadOnsetLag = 7;
constexpr int kLeadOffsetLead = 9;

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

// Where a wave is looked for and found, and its edges on a curve.
struct Found {
    Place from;
    Place qrsOn;
    Place peak;
    Place rise = 0;
    Place fall = 0;
    Interval edges;
};

void FindEdges(const Beat& beat, const Trace& curve, Place first, Place last, Found& found) {
    found.rise = LargestPlace(curve, std::max({first, found.from, found.peak - kHalfWidth}), found.peak + 1);
    found.fall = LargestPlace(curve, found.peak,
                              std::min({last, found.qrsOn - kClearOfQrs, found.peak + kHalfWidth}) + 1);
    const double least = kNoiseFactor * Quantile(beat, Between(curve, found.from, found.qrsOn), 0.1);
    found.edges.on = LastAbove(curve, found.rise, -1, std::max(kOnsetPart * At(curve, found.rise), least),
                               kOnsetQuiet, first);
    found.edges.off = LastAbove(curve, found.fall, +1, std::max(kOffsetPart * At(curve, found.fall), least),
                                kOffsetQuiet, last);
}

bool StandsOut(const Beat& beat, const Found& found, Place previousT) {
    const Trace& curve = beat.wideVelocity;
    const auto line = Between(curve, previousT, found.edges.on - kClearOfWave);
    const double noise =
        static_cast<int>(line.size()) < kShortestLine ? 1 : std::max(kLeastLine, Median(beat, line));
    return std::min(At(curve, found.rise), At(curve, found.fall)) > kSteeperThanLine * noise;
}

// The lead's own edges, half way to those of all leads.
Interval FindInLead(const Beat& beat, const BeatLead& lead, Interval all, Found found) {
    Sizes(lead.wideSlope, beat.curve);
    FindEdges(beat, beat.curve, all.on, all.off, found);
    const Place on = Rounded(all.on + kOwnWeight * (found.edges.on - all.on) + kLeadOnsetLag);
    const Place off = Rounded(all.off + kOwnWeight * (found.edges.off - all.off) - kLeadOffsetLead);
    return {std::min(on, found.peak), std::max(off, found.peak + 1)};
}

}  // namespace

WaveBoundaries FindP(const Beat& beat, const WaveBoundaries& qrs, const WaveBoundaries& t) {
    const Place qrsOn = qrs.global.on;
    const Place previousT = t.global.Present() && beat.rr > 0 ? std::max(1, t.global.off - beat.rr) : 1;
    Found found{.from = std::max(qrsOn - kSearch, previousT), .qrsOn = qrsOn, .peak = 0, .edges = {}};
    if (qrsOn - found.from < kShortestSearch) {
        return {};
    }
    found.peak = FindPeak(beat, found.from, qrsOn);
    if (found.peak == 0) {
        return {};
    }
    FindEdges(beat, beat.wideVelocity, std::max(1, found.from - kClearOfWave), qrsOn, found);
    if (!StandsOut(beat, found, previousT)) {
        return {};
    }
    WaveBoundaries p;
    p.global.on = Rounded(found.edges.on - kOnsetLead);
    p.global.off = std::clamp(Rounded(qrsOn + kOwnOffset * (found.edges.off - qrsOn) - kOffsetLead),
                              found.peak + 1, qrsOn - 1);
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            p.leads[code] = FindInLead(beat, beat.leads[code], p.global, found);
        }
    }
    return p;
}

}  // namespace kx::analysis
