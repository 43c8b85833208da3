// The slopes of all leads in one curve.
#include <algorithm>
#include <cmath>

#include "suite/kxanalyze/curve.h"

namespace kx::analysis {
namespace {

// The noise of a lead is the slope that a quarter of the beat stays below, and a small part of the largest.
constexpr double kQuietQuantile = 0.25;
constexpr double kPartOfLargest = 0.004;
constexpr int kAroundComplex = 100;
// A lead is heard by its largest slope over its noise, up to this; no place counts for more than the second.
constexpr double kClearLead = 60;
constexpr double kClearPlace = 200;
// Where in the block the complex is expected, and how much less a place at its ends counts.
constexpr double kMiddle = 0.4;
constexpr double kFarLess = 0.5;
// The place at which the slopes are steepest in units of the leads' noise is this near to the steepest of
// all.
constexpr int kAroundCentre = 60;

using SlopeOf = Trace BeatLead::*;
using NoiseOf = double BeatLead::*;

double Largest(const Trace& slope, Place from, Place to) {
    double largest = 0;
    for (const double value : Between(slope, from, to)) {
        largest = std::max(largest, std::fabs(value));
    }
    return largest;
}

// Joins one slope of all leads.
void Join(Beat& beat, SlopeOf slopeOf, NoiseOf noiseOf, Trace& joined) {
    joined.assign(static_cast<std::size_t>(beat.length), 0);
    double weights = 0;
    for (BeatLead& lead : beat.leads) {
        if (!lead.present) {
            continue;
        }
        const Trace& slope = lead.*slopeOf;
        const double largest = Largest(slope, beat.centre - kAroundComplex, beat.centre + kAroundComplex);
        beat.working.resize(slope.size());
        std::transform(slope.begin(), slope.end(), beat.working.begin(),
                       [](double v) { return std::fabs(v); });
        const double noise = lead.*noiseOf =
                                 Quantile(beat, beat.working, kQuietQuantile) + kPartOfLargest * largest;
        if (noise <= 0) {
            continue;
        }
        const double weight = std::min(largest / noise, kClearLead) / kClearLead;
        weights += weight * weight;
        for (std::size_t i = 0; i < joined.size(); ++i) {
            const double value = weight * std::min(beat.working[i] / noise, kClearPlace);
            joined[i] += value * value;
        }
    }
    for (double& value : joined) {
        value = weights > 0 ? std::sqrt(value / weights) : 0;
    }
}

}  // namespace

// Of the beats that may lie in the block the one near the middle is meant: a place far from it counts for up
// to half less. Slopes of the wide scale, in which a pacing spike is small.
Place FindCentre(Beat& beat, Place excludedFrom, Place excludedTo) {
    Trace& joined = beat.wideVelocity;
    joined.assign(static_cast<std::size_t>(beat.length), 0);
    for (const BeatLead& lead : beat.leads) {
        if (lead.present) {
            const double largest = std::max(Largest(lead.wideSlope, 0, beat.length), 1e-9);
            for (std::size_t i = 0; i < joined.size(); ++i) {
                joined[i] += lead.wideSlope[i] * lead.wideSlope[i] / (largest * largest);
            }
        }
    }
    const double middle = kMiddle * beat.length;
    double best = 0;
    Place place = 0;
    for (Place i = 0; i < beat.length; ++i) {
        const double away = std::min(1.0, std::fabs(i - middle) / middle);
        const double value = At(joined, i) * (1 - kFarLess * away * away);
        if (value > best && (i < excludedFrom || i > excludedTo)) {
            best = value;
            place = i;
        }
    }
    return place;
}

bool JoinLeads(Beat& beat) {
    beat.centre = FindCentre(beat, -1, -1);
    Join(beat, &BeatLead::fineSlope, &BeatLead::fineNoise, beat.fineVelocity);
    Join(beat, &BeatLead::wideSlope, &BeatLead::wideNoise, beat.wideVelocity);
    beat.centre = LargestPlace(beat.wideVelocity, beat.centre - kAroundCentre, beat.centre + kAroundCentre);
    return At(beat.fineVelocity, beat.centre) > 0;
}

}  // namespace kx::analysis
