#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/curve.h"

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
// A lead's own edge counts this much beside that of all leads.
constexpr double kOwnWeight = 0.4;

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

Interval FindEdges(const Trace& curve, Place centre) {
    return {FindEdge(curve, FindLine(curve, centre - kFarthestBefore, centre - kNearestBefore), centre),
            FindEdge(curve, FindLine(curve, centre + kNearestBehind, centre + kFarthestBehind), centre)};
}

Interval FindInLead(const Beat& beat, const BeatLead& lead, Interval all) {
    Sizes(lead.fineSlope, beat.curve);
    const Place centre = LargestPlace(beat.curve, all.on, all.off);
    const Interval own = FindEdges(beat.curve, centre);
    const Place on = std::clamp(own.on, all.on, centre);
    const Place off = std::clamp(own.off, centre, all.off);
    return {Rounded(all.on + kOwnWeight * (on - all.on)), Rounded(all.off + kOwnWeight * (off - all.off))};
}

}  // namespace

WaveBoundaries FindQrs(const Beat& beat) {
    WaveBoundaries qrs;
    const Interval edges = FindEdges(beat.fineVelocity, beat.centre);
    const bool paced = beat.spike > 0 && edges.on >= beat.spike - kSpikeBehindEdge &&
                       edges.on <= beat.spike + kSpikeBeforeEdge;
    qrs.global.on = Rounded(paced ? beat.spike + kBehindSpike : edges.on - kOnsetLead);
    qrs.global.off = std::clamp(Rounded(edges.off + kOffsetLag), qrs.global.on + 1, beat.length - 1);
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            qrs.leads[code] = FindInLead(beat, beat.leads[code], qrs.global);
        }
    }
    return qrs;
}

}  // namespace kx::analysis
