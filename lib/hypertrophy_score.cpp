#include "lib/hypertrophy_score.h"

#include <algorithm>

namespace kx {
namespace {

constexpr std::int32_t kLimbAmplitudeUv = 2000;
constexpr std::int32_t kPrecordialAmplitudeUv = 3000;
constexpr std::int32_t kLeftAtriumAmplitudeUv = -2100;
constexpr std::int32_t kLeftAtriumDurationMs = 40;
constexpr std::int32_t kLongQrsMs = 90;
constexpr std::int32_t kLateIntrinsicoidMs = 50;

// The taller of the R and R' waves of a lead.
std::int32_t RAmplitude(const KxMeasurementSet& set, int lead) {
    return std::max(set.leads[lead].aR, set.leads[lead].aR1);
}

// The depth of the deeper of the S and S' waves, positive for a downward wave.
std::int32_t SDepth(const KxMeasurementSet& set, int lead) {
    return std::max(-set.leads[lead].aS, -set.leads[lead].aS1);
}

// The largest amplitude of any R, R', Q, S or S' wave of the six limb leads, at least 0.
std::int32_t LimbMaximum(const KxMeasurementSet& set) {
    std::int32_t largest = 0;
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_AVF; ++lead) {
        largest =
            std::max({largest, RAmplitude(set, lead), SDepth(set, lead), -std::int32_t{set.leads[lead].aQ}});
    }
    return largest;
}

// More than 90 degrees apart. The difference is brought into -180 to 180 by steps of 180, not of 360, so that
// differences beyond a half turn count less than their geometric angle.
bool AreAxesOpposed(std::int32_t qrsAxis, std::int32_t tAxis) {
    std::int32_t angle = qrsAxis - tAxis;
    while (angle > 180) {
        angle -= 180;
    }
    while (angle < -180) {
        angle += 180;
    }
    return angle > 90 || angle < -90;
}

std::int32_t AtriumAmplitudeOf(const KxLeadMeasurements& v1, AtriumAmplitude which) {
    if (which == AtriumAmplitude::kReported) {
        return v1.aP2 != 0 ? v1.aP1 : 0;
    }
    return v1.aP2 != 0 ? v1.aP2 : v1.aP1;
}

void ScoreAmplitude(const KxMeasurementSet& set, HypertrophyScore& score) {
    score.limbAmplitude = LimbMaximum(set) >= kLimbAmplitudeUv;
    score.precordialS = std::max(score.sV1, SDepth(set, KX_LEAD_V2)) >= kPrecordialAmplitudeUv;
    score.precordialR = std::max(score.rV5, score.rV6) >= kPrecordialAmplitudeUv;
    score.amplitudePoints = score.limbAmplitude || score.precordialS || score.precordialR ? 3 : 0;
}

void ScoreDurations(const KxMeasurementSet& set, HypertrophyScore& score) {
    score.longQrs = set.qrsDuration >= kLongQrsMs;
    score.lateIntrinsicoid = set.leads[KX_LEAD_V3].intrinsicoidDeflection >= kLateIntrinsicoidMs ||
                             set.leads[KX_LEAD_V6].intrinsicoidDeflection >= kLateIntrinsicoidMs;
    score.durationPoints = (score.longQrs ? 1 : 0) + (score.lateIntrinsicoid ? 1 : 0);
}

}  // namespace

HypertrophyScore ScoreHypertrophy(const KxMeasurementSet& set, AtriumAmplitude atrium) {
    HypertrophyScore score{};
    score.rV5 = RAmplitude(set, KX_LEAD_V5);
    score.rV6 = RAmplitude(set, KX_LEAD_V6);
    score.sV1 = SDepth(set, KX_LEAD_V1);
    score.sokolowLyon = score.sV1 + std::max(score.rV5, score.rV6);
    score.rAvl = RAmplitude(set, KX_LEAD_AVL);
    score.sV3 = SDepth(set, KX_LEAD_V3);
    score.cornell = score.rAvl + score.sV3;

    ScoreAmplitude(set, score);
    score.opposedStT = AreAxesOpposed(set.qrsAxis, set.tAxis);
    score.stPoints = score.opposedStT ? 3 : 0;
    score.leftAxisDeviation = -90 <= set.qrsAxis && set.qrsAxis <= -30;
    score.axisPoints = score.leftAxisDeviation ? 2 : 0;
    ScoreDurations(set, score);
    score.leftAtrium = AtriumAmplitudeOf(set.leads[KX_LEAD_V1], atrium) < kLeftAtriumAmplitudeUv &&
                       set.pDuration >= kLeftAtriumDurationMs;
    score.atriumPoints = score.leftAtrium ? 3 : 0;
    score.totalPoints =
        score.amplitudePoints + score.stPoints + score.axisPoints + score.durationPoints + score.atriumPoints;
    return score;
}

}  // namespace kx
