#include "host/recording/saturation.h"

#include <algorithm>
#include <cmath>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

constexpr double kPlateauMs = 16;
constexpr double kFewestSamples = 4;
constexpr double kSame = 0.001;  // of the lead's range
// Less than one in so long is a disturbance.
constexpr double kSecondsAPlateau = 5;
// So far beyond either end of a plateau the lead is so far from it, as a part of its range.
constexpr double kSideMs = 4;
constexpr double kSteep = 0.04;
constexpr double kFarFromMiddle = 0.2;  // of the range: a quiet line may be a lead's lowest value

std::size_t CountPlateaus(const Trace& lead, double value, double range, std::size_t plateau,
                          std::size_t side) {
    std::size_t count = 0;
    const auto away = [&](std::size_t i) { return std::abs(double{lead[i]} - value) / range; };
    for (std::size_t i = side; i + side < lead.size(); ++i) {
        const std::size_t first = i;
        while (i + side < lead.size() && away(i) <= kSame) {
            ++i;
        }
        if (i - first >= plateau && away(first - side) >= kSteep && away(i - 1 + side) >= kSteep) {
            ++count;
        }
    }
    return count;
}

bool Saturates(const Trace& lead, double sampleRate) {
    const auto [lowest, highest] = std::minmax_element(lead.begin(), lead.end());
    const double range = double{*highest} - double{*lowest};
    Trace values = lead;
    const double middle = Median(values);
    const auto plateau =
        static_cast<std::size_t>(std::max(kFewestSamples, std::ceil(kPlateauMs * sampleRate / 1000)));
    const auto side = static_cast<std::size_t>(std::max(1.0, kSideMs * sampleRate / 1000));
    const double fewest = std::ceil(static_cast<double>(lead.size()) / sampleRate / kSecondsAPlateau);
    const auto isCutAt = [&](double value) {
        return std::abs(value - middle) >= kFarFromMiddle * range &&
               static_cast<double>(CountPlateaus(lead, value, range, plateau, side)) >= fewest;
    };
    return range > 0 && (isCutAt(double{*lowest}) || isCutAt(double{*highest}));
}

}  // namespace

std::vector<std::size_t> FindSaturatedLeads(const Recording& recording) {
    std::vector<std::size_t> saturated;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        if (!recording.leads[lead].empty() && Saturates(recording.leads[lead], recording.sampleRate)) {
            saturated.push_back(lead);
        }
    }
    return saturated;
}

}  // namespace kx::recording
