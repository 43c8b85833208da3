#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/slope_walk.h"

namespace kx::analysis {
namespace {

// The onset and the offset of the complex on all leads: the spatial velocity falls to this part of its
// largest value, or to so many times the velocity of the quietest tenth of the beat.
constexpr double kVelocityPart = 0.03;
constexpr double kNoiseOnset = 2.5;
constexpr double kNoiseOffset = 3.0;
constexpr int kQuietOnset = 14;
constexpr int kQuietOffset = 12;
constexpr int kReachOnset = 120;
constexpr int kReachOffset = 160;
// A reader sets the earliest onset and the latest offset where the curve leaves the line and where it has
// come to rest, which is outside the place at which its slope passes a threshold.
constexpr int kOnsetLead = 11;
constexpr int kOffsetLag = 6;

// The same for one lead, with the least slope that counts (microvolts per ms), and how far from the place on
// all leads its own may lie.
constexpr double kLeadPart = 0.03;
constexpr double kLeadLeastOnset = 1.2;
constexpr double kLeadLeastOffset = 2.5;
constexpr int kLeadQuietOnset = 14;
constexpr int kLeadQuietOffset = 10;
constexpr int kLeadEarlierOnset = 4;
constexpr int kLeadLaterOnset = 30;
constexpr int kLeadEarlierOffset = 15;
constexpr int kLeadLaterOffset = 10;
constexpr int kLeadOnsetLead = 3;
constexpr double kOwnOnset = 0.35;
constexpr double kOwnOffset = 0.6;

// Slowest spatial velocity that makes a complex, microvolts per ms.
constexpr double kLeastVelocity = 1.0;

// The steepest place on all leads. Of the beats that may lie in the block the one near the middle is meant: a
// place far from it counts for up to 30 % less.
Place FindSteepestPlace(const Beat& beat) {
    const double middle = 0.4 * beat.length;
    double best = 0;
    Place place = 0;
    for (Place i = 0; i < beat.length; ++i) {
        const double away = std::min(1.0, std::fabs(i - middle) / middle);
        const double value = beat.fineVelocity[static_cast<std::size_t>(i)] * (1 - 0.3 * away * away);
        if (value > best) {
            best = value;
            place = i;
        }
    }
    return place;
}

Interval FindOnAllLeads(const Beat& beat) {
    const Trace& velocity = beat.fineVelocity;
    const Place steepest = FindSteepestPlace(beat);
    const double largest = velocity[static_cast<std::size_t>(steepest)];
    if (largest < kLeastVelocity) {
        return {};
    }
    const double noise = Quantile(beat, velocity, 0.1);
    const double part = kVelocityPart * largest;
    return {
        WalkOut(velocity, steepest, -1, {std::max(kNoiseOnset * noise, part), kQuietOnset, kReachOnset}),
        WalkOut(velocity, steepest, +1, {std::max(kNoiseOffset * noise, part), kQuietOffset, kReachOffset})};
}

Interval FindInLead(const BeatLead& lead, Interval all) {
    const Trace& slope = lead.fineSlope;
    const Place steepest = Steepest(slope, all.on, all.off);
    const double part = kLeadPart * std::fabs(slope[static_cast<std::size_t>(steepest)]);
    const Place on =
        WalkOut(slope, steepest, -1, {std::max(kLeadLeastOnset, part), kLeadQuietOnset, kReachOnset});
    const Place off =
        WalkOut(slope, steepest, +1, {std::max(kLeadLeastOffset, part), kLeadQuietOffset, kReachOffset});
    return {std::clamp(on, all.on - kLeadEarlierOnset, all.on + kLeadLaterOnset),
            std::clamp(off, all.off - kLeadEarlierOffset, all.off + kLeadLaterOffset)};
}

}  // namespace

WaveBoundaries FindQrs(const Beat& beat) {
    WaveBoundaries qrs;
    const Interval all = FindOnAllLeads(beat);
    if (!all.Present()) {
        return qrs;
    }
    LeadValues onsets, offsets;
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            qrs.leads[code] = FindInLead(beat.leads[code], all);
            onsets.Add(qrs.leads[code].on);
            offsets.Add(qrs.leads[code].off);
        }
    }
    const double agreedOnset = Median(beat, onsets) - kLeadOnsetLead;
    const double agreedOffset = Median(beat, offsets);
    for (std::size_t code = 0; code < beat.leads.size(); ++code) {
        if (beat.leads[code].present) {
            Interval& own = qrs.leads[code];
            own.on = std::max(1, Towards(agreedOnset, own.on - kLeadOnsetLead, kOwnOnset));
            own.off = std::max(own.on + 1, Towards(agreedOffset, own.off, kOwnOffset));
        }
    }
    qrs.global.on = std::max(1, all.on - kOnsetLead);
    qrs.global.off = std::max(qrs.global.on + 1, std::min(all.off + kOffsetLag, beat.length - 1));
    return qrs;
}

}  // namespace kx::analysis
