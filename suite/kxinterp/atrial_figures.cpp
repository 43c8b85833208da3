// What the annotations tell of the atria: intervals of P waves, flutter waves and impulses to their beats.
#include <algorithm>
#include <cmath>
#include <vector>

#include "suite/kxinterp/rhythm_figures.h"

namespace kx::interp {

namespace {

// From the peak of a wave to the largest part of the complex that it leads.
constexpr std::uint32_t kShortestDistanceMs = 60;
constexpr std::uint32_t kLongestDistanceMs = 500;
constexpr std::uint32_t kSameDistanceMs = 40;
constexpr std::uint32_t kLengtheningMs = 40;
// Impulses of a ventricular lead stand before the complex itself.
constexpr std::uint32_t kVentricularImpulseMs = 130;
constexpr std::uint32_t kAtrialImpulseMs = 350;

std::uint32_t MedianOf(std::vector<std::uint32_t> values) {
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// How far from the beat its wave is: the last one before it that lies in the span and behind the beat before.
// 0: none.
std::uint32_t DistanceBefore(const std::vector<std::uint32_t>& waves, std::uint32_t beat,
                             std::uint32_t previous) {
    auto wave = std::upper_bound(waves.begin(), waves.end(), beat);
    while (wave != waves.begin()) {
        --wave;
        const std::uint32_t distance = beat - *wave;
        if (distance > kLongestDistanceMs || *wave < previous) {
            break;
        }
        if (distance >= kShortestDistanceMs) {
            return distance;
        }
    }
    return 0;
}

bool IsMultiple(std::uint32_t interval, std::uint32_t of) {
    const double part = static_cast<double>(interval) / of;
    const double whole = std::max(1.0, std::round(part));
    return whole <= 3 && std::abs(part / whole - 1) <= 0.12;
}

void DescribeIntervals(const std::vector<std::uint32_t>& waves, AtrialFigures& figures) {
    std::vector<std::uint32_t> intervals;
    for (std::size_t i = 1; i < waves.size(); ++i) {
        intervals.push_back(waves[i] - waves[i - 1]);
    }
    if (intervals.size() < 3) {
        return;
    }
    // Some waves are hidden in the complexes: the interval is the one that explains most of the others and is
    // met most often itself.
    std::uint64_t most = 0;
    for (const std::uint32_t base : intervals) {
        std::uint32_t fitting = 0;
        std::uint32_t single = 0;
        for (const std::uint32_t interval : intervals) {
            const bool fits = base != 0 && IsMultiple(interval, base);
            fitting += fits;
            single += fits && 2 * interval < 3 * base;
        }
        if (std::uint64_t{fitting} * single > most) {
            most = std::uint64_t{fitting} * single;
            figures.intervalMs = base;
            figures.regular = 10 * fitting >= 8 * intervals.size();
        }
    }
}

// The beats that may follow the atria, and how far from their waves they are.
struct Follower {
    std::uint32_t ms;
    std::uint32_t distance;  // 0: no wave before it
    bool isNext;             // the beat before it is a follower, too
};

std::vector<Follower> FollowersOf(const Annotated& annotated) {
    std::vector<Follower> followers;
    std::uint32_t previous = 0;
    bool isNext = false;
    for (const AnnotatedBeat& beat : annotated.beats) {
        const bool follows = beat.kind == BeatKind::kNormal || beat.kind == BeatKind::kPaced;
        if (follows) {
            followers.push_back({beat.ms, DistanceBefore(annotated.waves, beat.ms, previous), isNext});
        }
        isNext = follows;
        previous = beat.ms;
    }
    return followers;
}

// Waves at the usual interval that stand alone between two beats with nothing else between them.
void CountBlocked(const Annotated& annotated, const std::vector<Follower>& followers,
                  AtrialFigures& figures) {
    std::uint32_t lengthening = 0;
    std::uint32_t steady = 0;
    for (std::size_t i = 1; i < followers.size(); ++i) {
        const Follower& from = followers[i - 1];
        const Follower& to = followers[i];
        if (from.distance == 0 || to.distance == 0 || !to.isNext) {
            continue;
        }
        std::uint32_t run = 0;
        std::uint32_t last = from.ms - from.distance;
        for (const std::uint32_t wave : annotated.waves) {
            if (wave <= last || wave >= to.ms - to.distance) {
                continue;
            }
            run += IsMultiple(wave - last, figures.intervalMs) && 2 * (wave - last) < 3 * figures.intervalMs;
            last = wave;
        }
        figures.blocked += run;
        figures.longestRun = std::max(figures.longestRun, run);
        if (run == 1) {
            ++(from.distance >= to.distance + kLengtheningMs ? lengthening : steady);
        }
    }
    figures.lengthening = lengthening > steady;
}

}  // namespace

AtrialFigures AtrialFiguresOf(const Annotated& annotated) {
    AtrialFigures figures;
    figures.watched = annotated.watched;
    figures.waves = static_cast<std::uint32_t>(annotated.waves.size());
    DescribeIntervals(annotated.waves, figures);
    const std::vector<Follower> followers = FollowersOf(annotated);
    figures.beats = static_cast<std::uint32_t>(followers.size());
    std::vector<std::uint32_t> distances;
    for (const Follower& follower : followers) {
        if (follower.distance != 0) {
            distances.push_back(follower.distance);
        }
    }
    figures.distances = static_cast<std::uint32_t>(distances.size());
    if (distances.empty()) {
        return figures;
    }
    const std::uint32_t usual = MedianOf(distances);
    figures.led = static_cast<std::uint32_t>(
        std::count_if(distances.begin(), distances.end(), [usual](std::uint32_t distance) {
            return distance <= usual + kSameDistanceMs && usual <= distance + kSameDistanceMs;
        }));
    if (figures.intervalMs != 0) {
        CountBlocked(annotated, followers, figures);
    }
    return figures;
}

PacingFigures PacingFiguresOf(const Annotated& annotated) {
    PacingFigures figures;
    std::uint32_t previous = 0;
    for (const AnnotatedBeat& beat : annotated.beats) {
        bool ventricular = false;
        bool atrial = false;
        for (const std::uint32_t impulse : annotated.impulses) {
            if (impulse >= beat.ms || impulse < previous || beat.ms - impulse > kAtrialImpulseMs) {
                continue;
            }
            (beat.ms - impulse <= kVentricularImpulseMs ? ventricular : atrial) = true;
        }
        figures.ventricular += ventricular;
        figures.atrial += atrial;
        figures.both += ventricular && atrial;
        previous = beat.ms;
    }
    return figures;
}

}  // namespace kx::interp
