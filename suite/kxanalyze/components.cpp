#include "suite/kxanalyze/components.h"

#include <algorithm>
#include <cmath>

namespace kx::analysis {
namespace {

// A deflection smaller or shorter than this is noise (20 uV and 6 ms are the limits of the CSE working party,
// Eur. Heart J. 6, 815-825, 1985; the part keeps filter ripple beside a large R wave from becoming a Q or S
// wave).
constexpr double kSmallestMicrovolts = 20;
constexpr double kSmallestPart = 0.02;
constexpr int kShortestMs = 6;
// The second component of a P or T wave has at least this part of the first one's amplitude, and lasts this
// long.
constexpr double kSecondMicrovolts = 25;
constexpr double kSecondPart = 0.2;
constexpr int kSecondMs = 16;

// Stretches of one sign between the places at which the curve crosses the base.
void FindPhases(const Trace& level, double base, Interval wave, std::vector<Phase>& phases) {
    phases.clear();
    const Place end = std::min(wave.off, static_cast<Place>(level.size()));
    for (Place i = std::max(wave.on, 0); i < end; ++i) {
        const double value = level[static_cast<std::size_t>(i)] - base;
        if (phases.empty() || (value < 0) != (phases.back().extremum < 0)) {
            phases.push_back({i, i, value});
        }
        phases.back().to = i + 1;
        if (std::fabs(value) > std::fabs(phases.back().extremum)) {
            phases.back().extremum = value;
        }
    }
}

// Drops the phases that are too small, and joins neighbours that then have the same sign.
void KeepSignificant(std::vector<Phase>& phases, double microvolts, int ms) {
    std::size_t kept = 0;
    for (const Phase phase : phases) {
        if (std::fabs(phase.extremum) < microvolts || phase.to - phase.from < ms) {
            continue;
        }
        Phase* const last = kept == 0 ? nullptr : &phases[kept - 1];
        if (last != nullptr && (last->extremum < 0) == (phase.extremum < 0)) {
            last->to = phase.to;
            if (std::fabs(phase.extremum) > std::fabs(last->extremum)) {
                last->extremum = phase.extremum;
            }
        } else {
            phases[kept++] = phase;
        }
    }
    phases.resize(kept);
}

double LargestModulus(const std::vector<Phase>& phases) {
    double largest = 0;
    for (const Phase& phase : phases) {
        largest = std::max(largest, std::fabs(phase.extremum));
    }
    return largest;
}

// A displaced ST segment is no wave: the last phase must come back from its extremum before the complex ends.
bool ComesBack(const Trace& level, double base, const Phase& last, double microvolts) {
    const double end = level[static_cast<std::size_t>(last.to - 1)] - base;
    return std::fabs(last.extremum) - std::fabs(end) >= microvolts || end * last.extremum < 0;
}

}  // namespace

std::array<Place, 5> FindQrsComponents(const Trace& level, double isoelectric, Interval complex,
                                       std::vector<Phase>& phases) {
    std::array<Place, 5> onsets{};
    FindPhases(level, isoelectric, complex, phases);
    const double smallest = std::max(kSmallestMicrovolts, kSmallestPart * LargestModulus(phases));
    KeepSignificant(phases, smallest, kShortestMs);
    while (phases.size() > 1 && !ComesBack(level, isoelectric, phases.back(), smallest)) {
        phases.pop_back();
    }
    if (phases.empty()) {
        return onsets;
    }
    phases.front().from = complex.on;
    std::size_t component = phases.front().extremum < 0 ? 0 : 1;
    for (const Phase& phase : phases) {
        if (component == onsets.size()) {
            break;
        }
        onsets[component++] = std::max(phase.from, 1);
    }
    return onsets;
}

Place FindSecondComponent(const Trace& level, double base, Interval wave, std::vector<Phase>& phases) {
    FindPhases(level, base, wave, phases);
    const double smallest = std::max(kSecondMicrovolts, kSecondPart * LargestModulus(phases));
    KeepSignificant(phases, smallest, kSecondMs);
    return phases.size() < 2 ? 0 : phases[1].from;
}

Place ExtremumPlace(const Trace& level, double base, Place from, Place to, int sign) {
    Place place = 0;
    double largest = 0;
    const Place end = std::min(to, static_cast<Place>(level.size()));
    for (Place i = std::max(from, 0); i < end; ++i) {
        const double value = level[static_cast<std::size_t>(i)] - base;
        const double size = sign == 0 ? std::fabs(value) : sign * value;
        if (size > largest) {
            largest = size;
            place = i;
        }
    }
    return place;
}

double Extremum(const Trace& level, double base, Place from, Place to, int sign) {
    const Place place = ExtremumPlace(level, base, from, to, sign);
    return place == 0 ? 0 : level[static_cast<std::size_t>(place)] - base;
}

}  // namespace kx::analysis
