#include "suite/kxanalyze/network_input.h"

#include <algorithm>

#include "suite/kxanalyze/elementary.h"

namespace kx::analysis {
namespace {

constexpr int kAroundComplex = 100;
constexpr double kLevelPart = 0.03;    // of the range of the complex
constexpr double kSlopePart = 0.0015;  // of the same, per ms
constexpr double kNoises = 4;
constexpr double kTimeMs = 300;
constexpr double kLeastRange = 1e-6;  // of a lead that is flat around the complex

float Squeezed(double value) {
    return static_cast<float>(Asinh(value) / 2);
}

}  // namespace

void FillInput(const Beat& beat, const BeatLead& lead, ShortenedSegment segment, Rows& input) {
    input.Resize(kNetworkInputs, kNetworkPlaces);
    const auto complex = Between(lead.fine, beat.centre - kAroundComplex, beat.centre + kAroundComplex);
    const auto [lowest, highest] = std::minmax_element(complex.begin(), complex.end());
    const double range = *highest - *lowest + kLeastRange;
    const double base = Median(beat, lead.fine);
    const double fineUnit = kNoises * lead.fineNoise + kLeastRange,
                 wideUnit = kNoises * lead.wideNoise + kLeastRange;
    for (int t = 0; t < kNetworkPlaces; ++t) {
        const int ms = t * kNetworkStepMs - kNetworkBeforeMs;
        const Place shown = beat.centre + ms, place = shown < segment.at ? shown - segment.ms : shown;
        const bool inside = place >= 0 && place < beat.length;
        const double slope = inside ? At(lead.wideSlope, place) : 0;
        input[0][t] = inside ? Squeezed((At(lead.fine, place) - base) / (kLevelPart * range)) : 0;
        input[1][t] = inside ? Squeezed(At(lead.fineSlope, place) / fineUnit) : 0;
        input[2][t] = inside ? Squeezed(slope / wideUnit) : 0;
        input[3][t] = inside ? Squeezed(slope / (kSlopePart * range)) : 0;
        input[4][t] = inside ? static_cast<float>(ms / kTimeMs) : 0;
        input[5][t] = inside && beat.rr > 0 ? static_cast<float>(static_cast<double>(ms) / beat.rr) : 0;
        input[6][t] = inside ? 1.0f : 0.0f;
    }
}

}  // namespace kx::analysis
