#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/slope_walk.h"

namespace kx::analysis {
namespace {

// Where the wave is looked for: from this long behind the QRS complex, to this part of the RR interval and so
// many ms behind the QRS onset, never later than the last limit. Without an RR interval one of 900 ms is
// assumed.
constexpr int kAfterQrs = 60;
constexpr double kRrPart = 0.5;
constexpr int kRrPlus = 180;
constexpr int kLatest = 640;
constexpr int kAssumedRr = 900;
constexpr int kShortestSearch = 80;
// The level that the wave stands on is the mean of this stretch before the QRS onset.
constexpr int kLevelFrom = 14;
constexpr int kLevelTo = 4;

constexpr int kRise = 110;
constexpr int kFall = 130;
constexpr double kOnsetPart = 0.5;
constexpr double kOffsetPart = 0.2;
constexpr int kQuiet = 20;
constexpr int kOnsetQuiet = 8;
constexpr int kLeadOnsetLag = -10;
constexpr double kLeadOnsetPart = 0.4;
constexpr int kReach = 160;
// The latest offset of all: half way between that of all leads together and that of the latest leads, and a
// little later.
constexpr double kLateQuantile = 0.95;
constexpr double kLateWeight = 0.5;
constexpr int kOffsetLag = 9;

// In one lead: its peak may lie this far from that of all leads together.
constexpr int kPeakApart = 40;
constexpr double kLeadLeast = 0.1;  // microvolts per ms
constexpr double kLeadOffsetPart = 0.25;
constexpr int kLeadQuiet = 16;
constexpr int kLeadEarlierOffset = 70;
constexpr int kLeadLaterOffset = 20;
// A lead speaks for itself as far as its slope reaches this part of the steepest lead's.
constexpr double kClearPart = 0.8;
constexpr double kOwnOffset = 0.5;
constexpr double kOwnOnset = 0.8;

double At(const Trace& trace, Place place) {
    return trace[static_cast<std::size_t>(place)];
}

// The highest local maximum above the lowest value that follows it; 0 when the curve has none.
Place FindPeak(const Trace& deflection, Place from, Place limit) {
    Place peak = 0;
    double best = 0;
    for (Place i = from; i < limit; ++i) {
        const double value = At(deflection, i);
        if (value < At(deflection, i - 1) || value <= At(deflection, i + 1)) {
            continue;
        }
        double lowest = value;
        for (Place k = i + 1; k < limit && At(deflection, k) <= value; ++k) {
            lowest = std::min(lowest, At(deflection, k));
        }
        if (value - lowest > best) {
            best = value - lowest;
            peak = i;
        }
    }
    return peak;
}

// The lead's own peak, near that of all leads together.
Place FindLeadPeak(const BeatLead& lead, Place qrsOn, Place peak, Place limit) {
    const double base = MeanBetween(lead.wide, qrsOn - kLevelFrom, qrsOn - kLevelTo, lead.wide.front());
    const Place from = peak - kPeakApart;
    Place own = peak;
    for (Place i = from; i <= std::min(peak + kPeakApart, limit); ++i) {
        if (std::fabs(At(lead.wide, i) - base) > std::fabs(At(lead.wide, own) - base)) {
            own = i;
        }
    }
    return own;
}

}  // namespace

WaveBoundaries FindT(const Beat& beat, const WaveBoundaries& qrs) {
    WaveBoundaries t;
    const Interval complex = qrs.global;
    const int rr = beat.rr > 0 ? beat.rr : kAssumedRr;
    const Place limit = std::min(
        {beat.length - 3, complex.on + static_cast<Place>(kRrPart * rr) + kRrPlus, complex.on + kLatest});
    const Place from = complex.off + kAfterQrs;
    if (limit - from < kShortestSearch) {
        return t;
    }
    const Place peak =
        FindPeak(DistanceFrom(beat, complex.on - kLevelFrom, complex.on - kLevelTo, complex.off, limit + 1),
                 from, limit);
    if (peak == 0) {
        return t;
    }
    const Trace& velocity = beat.wideVelocity;
    const Place fall = Steepest(velocity, peak, std::min(limit, peak + kFall));
    const Place rise = Steepest(velocity, std::max(complex.off + kQuiet, peak - kRise), peak);
    const Interval all{WalkOut(velocity, rise, -1, {kOnsetPart * At(velocity, rise), kOnsetQuiet, kReach}),
                       WalkOut(velocity, fall, +1, {kOffsetPart * At(velocity, fall), kQuiet, kReach})};

    LeadValues onsets, offsets;
    std::array<double, KX_MEASURED_LEADS> fallSlope{};
    double steepest = 0;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        const BeatLead& lead = beat.leads[code];
        if (!lead.present) {
            continue;
        }
        const Trace& slope = lead.wideSlope;
        const Place ownPeak = FindLeadPeak(lead, complex.on, peak, limit);
        const Place ownFall = Steepest(slope, ownPeak, std::min(limit, all.off));
        const Place ownRise = Steepest(slope, all.on, ownPeak);
        fallSlope[code] = std::fabs(At(slope, ownFall));
        steepest = std::max(steepest, fallSlope[code]);
        const double offset = std::max(kLeadLeast, kLeadOffsetPart * fallSlope[code]);
        Interval& own = t.leads[code];
        own.off = std::clamp(WalkOut(slope, ownFall, +1, {offset, kLeadQuiet, kReach}),
                             all.off - kLeadEarlierOffset, all.off + kLeadLaterOffset);
        own.on = WalkOut(slope, ownRise, -1,
                         {kLeadOnsetPart * std::fabs(At(slope, ownRise)), kOnsetQuiet, kReach});
        onsets.Add(own.on);
        offsets.Add(own.off);
    }
    const double agreedOnset = Median(beat, onsets), agreedOffset = Median(beat, offsets);
    t.global.on = all.on;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            Interval& own = t.leads[code];
            const double weight = kOwnOffset * std::min(1.0, fallSlope[code] / (kClearPart * steepest));
            own.off = Towards(agreedOffset, own.off, weight);
            own.on =
                std::clamp(Towards(agreedOnset, own.on, kOwnOnset) + kLeadOnsetLag, complex.off, own.off - 1);
            t.global.on = std::min(t.global.on, own.on);
        }
    }
    const auto late = static_cast<Place>(Quantile(beat, offsets, kLateQuantile));
    t.global.off = std::min(Towards(all.off, late, kLateWeight) + kOffsetLag, beat.length - 1);
    return t;
}

}  // namespace kx::analysis
