// Criteria of rhythm and of atrioventricular conduction.
#include <algorithm>
#include <cstdlib>

#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

// The sinus P wave points between 0 and 75 degrees (B. Surawicz and T. Knilans, "Chou's Electrocardiography
// in Clinical Practice"); beyond these limits it comes from elsewhere, and between both pairs of limits it is
// only unusual.
constexpr int kLowestSinusAxis = -30;
constexpr int kHighestSinusAxis = 110;
constexpr int kClearP = 50;  // microvolts

// Flutter waves come 240 to 340 times a minute (F. G. Cosio, "Atrial flutter, typical and atypical",
// Arrhythm. Electrophysiol. Rev. 6, 55-62, 2017), slower under drugs.
constexpr std::uint32_t kSlowestFlutterMs = 290;
constexpr std::uint32_t kFastestFlutterMs = 170;

// Root mean square of successive differences over the mean interval (S. Dash et al., "Automatic real time
// detection of atrial fibrillation", Ann. Biomed. Eng. 37, 1701-1709, 2009).
bool IsIrregular(const BeatFigures& figures) {
    return figures.KnowsRegularity() && 10 * figures.successiveDifferenceMs > figures.meanNormalMs;
}

bool HasFlutterWaves(const AtrialFigures& atria) {
    return atria.regular && atria.waves > atria.beats && kFastestFlutterMs <= atria.intervalMs &&
           atria.intervalMs <= kSlowestFlutterMs;
}

bool IsPaced(const BeatFigures& beats) {
    return 2 * beats.paced >= beats.beats && beats.paced > 0;
}

// The median beat and the beats one by one agree that a P wave leads; where they do not, the regularity
// decides, unless single waves that are not conducted explain it. Without a watch over the recording the
// median beat alone does.
bool HasLeadingP(const Ecg& ecg) {
    const AtrialFigures& atria = ecg.Atria();
    if (!atria.watched) {
        return ecg.HasP();
    }
    if (SecondDegreeOf(ecg) != SecondDegree::kNone) {
        return true;
    }
    const bool irregular = IsIrregular(ecg.Beats());
    return atria.Lead() ? ecg.HasP() || !irregular : ecg.HasP() && !irregular;
}

// The direction of a P wave that is hardly seen in both leads that make it says nothing.
bool PointsElsewhere(const Ecg& ecg) {
    const auto size = [&ecg](int lead) { return std::abs(int{ecg.Lead(lead).aP1}); };
    const int axis = ecg.Set().pAxis;
    return ecg.HasP() && (axis < kLowestSinusAxis || axis > kHighestSinusAxis) &&
           std::max(size(KX_LEAD_I), size(KX_LEAD_AVF)) >= kClearP;
}

Origin WithoutPWaves(const Ecg& ecg) {
    const BeatFigures& beats = ecg.Beats();
    if (!beats.KnowsRegularity()) {
        return Origin::kUnknown;
    }
    const bool broad = ecg.IsBroad();
    const std::uint32_t rate = ecg.HeartRate();
    if (IsIrregular(beats)) {
        return broad && rate < 60 ? Origin::kIrregular : Origin::kAtrialFibrillation;
    }
    if (rate > 100) {
        return broad ? Origin::kWideTachycardia : Origin::kSupraventricularTachycardia;
    }
    // Escape rhythms: junctional 40 to 60, ventricular 20 to 40 a minute (ACC 2018).
    if (broad && rate <= 40) {
        return Origin::kIdioventricular;
    }
    if (!broad && rate >= 40 && rate <= 60) {
        return Origin::kJunctional;
    }
    return Origin::kRegular;
}

}  // namespace

// AV dissociation with atria that are faster than the ventricles: none of their waves is conducted (ACC
// 2018).
bool HasCompleteBlock(const Ecg& ecg) {
    const AtrialFigures& atria = ecg.Atria();
    const std::uint32_t interval = ecg.Beats().meanIntervalMs;
    return atria.watched && atria.regular && atria.waves >= 5 && atria.intervalMs > kSlowestFlutterMs &&
           !atria.Lead() && 100 * atria.intervalMs < 95 * interval && !IsIrregular(ecg.Beats());
}

// ACC 2018: waves at a constant interval, of which single ones are not conducted, after distances that grow
// longer (Wenckebach) or do not (Mobitz).
SecondDegree SecondDegreeOf(const Ecg& ecg) {
    const AtrialFigures& atria = ecg.Atria();
    if (atria.blocked == 0 || !atria.regular || atria.intervalMs <= kSlowestFlutterMs) {
        return SecondDegree::kNone;
    }
    if (atria.lengthening) {
        // Apart from complete block, whose beats are regular.
        const bool follow = 10 * atria.distances >= 9 * atria.beats;
        return follow && IsIrregular(ecg.Beats()) ? SecondDegree::kWenckebach : SecondDegree::kNone;
    }
    if (!atria.Lead()) {
        return SecondDegree::kNone;
    }
    // Every second wave: which of the two types it is cannot be told.
    const bool everySecond = atria.longestRun == 1 && 10 * (atria.blocked + 1) >= 8 * atria.beats;
    return everySecond ? SecondDegree::kTwoToOne : SecondDegree::kMobitz;
}

Origin OriginOf(const Ecg& ecg) {
    if (IsPaced(ecg.Beats())) {
        return Origin::kPaced;
    }
    if (HasFlutterWaves(ecg.Atria())) {
        return Origin::kAtrialFlutter;
    }
    if (HasCompleteBlock(ecg)) {
        return Origin::kCompleteBlock;
    }
    if (!HasLeadingP(ecg)) {
        return WithoutPWaves(ecg);
    }
    return PointsElsewhere(ecg) ? Origin::kEctopicAtrial : Origin::kSinus;
}

Pacing PacingOf(const Ecg& ecg) {
    const PacingFigures& pacing = ecg.Impulses();
    if (!IsPaced(ecg.Beats())) {
        return Pacing::kNone;
    }
    const std::uint32_t half = ecg.Beats().paced / 2;
    if (pacing.both > half) {
        return Pacing::kSequential;
    }
    return pacing.ventricular > half ? Pacing::kVentricular
           : pacing.atrial > half    ? Pacing::kAtrial
                                     : Pacing::kUnknown;
}

// The longest and the shortest PP interval differ by more than 160 ms (H. J. L. Marriott, "Practical
// Electrocardiography").
bool HasSinusArrhythmia(const Ecg& ecg) {
    const BeatFigures& beats = ecg.Beats();
    return OriginOf(ecg) == Origin::kSinus && SecondDegreeOf(ecg) == SecondDegree::kNone &&
           beats.KnowsRegularity() && beats.longestMs - beats.shortestMs > 160;
}

bool HasPause(const Ecg& ecg) {
    const BeatFigures& beats = ecg.Beats();
    return OriginOf(ecg) == Origin::kSinus && SecondDegreeOf(ecg) == SecondDegree::kNone &&
           beats.longestMs > 2000 && 2 * beats.longestMs > 3 * beats.meanNormalMs;
}

bool HasBigeminy(const Ecg& ecg) {
    return ecg.Beats().bigeminalSteps >= 2;
}

}  // namespace kx::interp
