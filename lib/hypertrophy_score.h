// The voltage and point-score criteria for left ventricular hypertrophy, from the measurements of one median
// beat.
//
// The hypertrophy pane and the report texts share them. Sources of the criteria, and where the rules here
// differ from them:
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

#include "include/kxdialogs.h"

namespace kx {

// Which P amplitude of V1 stands for the left atrium: its second part, or the only one there is (the pane),
// or the first of two parts, as the reports have always printed it.
enum class AtriumAmplitude { kTerminal, kReported };

// Amplitudes in µV, depths of S waves positive.
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
HypertrophyScore ScoreHypertrophy(const KxMeasurementSet& set,
                                  AtriumAmplitude atrium = AtriumAmplitude::kTerminal);

}  // namespace kx
