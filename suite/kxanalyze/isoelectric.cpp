// The isoelectric levels of a lead: before the QRS complex and before the P wave.
#include <algorithm>

#include "suite/kxanalyze/boundaries.h"

namespace kx::analysis {
namespace {

constexpr int kSegmentMs = 16;
constexpr int kShortestMs = 4;

}  // namespace

double IsoelectricLevel(const BeatLead& lead, Place qrsOn, Place pOff) {
    const Place to = std::max(qrsOn, kShortestMs);
    const Place from = std::min(std::max(pOff, to - kSegmentMs), to - kShortestMs);
    return MeanBetween(lead.level, from, to, lead.level.empty() ? 0 : lead.level.front());
}

double LevelBeforeP(const BeatLead& lead, Place pOn) {
    return MeanBetween(lead.level, pOn - kSegmentMs, std::max(pOn, 1), 0);
}

}  // namespace kx::analysis
