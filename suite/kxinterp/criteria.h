// The criteria of the automatic interpretation, each a question to one measured beat and its rhythm.
// Portable.
//
// Neither age nor sex is known here: where a limit depends on them, it is the one that fewer healthy people
// exceed. Sources, by the short names that the criteria give:
//   AHA II to VI  AHA/ACCF/HRS Recommendations for the Standardization and Interpretation of the
//                 Electrocardiogram, parts II to VI, J. Am. Coll. Cardiol. 49, 1128-1135, 2007, and 53,
//                 976-1011, 2009 (III conduction, IV ST, T, U and QT, V chamber hypertrophy, VI ischemia and
//                 infarction)
//   WHO/ISFC      J. L. Willems et al., "Criteria for intraventricular conduction disturbances and
//   pre-excitation",
//                 J. Am. Coll. Cardiol. 5, 1261-1275, 1985
//   Strauss       D. G. Strauss, R. H. Selvester, G. S. Wagner, "Defining left bundle branch block in the era
//                 of cardiac resynchronization therapy", Am. J. Cardiol. 107, 927-934, 2011
//   UDMI          Fourth Universal Definition of Myocardial Infarction, Circulation 138, e618-e651, 2018
//   ACC 2018      ACC/AHA/HRS Guideline on Bradycardia and Conduction Delay, Circulation 140, e382-e482, 2019
#pragma once

#include "suite/kxinterp/ecg.h"

namespace kx::interp {

// ---- rhythm (rhythm_criteria.cpp)

enum class Origin {
    kUnknown,
    kPaced,
    kSinus,
    kEctopicAtrial,
    kAtrialFibrillation,
    kAtrialFlutter,
    kCompleteBlock,
    kSupraventricularTachycardia,
    kWideTachycardia,
    kJunctional,
    kIdioventricular,
    kRegular,    // neither of these, and regular
    kIrregular,  // neither of these, and irregular
};

enum class Pacing { kNone, kUnknown, kAtrial, kVentricular, kSequential };
enum class SecondDegree { kNone, kWenckebach, kMobitz, kTwoToOne };

Origin OriginOf(const Ecg& ecg);
Pacing PacingOf(const Ecg& ecg);
bool HasCompleteBlock(const Ecg& ecg);
SecondDegree SecondDegreeOf(const Ecg& ecg);
bool HasSinusArrhythmia(const Ecg& ecg);
bool HasPause(const Ecg& ecg);
bool HasBigeminy(const Ecg& ecg);

// ---- conduction and axis (conduction_criteria.cpp)

enum class Conduction {
    kNormal,
    kPreexcitation,
    kRightBundleBlock,
    kIncompleteRightBundleBlock,
    kLeftBundleBlock,
    kIncompleteLeftBundleBlock,
    kNonspecificDelay,
};

Conduction ConductionOf(const Ecg& ecg);
// Whether the left ventricle is activated on its own ways, so that hypertrophy, infarction and ischemia can
// be told.
bool IsLeftActivationNormal(const Ecg& ecg);
bool HasRightDelay(const Ecg& ecg);  // complete or incomplete right bundle branch block
bool IsBroaderThanNormal(const Ecg& ecg);
bool IsAxisIndeterminate(const Ecg& ecg);
bool HasAnteriorHemiblock(const Ecg& ecg);
bool HasPosteriorHemiblock(const Ecg& ecg);

// ---- chambers and voltage (chamber_criteria.cpp)

bool HasLowVoltage(const Ecg& ecg, int firstLead, int lastLead, int limit);
bool HasLeftAtrialEnlargement(const Ecg& ecg);
bool HasRightAtrialEnlargement(const Ecg& ecg);
int SokolowLyon(const Ecg& ecg);
int Cornell(const Ecg& ecg);
bool HasLeftVoltage(const Ecg& ecg);
bool HasLeftStrain(const Ecg& ecg);
bool HasRightHypertrophy(const Ecg& ecg);
bool HasS1Q3T3(const Ecg& ecg);
// The first of V1 to V6 in which R is as large as S: 1 to 6, 7 when there is none.
int TransitionLead(const Ecg& ecg);

// ---- infarction and repolarisation (ischemia_criteria.cpp)

struct Infarction {
    bool septal, anterior, lateral, inferior, posterior;
};
Infarction InfarctionOf(const Ecg& ecg);

// The largest elevation or depression of the J point in a region, 0 without two neighbouring leads that show
// it.
int AnteriorElevation(const Ecg& ecg);
int InferiorElevation(const Ecg& ecg);
int LateralElevation(const Ecg& ecg);
bool IsEarlyRepolarisation(const Ecg& ecg);
int StDepression(const Ecg& ecg);

bool HasAnteriorTInversion(const Ecg& ecg);
bool HasInferiorTInversion(const Ecg& ecg);
bool HasLateralTInversion(const Ecg& ecg);
bool HasFlatT(const Ecg& ecg);

// The corrected QT interval, less what a broad complex adds to it; 0: not known.
int CorrectedQt(const Ecg& ecg);

}  // namespace kx::interp
