// The voltage and point-score criteria for left ventricular hypertrophy, from the measurements of one median
// beat.
//
// Sources of the criteria, and where the pane's rules differ from them:
//
//   Sokolow-Lyon
//     M. Sokolow, T. P. Lyon, "The ventricular complex in left ventricular hypertrophy as obtained by
//     unipolar precordial and limb leads", Am Heart J 37 (1949) 161-186: S in V1 plus the taller R of V5 and
//     V6 reaches 35 mm (3.5 mV). Here a sum of exactly 3500 µV is still in the outer (olive) band.
//   Cornell
//     P. N. Casale et al., "Electrocardiographic detection of left ventricular hypertrophy: development and
//     prospective validation of improved criteria", J Am Coll Cardiol 6 (1985) 572-580: R in aVL plus S in
//     V3 above 2.8 mV in men, above 2.0 mV in women. An unknown sex is held to the men's limit.
//   Point score
//     D. W. Romhilt, E. H. Estes, "A point-score system for the ECG diagnosis of left ventricular
//     hypertrophy", Am Heart J 75 (1968) 752-758. Differences here:
//     - the limb-lead amplitude counts Q waves as well as R and S waves;
//     - the ST-T group compares the QRS and T axes (folded in steps of 180 degrees) in place of reading the
//       ST segment's direction; the record does not tell digitalis, so the one point under digitalis is
//       never given;
//     - left axis deviation ends at -90 degrees;
//     - the intrinsicoid deflection is read in V3 or V6, not in V5 or V6;
//     - the left atrium needs a terminal P amplitude in V1 beyond 2.1 mV (1 mm there) and takes the duration
//       of the whole P wave for that of its terminal part;
//     - no diagnosis is stated: 5 points show olive, 6 and more red (4 probable, 5 definite there).
#pragma once

#include <cstdint>

#include "dialogs/hypertrophy/value_range.h"
#include "include/kxdialogs.h"

namespace kx {

// Everything that the hypertrophy pane shows. Amplitudes in µV, depths of S waves positive.
struct HypertrophyScore {
    std::int32_t rV5;
    std::int32_t rV6;
    std::int32_t sV1;
    std::int32_t sokolowLyon;  // S(V1) + the larger of R(V5) and R(V6)

    std::int32_t rAvl;
    std::int32_t sV3;
    std::int32_t cornell;  // R(aVL) + S(V3)

    // Group 1, 3 points when any of its items holds.
    bool limbAmplitude;
    bool precordialS;
    bool precordialR;
    std::int32_t amplitudePoints;

    // Group 2, 3 points.
    bool opposedStT;
    std::int32_t stPoints;

    // Group 3, 2 points.
    bool leftAxisDeviation;
    std::int32_t axisPoints;

    // Group 4, 1 point for each item.
    bool longQrs;
    bool lateIntrinsicoid;
    std::int32_t durationPoints;

    // Group 5, 3 points.
    bool leftAtrium;
    std::int32_t atriumPoints;

    std::int32_t totalPoints;  // 0 to 13
};

// Scores whatever the fields of `set` hold; whether the set is marked as measured is the caller's concern.
HypertrophyScore ScoreHypertrophy(const KxMeasurementSet& set);

// The taller of the R and R' waves of a lead, µV. lead: an index of the set, 0 to 14.
std::int32_t RAmplitude(const KxMeasurementSet& set, int lead);
// The depth of the deeper of the S and S' waves of a lead, µV, positive for a downward wave.
std::int32_t SDepth(const KxMeasurementSet& set, int lead);
// The largest amplitude of any R, R', Q, S or S' wave of the six limb leads, µV; at least 0.
std::int32_t LimbMaximum(const KxMeasurementSet& set);
// Whether the QRS and T axes (degrees) point more than 90 degrees apart. The difference is brought into -180
// to 180 by steps of 180, not of 360, so that differences beyond a half turn count less than their geometric
// angle.
bool AreAxesOpposed(std::int32_t qrsAxis, std::int32_t tAxis);

// The colour ranges of the pane's numbers.
inline constexpr ValueRange kSingleAmplitudeRange = RangeFromZero(1000, 2000);  // µV
inline constexpr ValueRange kSokolowLyonRange = RangeFromZero(2000, 3500);      // µV
inline constexpr ValueRange kCriterionPointsRange = RangeFromZero(0, 1);
inline constexpr ValueRange kTotalPointsRange = RangeFromZero(4, 5);

// sex: KX_SEX_...; every value but KX_SEX_FEMALE has the men's limit. µV.
constexpr ValueRange CornellRange(std::uint32_t sex) {
    return RangeFromZero(1500, sex == KX_SEX_FEMALE ? 2000 : 2800);
}

}  // namespace kx
