#include "host/recording/spikes.h"

#include <algorithm>
#include <cmath>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

// A running median of 14 ms follows every wave of the heart and no impulse of 2 ms.
constexpr std::ptrdiff_t kHalfMedian = ToSamples(6);
// How far a spike stands out of it, as a part of the lead's range, and in how many leads.
constexpr float kStandsOut = 0.3f;
constexpr int kLeads = 4;
// It is sharper than anything recorded at 100 samples a second: its second difference over 2 ms is this much
// of its height.
constexpr float kSharp = 1.3f;
// The range leaves out the largest and smallest two in a thousand, the spikes among them.
constexpr double kOutside = 0.002;
// What the bridge spans: the impulse, and behind it the discharge of the electrode.
constexpr std::ptrdiff_t kBefore = ToSamples(8);
constexpr std::ptrdiff_t kBehind = ToSamples(12);

float RangeOf(const Trace& lead) {
    Trace sorted = lead;
    const auto outside = static_cast<std::ptrdiff_t>(kOutside * static_cast<double>(lead.size()));
    const auto low = sorted.begin() + outside;
    const auto high = sorted.end() - 1 - outside;
    std::nth_element(sorted.begin(), low, sorted.end());
    const float lowest = *low;
    std::nth_element(sorted.begin(), high, sorted.end());
    return *high - lowest;
}

// Counts in `leads` the samples that stand out of the lead, and adds up how far.
void AddLead(const Trace& lead, std::vector<int>& leads, Trace& height) {
    const float range = RangeOf(lead);
    const auto count = static_cast<std::ptrdiff_t>(lead.size());
    std::array<float, 2 * kHalfMedian + 1> window{};
    for (std::ptrdiff_t i = kHalfMedian; i + kHalfMedian < count && range > 0; ++i) {
        std::copy_n(lead.begin() + (i - kHalfMedian), window.size(), window.begin());
        std::nth_element(window.begin(), window.begin() + kHalfMedian, window.end());
        const float middle = window[kHalfMedian];
        const float residual = std::abs(lead[static_cast<std::size_t>(i)] - middle);
        const float bend =
            std::abs(2 * lead[static_cast<std::size_t>(i)] - lead[static_cast<std::size_t>(i - 1)] -
                     lead[static_cast<std::size_t>(i + 1)]);
        if (bend >= kSharp * residual) {
            leads[static_cast<std::size_t>(i)] += residual > kStandsOut * range;
            height[static_cast<std::size_t>(i)] += residual / range;
        }
    }
}

}  // namespace

std::vector<std::ptrdiff_t> FindSpikes(const Recording& recording) {
    const std::size_t count = recording.SampleCount();
    std::vector<int> leads(count);
    Trace height(count);
    for (const Trace& lead : recording.leads) {
        AddLead(lead, leads, height);
    }
    std::vector<std::ptrdiff_t> spikes;
    for (std::size_t i = 0; i < count; ++i) {
        if (leads[i] < kLeads) {
            continue;
        }
        const auto place = static_cast<std::ptrdiff_t>(i);
        const bool another = spikes.empty() || place - spikes.back() > kBehind;
        if (another) {
            spikes.push_back(place);
        } else if (height[i] > height[static_cast<std::size_t>(spikes.back())]) {
            spikes.back() = place;
        }
    }
    return spikes;
}

void BridgeSpikes(Recording& recording, const std::vector<std::ptrdiff_t>& spikes) {
    const auto last = static_cast<std::ptrdiff_t>(recording.SampleCount()) - 1;
    for (const std::ptrdiff_t spike : spikes) {
        const std::ptrdiff_t from = std::max<std::ptrdiff_t>(0, spike - kBefore);
        const std::ptrdiff_t to = std::min(last, spike + kBehind);
        for (Trace& lead : recording.leads) {
            const float first = lead[static_cast<std::size_t>(from)];
            const float step = (lead[static_cast<std::size_t>(to)] - first) / static_cast<float>(to - from);
            for (std::ptrdiff_t i = from + 1; i < to; ++i) {
                lead[static_cast<std::size_t>(i)] = first + step * static_cast<float>(i - from);
            }
        }
    }
}

}  // namespace kx::recording
