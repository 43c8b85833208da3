#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

constexpr int kBroadQrsMs = 120;

// The sinus P wave points between 0 and 75 degrees (B. Surawicz and T. Knilans, "Chou's Electrocardiography
// in Clinical Practice"); beyond these limits it comes from elsewhere, and between both pairs of limits it is
// only unusual.
constexpr int kLowestSinusAxis = -30;
constexpr int kHighestSinusAxis = 110;

// Root mean square of successive differences over the mean interval (S. Dash et al., "Automatic real time
// detection of atrial fibrillation", Ann. Biomed. Eng. 37, 1701-1709, 2009).
bool IsIrregular(const RhythmFigures& figures) {
    return figures.KnowsRegularity() && 10 * figures.successiveDifferenceMs > figures.meanNormalMs;
}

Origin WithoutPWaves(const Ecg& ecg) {
    const RhythmFigures& rhythm = ecg.Rhythm();
    if (!rhythm.KnowsRegularity()) {
        return Origin::kUnknown;
    }
    const bool broad = ecg.Set().qrsDuration >= kBroadQrsMs;
    const std::uint32_t rate = ecg.HeartRate();
    if (IsIrregular(rhythm)) {
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

Origin OriginOf(const Ecg& ecg) {
    const RhythmFigures& rhythm = ecg.Rhythm();
    if (2 * rhythm.paced >= rhythm.beats && rhythm.paced > 0) {
        return Origin::kPaced;
    }
    if (!ecg.HasP()) {
        return WithoutPWaves(ecg);
    }
    const int axis = ecg.Set().pAxis;
    return kLowestSinusAxis <= axis && axis <= kHighestSinusAxis ? Origin::kSinus : Origin::kEctopicAtrial;
}

// The longest and the shortest PP interval differ by more than 160 ms (H. J. L. Marriott, "Practical
// Electrocardiography").
bool HasSinusArrhythmia(const Ecg& ecg) {
    const RhythmFigures& rhythm = ecg.Rhythm();
    return OriginOf(ecg) == Origin::kSinus && rhythm.KnowsRegularity() &&
           rhythm.longestMs - rhythm.shortestMs > 160;
}

bool HasPause(const Ecg& ecg) {
    const RhythmFigures& rhythm = ecg.Rhythm();
    return OriginOf(ecg) == Origin::kSinus && rhythm.longestMs > 2000 &&
           2 * rhythm.longestMs > 3 * rhythm.meanNormalMs;
}

bool HasBigeminy(const Ecg& ecg) {
    return ecg.Rhythm().bigeminalSteps >= 2;
}

}  // namespace kx::interp
