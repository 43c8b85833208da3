// Pacing spikes in a beat.
#include <algorithm>
#include <array>
#include <cmath>

#include "suite/kxanalyze/beat.h"

namespace kx::analysis {
namespace {

// A spike stands out of the running median of 14 ms by this part of the lead's range, in four leads at least.
constexpr int kHalfMedian = 7;
constexpr double kStandsOut = 0.25;
constexpr std::size_t kLeads = 4;
// It is sharper than anything recorded at 100 samples a second: its second difference over 2 ms is this much
// of its height.
constexpr double kSharp = 1.3;
constexpr int kBendMs = 2;
// It is bridged from so long before to so long behind it, and ends so long before the centre of the complex
// that then remains: what lies nearer is a notch of the complex.
constexpr int kBridgeBefore = 8;
constexpr int kBridgeBehind = 12;
constexpr int kBeforeCentre = 36;
// Of the atrium, and one or two of the ventricles.
constexpr int kMostSpikes = 3;

// The middle of the values around a place as the place moves on.
class RunningMedian {
  public:
    explicit RunningMedian(const Trace& level) : level_(level) {
        std::copy_n(level.begin(), sorted_.size(), sorted_.begin());
        std::sort(sorted_.begin(), sorted_.end());
    }
    double Middle() const { return sorted_[kHalfMedian]; }
    // From place - 1 to place.
    void MoveTo(Place place) {
        const double out = At(level_, place - kHalfMedian - 1);
        const double in = At(level_, place + kHalfMedian);
        auto hole = std::lower_bound(sorted_.begin(), sorted_.end(), out);
        for (; hole + 1 != sorted_.end() && *(hole + 1) < in; ++hole) {
            *hole = *(hole + 1);
        }
        for (; hole != sorted_.begin() && *(hole - 1) > in; --hole) {
            *hole = *(hole - 1);
        }
        *hole = in;
    }

  private:
    const Trace& level_;
    std::array<double, 2 * kHalfMedian + 1> sorted_{};
};

// Counts at every place the leads that stand out there, and adds up by which part of their range.
void FindResiduals(Beat& beat, Trace& leads, Trace& height) {
    leads.assign(static_cast<std::size_t>(beat.length), 0);
    height.assign(static_cast<std::size_t>(beat.length), 0);
    for (const BeatLead& lead : beat.leads) {
        if (!lead.present) {
            continue;
        }
        const auto [lowest, highest] = std::minmax_element(lead.fine.begin(), lead.fine.end());
        const double range = *highest - *lowest;
        RunningMedian median(lead.level);
        for (Place i = kHalfMedian + 1; i + kHalfMedian < beat.length; ++i) {
            median.MoveTo(i);
            const double middle = median.Middle();
            const double residual = std::fabs(At(lead.level, i) - middle) / range;
            const double bend =
                std::fabs(2 * At(lead.level, i) - At(lead.level, i - kBendMs) - At(lead.level, i + kBendMs));
            if (bend < kSharp * residual * range) {
                continue;
            }
            leads[static_cast<std::size_t>(i)] += residual > kStandsOut ? 1 : 0;
            height[static_cast<std::size_t>(i)] += residual;
        }
    }
}

// The place that stands out most, 0 when none does in enough leads.
Place FindCandidate(Beat& beat) {
    const auto present = static_cast<std::size_t>(std::count_if(
        beat.leads.begin(), beat.leads.end(), [](const BeatLead& lead) { return lead.present; }));
    FindResiduals(beat, beat.working, beat.curve);
    Place candidate = 0;
    for (Place i = kHalfMedian + 1; i + kHalfMedian < beat.length; ++i) {
        if (At(beat.working, i) >= static_cast<double>(std::min(kLeads, (present + 2) / 3)) &&
            (candidate == 0 || At(beat.curve, i) > At(beat.curve, candidate))) {
            candidate = i;
        }
    }
    return candidate;
}

void Bridge(BeatLead& lead, Place from, Place to) {
    const double first = At(lead.level, from);
    const double step = (At(lead.level, to) - first) / (to - from);
    for (Place i = from + 1; i < to; ++i) {
        lead.level[static_cast<std::size_t>(i)] = first + step * (i - from);
    }
}

}  // namespace

void BridgeSpikes(Beat& beat) {
    beat.spike = 0;
    for (int found = 0; found < kMostSpikes; ++found) {
        const Place spike = FindCandidate(beat);
        const Place from = std::max(0, spike - kBridgeBefore);
        const Place to = std::min(spike + kBridgeBehind, beat.length - 1);
        if (spike == 0 || spike >= FindCentre(beat, from, to) - kBeforeCentre) {
            return;
        }
        for (BeatLead& lead : beat.leads) {
            if (lead.present) {
                Bridge(lead, from, to);
            }
        }
        SmoothLeads(beat);
        beat.spike = std::max(beat.spike, spike);
    }
}

}  // namespace kx::analysis
