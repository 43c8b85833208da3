#include "host/recording/recording.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kx::recording {

namespace {

// A limb lead as ofOne x I + ofTwo x II, in the order of the leads.
struct Combination {
    double ofOne, ofTwo;
};
constexpr std::size_t kLimbLeads = 6;
constexpr Combination kLimb[kLimbLeads] = {{1, 0}, {0, 1}, {-1, 1}, {-0.5, -0.5}, {1, -0.5}, {-0.5, 1}};

double Determinant(const Combination& a, const Combination& b) {
    return a.ofOne * b.ofTwo - a.ofTwo * b.ofOne;
}

// The two recorded limb leads that tell most of I and II: those of the largest determinant, I and II first.
std::pair<std::size_t, std::size_t> BestPair(const Recording& recording) {
    std::pair<std::size_t, std::size_t> best{kLeadI, kLeadII};
    double largest = 0;
    for (std::size_t a = 0; a < kLimbLeads; ++a) {
        for (std::size_t b = a + 1; b < kLimbLeads; ++b) {
            const double size = std::fabs(Determinant(kLimb[a], kLimb[b]));
            if (!recording.derived[a] && !recording.derived[b] && size > largest) {
                largest = size;
                best = {a, b};
            }
        }
    }
    return best;
}

}  // namespace

void DeriveLeads(Recording& recording) {
    const auto [a, b] = BestPair(recording);
    const std::vector<float>& first = recording.leads[a];
    const std::vector<float>& second = recording.leads[b];
    const std::size_t count = std::min(first.size(), second.size());
    const double determinant = Determinant(kLimb[a], kLimb[b]);
    for (std::size_t lead = 0; lead < kLimbLeads; ++lead) {
        if (!recording.derived[lead]) {
            continue;
        }
        // lead = x first + y second, by Cramer's rule.
        const double x = Determinant(kLimb[lead], kLimb[b]) / determinant;
        const double y = Determinant(kLimb[a], kLimb[lead]) / determinant;
        std::vector<float>& target = recording.leads[lead];
        target.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            target[i] = static_cast<float>(x * double{first[i]} + y * double{second[i]});
        }
    }
}

void Filters::TakeLimits(double highPassHz, double lowPassHz, double notchHz) {
    // Recorders cut at 0.05 Hz and 150 Hz by themselves (IEC 60601-2-25); filters against wander begin at 0.5
    // Hz, those against muscles end at 25 to 40 Hz.
    constexpr double kWander = 0.3, kMuscles = 45;
    baseline = baseline || highPassHz >= kWander;
    artifact = artifact || (lowPassHz > 0 && lowPassHz <= kMuscles);
    if (notchHz == 50 || notchHz == 60) {
        mainsHz = static_cast<int>(notchHz);
    }
}

void AppendToGaps(std::vector<Gap>& gaps, std::size_t sample) {
    if (gaps.empty() || gaps.back().end != sample) {
        gaps.push_back({sample, sample});
    }
    gaps.back().end = sample + 1;
}

bool BridgeGaps(std::vector<float>& lead, const std::vector<Gap>& gaps) {
    for (const Gap& gap : gaps) {
        const bool before = gap.first > 0;
        const bool after = gap.end < lead.size();
        if (!before && !after) {
            return false;
        }
        const float from = before ? lead[gap.first - 1] : lead[gap.end];
        const float to = after ? lead[gap.end] : from;
        const auto steps = static_cast<float>(gap.end - gap.first + 1);
        for (std::size_t i = gap.first; i < gap.end; ++i) {
            lead[i] = from + (to - from) * static_cast<float>(i - gap.first + 1) / steps;
        }
    }
    return true;
}

void AddGaps(std::vector<Gap>& gaps, const std::vector<Gap>& more) {
    gaps.insert(gaps.end(), more.begin(), more.end());
    std::sort(gaps.begin(), gaps.end(), [](const Gap& a, const Gap& b) { return a.first < b.first; });
    std::vector<Gap> joined;
    for (const Gap& gap : gaps) {
        if (!joined.empty() && gap.first <= joined.back().end) {
            joined.back().end = std::max(joined.back().end, gap.end);
        } else {
            joined.push_back(gap);
        }
    }
    gaps = std::move(joined);
}

}  // namespace kx::recording
