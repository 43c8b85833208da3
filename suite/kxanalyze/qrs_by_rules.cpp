// Where the QRS complex of all leads begins and ends, by the curve of joined slopes (waves_by_rules.h).
#include <algorithm>

#include "suite/kxanalyze/curve.h"
#include "suite/kxanalyze/waves_by_rules.h"

namespace kx::analysis {
namespace {

// Where the line beside the complex is looked for, ms from its centre.
constexpr int kNearestBefore = 16;
constexpr int kFarthestBefore = 150;
constexpr int kNearestBehind = 24;
constexpr int kFarthestBehind = 160;
// What stands out of the line: so many times its velocity, and this part of the largest.
constexpr double kFloorFactor = 2.5;
constexpr double kPart = 0.025;
// Seen from the line the complex has begun for good where the curve reaches this.
constexpr double kBegun = 0.25;
constexpr double kBegunFactor = 4;
// Readers see a complex begin before the curve passes the threshold, and end behind it.
constexpr double kOnsetLead = 8.2;
constexpr double kOffsetLag = 2.2;
// A complex whose edge lies near a pacing spike begins with it.
constexpr int kBehindSpike = 6;
constexpr int kSpikeBehindEdge = 50;
constexpr int kSpikeBeforeEdge = 120;
// A complex whose largest slopes are not so many times those of the line beside it is not told from the
// noise.
constexpr double kStandsOut = 4;

// The edge of the complex seen from the line: the last place below the threshold before the complex has begun
// for good. Coming from the line is what cannot step over it into the wave on its other side.
Place FindEdge(const Trace& curve, const Line& line, Place centre) {
    const double largest = At(curve, centre);
    const double threshold = std::max(kFloorFactor * line.floor, kPart * largest + line.floor / 2);
    const double begun = std::max(kBegunFactor * threshold, kBegun * largest);
    const int step = line.place < centre ? 1 : -1;
    Place edge = line.place;
    for (Place i = line.place; i != centre && At(curve, i) <= begun; i += step) {
        if (At(curve, i) < threshold) {
            edge = i;
        }
    }
    return edge;
}

}  // namespace

QrsByRules FindQrs(const Beat& beat) {
    const Trace& curve = beat.fineVelocity;
    const Line before = FindLine(curve, beat.centre - kFarthestBefore, beat.centre - kNearestBefore);
    const Line behind = FindLine(curve, beat.centre + kNearestBehind, beat.centre + kFarthestBehind);
    if (At(curve, beat.centre) < kStandsOut * std::max(before.floor, behind.floor)) {
        return {};
    }
    const Place onset = FindEdge(curve, before, beat.centre);
    const Place offset = FindEdge(curve, behind, beat.centre);
    QrsByRules qrs;
    qrs.paced =
        beat.spike > 0 && onset >= beat.spike - kSpikeBehindEdge && onset <= beat.spike + kSpikeBeforeEdge;
    qrs.all.on = Rounded(qrs.paced ? beat.spike + kBehindSpike : onset - kOnsetLead);
    qrs.all.off =
        std::clamp(Rounded(offset + kOffsetLag), std::min(qrs.all.on + 1, beat.length - 1), beat.length - 1);
    return qrs;
}

}  // namespace kx::analysis
