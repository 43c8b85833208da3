// Where the T wave of all leads ends, by the curve of joined slopes (waves_by_rules.h).
#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/curve.h"
#include "suite/kxanalyze/waves_by_rules.h"

namespace kx::analysis {
namespace {

// Where the wave is looked for, ms: behind the complex, before the next beat.
constexpr int kAfterQrs = 56;
constexpr int kLatest = 700;
constexpr int kHalfRrPlus = 220;
constexpr int kBeforeNext = 120;
constexpr int kBeforeNextSlow = 180;  // at an RR interval above a second
constexpr int kAssumedRr = 900;
constexpr int kShortestSearch = 40;
// Where its peak is expected: at this part of 400 ms times the cube root of the RR interval in seconds (L. S.
// Fridericia, Acta Med. Scand. 53, 469-486, 1920), give or take the other.
constexpr double kExpected = 0.76;
constexpr double kSpread = 0.20;
constexpr double kQtAtOneSecond = 400;
constexpr double kShortestRr = 0.4;
constexpr double kLongestRr = 1.6;
// A lead is heard as far as its wave is so many times as high as its noise climbs in 12 ms.
constexpr double kClear = 15;
constexpr double kNoiseMs = 12;
// How far a wave falls to each side of its peak; the end of a T wave is clearer than its beginning.
constexpr int kReach = 140;
constexpr double kRisePart = 0.3;
// The level before the complex is the mean of this stretch before its onset.
constexpr int kLevelFrom = 14;
constexpr int kLevelTo = 4;
// In one lead: how far its peak lies from that of all leads; where the slope behind it has come to rest, and
// how long the line is that follows.
constexpr int kPeakApart = 40;
constexpr double kRest = 0.25;
constexpr int kLineMs = 50;
// The end of all leads is one of the latest, and later: a tangent meets the line before the wave has left it.
constexpr double kLateQuantile = 0.85;
constexpr int kGlobalLag = 16;

struct Search {
    Place from;
    Place to;
    double expected;
    double spread;
};

Search WhereToLook(const Beat& beat, Interval qrs) {
    const int rr = beat.rr > 0 ? beat.rr : kAssumedRr;
    const int beforeNext = rr > 1000 ? kBeforeNextSlow : kBeforeNext;
    const double qt = kQtAtOneSecond * std::cbrt(std::clamp(rr / 1000.0, kShortestRr, kLongestRr));
    const Place latest = qrs.on + std::min({rr / 2 + kHalfRrPlus, kLatest, rr - beforeNext});
    return {qrs.off + kAfterQrs, std::min(latest, beat.length - 3), qrs.on + kExpected * qt, kSpread * qt};
}

double LevelBefore(const BeatLead& lead, Place qrsOn) {
    return MeanBetween(lead.wide, qrsOn - kLevelFrom, qrsOn - kLevelTo, lead.wide.front());
}

// How far the leads stand from their level before the complex, each as a part of its own largest distance.
const Trace& FindHeight(const Beat& beat, Place qrsOn, const Search& search) {
    Trace& height = beat.curve;
    height.assign(static_cast<std::size_t>(beat.length), 0);
    for (const BeatLead& lead : beat.leads) {
        if (!lead.present) {
            continue;
        }
        const double base = LevelBefore(lead, qrsOn);
        double highest = 0;
        for (const double value : Between(lead.wide, search.from, search.to)) {
            highest = std::max(highest, std::fabs(value - base));
        }
        const double clear = kClear * kNoiseMs * lead.wideNoise;
        const double scale = 1 / std::max({highest, clear, 1e-9});
        for (Place i = search.from - kAfterQrs; i < std::min(beat.length, search.to + kReach); ++i) {
            const double away = (At(lead.wide, i) - base) * scale;
            height[static_cast<std::size_t>(i)] += away * away;
        }
    }
    std::transform(height.begin(), height.end(), height.begin(),
                   [](double value) { return std::sqrt(value); });
    return height;
}

// The lowest value on the way from a peak to a higher one or to `end`.
double Valley(const Trace& curve, Place peak, int direction, Place end) {
    double lowest = At(curve, peak);
    for (Place i = peak; i != end && At(curve, i) <= At(curve, peak); i += direction) {
        lowest = std::min(lowest, At(curve, i));
    }
    return lowest;
}

Place FindPeak(const Trace& height, const Search& search) {
    Place peak = 0;
    double best = 0;
    for (Place i = search.from; i <= search.to; ++i) {
        const double value = At(height, i);
        if (value < At(height, i - 1) || value <= At(height, i + 1)) {
            continue;
        }
        const double fall =
            value - Valley(height, i, +1, std::min(i + kReach, static_cast<Place>(height.size())));
        const double rise = value - Valley(height, i, -1, std::max(i - kReach, search.from - kAfterQrs));
        const double away = (i - search.expected) / search.spread;
        const double score = (fall + kRisePart * rise) * std::exp(-away * away / 2);
        if (score > best) {
            best = score;
            peak = i;
        }
    }
    return peak;
}

Place FindLeadPeak(const BeatLead& lead, Place qrsOn, Place peak, const Search& search) {
    const double base = LevelBefore(lead, qrsOn);
    Place own = peak;
    const Place last = std::min(peak + kPeakApart, search.to);
    for (Place i = std::max(peak - kPeakApart, search.from); i <= last; ++i) {
        if (std::fabs(At(lead.wide, i) - base) > std::fabs(At(lead.wide, own) - base)) {
            own = i;
        }
    }
    return own;
}

// Where the tangent at the steepest place behind the peak meets the line that follows (E. Lepeschkin and B.
// Surawicz, Circulation 6, 378-388, 1952).
Place FindEnd(const Beat& beat, const BeatLead& lead, Place peak) {
    Sizes(lead.wideSlope, beat.curve);
    const Place fall = LargestPlace(beat.curve, peak, std::min(peak + kReach, beat.length - 2));
    const double slope = At(lead.wideSlope, fall);
    if (slope == 0) {
        return fall;
    }
    Place rest = fall;
    while (rest < beat.length - 2 && At(beat.curve, rest) >= kRest * At(beat.curve, fall)) {
        ++rest;
    }
    const double level = Median(beat, Between(lead.wide, rest, rest + kLineMs));
    return fall + Rounded(std::clamp((level - At(lead.wide, fall)) / slope, 0.0, double{kReach}));
}

}  // namespace

Place FindTOff(const Beat& beat, Interval qrs) {
    const Search search = WhereToLook(beat, qrs);
    if (search.to - search.from < kShortestSearch) {
        return 0;
    }
    const Place peak = FindPeak(FindHeight(beat, qrs.on, search), search);
    if (peak == 0) {
        return 0;
    }
    LeadValues ends;
    for (const BeatLead& lead : beat.leads) {
        if (lead.present) {
            ends.Add(FindEnd(beat, lead, FindLeadPeak(lead, qrs.on, peak, search)));
        }
    }
    return std::min(Rounded(Quantile(beat, ends, kLateQuantile) + kGlobalLag), beat.length - 1);
}

}  // namespace kx::analysis
