#include "host/recording/pacing.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr std::size_t kLeads = 4;   // in which a jump must be seen
constexpr float kLeastJump = 1.8f;  // of the lead's steep slopes
constexpr double kSteep = 0.99;     // of the slopes are less steep
constexpr std::ptrdiff_t kHalfMedian = 4;
constexpr float kBesideIt = 1.5f;  // the slopes beside a jump count so much
constexpr float kLeastSlope = 3;   // microvolts a sample
// From a beat's place, which is the largest part of the complex, back to the impulse: of a ventricular one at
// least so far, of an atrial one at most.
constexpr std::ptrdiff_t kNearest = ToSamples(26);
constexpr std::ptrdiff_t kFarthest = ToSamples(350);

// How far each sample's step stands out of those beside it, as a part of the lead's steep slopes.
Trace JumpsOf(const Trace& lead) {
    const auto count = static_cast<std::ptrdiff_t>(lead.size());
    Trace steps(lead.size());
    Trace slopes(lead.size());
    for (std::ptrdiff_t i = 1; i < count; ++i) {
        const auto k = static_cast<std::size_t>(i);
        steps[k] = std::abs(lead[k] - lead[k - 1]);
        slopes[k] = i < 4 ? 0 : std::abs(lead[k] - lead[k - 4]) / 4;
    }
    const auto steep = slopes.begin() + static_cast<std::ptrdiff_t>(kSteep * static_cast<double>(count - 1));
    std::nth_element(slopes.begin(), steep, slopes.end());
    const float scale = *steep + kLeastSlope;
    Trace jumps(lead.size());
    std::array<float, 2 * kHalfMedian + 1> beside{};
    for (std::ptrdiff_t i = kHalfMedian; i + kHalfMedian < count; ++i) {
        std::copy_n(steps.begin() + (i - kHalfMedian), beside.size(), beside.begin());
        std::nth_element(beside.begin(), beside.begin() + kHalfMedian, beside.end());
        const auto k = static_cast<std::size_t>(i);
        jumps[k] = (steps[k] - kBesideIt * beside[kHalfMedian]) / scale;
    }
    return jumps;
}

// The jump of each sample in the lead that shows it fourth best.
Trace CommonJumps(const Recording& recording) {
    std::array<Trace, kLeadCount> leads;
    std::transform(recording.leads.begin(), recording.leads.end(), leads.begin(), JumpsOf);
    Trace common(recording.SampleCount());
    std::array<float, kLeadCount> values{};
    for (std::size_t i = 0; i < common.size(); ++i) {
        std::transform(leads.begin(), leads.end(), values.begin(),
                       [i](const Trace& lead) { return lead[i]; });
        std::nth_element(values.begin(), values.begin() + kLeads - 1, values.end(), std::greater<>());
        common[i] = values[kLeads - 1];
    }
    return common;
}

}  // namespace

Pacing FindPacing(const AlignedBeats& beats) {
    Pacing pacing;
    pacing.paced.resize(beats.places.size());
    if (beats.places.empty()) {
        return pacing;
    }
    const Trace jumps = CommonJumps(beats.recording);
    constexpr std::ptrdiff_t kOneImpulse = ToSamples(30);
    for (std::size_t i = 0; i < beats.places.size(); ++i) {
        const std::ptrdiff_t before = i == 0 ? 0 : beats.places[i - 1] + kNearest;
        std::ptrdiff_t k = std::max({std::ptrdiff_t{0}, before, beats.places[i] - kFarthest});
        for (; k <= beats.places[i] - kNearest; ++k) {
            if (jumps[static_cast<std::size_t>(k)] > kLeastJump) {
                pacing.impulses.push_back(k);
                pacing.paced[i] = true;
                k += kOneImpulse;
            }
        }
    }
    const auto paced = std::count(pacing.paced.begin(), pacing.paced.end(), true);
    return 2 * paced >= static_cast<std::ptrdiff_t>(beats.places.size())
               ? pacing
               : Pacing{{}, std::vector<bool>(beats.places.size())};
}

}  // namespace kx::recording
