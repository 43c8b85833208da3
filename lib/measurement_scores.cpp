#include "lib/measurement_scores.h"

#include <algorithm>

namespace kx {

namespace {

constexpr std::int32_t kLimbAmplitudeUv = 2000;
constexpr std::int32_t kPrecordialAmplitudeUv = 3000;
constexpr std::int32_t kLeftAtriumAmplitudeUv = -2100;
constexpr std::int32_t kLeftAtriumDurationMs = 40;
constexpr std::int32_t kLongQrsMs = 90;
constexpr std::int32_t kLateIntrinsicoidMs = 50;

std::int32_t TallestR(const KxMeasurementSet& set, int lead) {
    return std::max(set.leads[lead].aR, set.leads[lead].aR1);
}

std::int32_t DeepestS(const KxMeasurementSet& set, int lead) {
    return std::max(-set.leads[lead].aS, -set.leads[lead].aS1);
}

std::int32_t LargestLimbWave(const KxMeasurementSet& set) {
    std::int32_t largest = 0;
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_AVF; ++lead) {
        const std::int32_t q = -std::int32_t{set.leads[lead].aQ};
        largest = std::max({largest, TallestR(set, lead), DeepestS(set, lead), q});
    }
    return largest;
}

bool IsAmplitudeHigh(const KxMeasurementSet& set) {
    const std::int32_t s = std::max(DeepestS(set, KX_LEAD_V1), DeepestS(set, KX_LEAD_V2));
    const std::int32_t r = std::max(TallestR(set, KX_LEAD_V5), TallestR(set, KX_LEAD_V6));
    return LargestLimbWave(set) >= kLimbAmplitudeUv || std::max(s, r) >= kPrecordialAmplitudeUv;
}

// The angle between the QRS and T axes is brought into a half turn by half turns, not by whole ones.
bool IsStOpposed(const KxMeasurementSet& set) {
    std::int32_t angle = set.qrsAxis - set.tAxis;
    while (angle > 180) {
        angle -= 180;
    }
    while (angle < -180) {
        angle += 180;
    }
    return angle > 90 || angle < -90;
}

bool IsIntrinsicoidLate(const KxMeasurementSet& set, int lead) {
    return set.leads[lead].intrinsicoidDeflection >= kLateIntrinsicoidMs;
}

bool IsAtriumLarge(const KxMeasurementSet& set) {
    const KxLeadMeasurements& v1 = set.leads[KX_LEAD_V1];
    const std::int32_t amplitude = v1.aP2 != 0 ? v1.aP1 : 0;
    return amplitude < kLeftAtriumAmplitudeUv && set.pDuration >= kLeftAtriumDurationMs;
}

}  // namespace

std::int32_t ReportedSokolowLyon(const KxMeasurementSet& set) {
    return DeepestS(set, KX_LEAD_V1) + std::max(TallestR(set, KX_LEAD_V5), TallestR(set, KX_LEAD_V6));
}

std::int32_t ReportedCornell(const KxMeasurementSet& set) {
    return TallestR(set, KX_LEAD_AVL) + DeepestS(set, KX_LEAD_V3);
}

std::int32_t ReportedPointScore(const KxMeasurementSet& set) {
    const bool leftAxis = set.qrsAxis >= -90 && set.qrsAxis <= -30;
    const bool late = IsIntrinsicoidLate(set, KX_LEAD_V3) || IsIntrinsicoidLate(set, KX_LEAD_V6);
    return (IsAmplitudeHigh(set) ? 3 : 0) + (IsStOpposed(set) ? 3 : 0) + (leftAxis ? 2 : 0) +
           (set.qrsDuration >= kLongQrsMs ? 1 : 0) + (late ? 1 : 0) + (IsAtriumLarge(set) ? 3 : 0);
}

}  // namespace kx
