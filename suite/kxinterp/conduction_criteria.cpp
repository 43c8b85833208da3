// Criteria of conduction: bundle branches, fascicles, pre-excitation.
#include <algorithm>

#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

constexpr int kIncompleteMs = 110;  // AHA III, adults
constexpr int kShortPrMs = 120;
constexpr int kSlurredMs = 40;   // half of the complexes without a delta wave are in full movement after 22
constexpr int kLatePeakMs = 60;  // AHA III
constexpr int kSmallQ = 40;      // microvolts, 0.4 mm: less is no Q wave

// AHA III: rsr', rsR' or rSR' in V1 or V2, or a broad R with a late peak; S longer than R or of 40 ms in I
// and V6.
bool HasRightPattern(const Ecg& ecg) {
    const auto lateR = [&ecg](int lead) {
        return ecg.RPrime(lead) > 0 || (ecg.S(lead) == 0 && ecg.RPeakTime(lead) > 50);
    };
    const auto broadS = [&ecg](int lead) {
        return ecg.SDuration(lead) >= 40 || ecg.SDuration(lead) > ecg.RDuration(lead);
    };
    return (lateR(KX_LEAD_V1) || lateR(KX_LEAD_V2)) && broadS(KX_LEAD_I) && broadS(KX_LEAD_V6);
}

// WHO/ISFC: a second R in V1, of 0.1 mV; without a first one it follows Q.
bool HasSecondR(const Ecg& ecg) {
    constexpr int kLeast = 100;
    const int lead = KX_LEAD_V1;
    return ecg.RPrime(lead) >= kLeast || (ecg.Q(lead) >= kLeast && ecg.R(lead) >= kLeast);
}

// Strauss: 140 ms in men, QS or rS in V1 and V2, slurred or notched in two leads, for which a late peak
// stands. Q waves to the left, which with this block are those of a septal scar, do not speak against it.
bool HasStrictLeftPattern(const Ecg& ecg) {
    constexpr int kLeastMs = 140;
    const auto isRsOrQs = [&ecg](int lead) { return ecg.IsQs(lead) || ecg.S(lead) > ecg.R(lead); };
    const int slurred = (ecg.RPeakTime(KX_LEAD_I) > kLatePeakMs) +
                        (ecg.RPeakTime(KX_LEAD_AVL) > kLatePeakMs) +
                        (ecg.RPeakTime(KX_LEAD_V5) > kLatePeakMs) + (ecg.RPeakTime(KX_LEAD_V6) > kLatePeakMs);
    return ecg.TypicalQrsDuration() >= kLeastMs && isRsOrQs(KX_LEAD_V1) && isRsOrQs(KX_LEAD_V2) &&
           slurred >= 2;
}

// AHA III: V1 points away; broad R in I, V5 or V6 with a late peak. Q is absent in I and V6, but for a scar
// in one of them.
bool HasLeftPattern(const Ecg& ecg) {
    const bool leftward = ecg.Net(KX_LEAD_I) > 0 && std::max(ecg.Net(KX_LEAD_V5), ecg.Net(KX_LEAD_V6)) > 0;
    const bool late = std::max({ecg.RPeakTime(KX_LEAD_I), ecg.RPeakTime(KX_LEAD_V5),
                                ecg.RPeakTime(KX_LEAD_V6)}) > kLatePeakMs;
    return ecg.Net(KX_LEAD_V1) < 0 && leftward && late &&
           (std::min(ecg.Q(KX_LEAD_I), ecg.Q(KX_LEAD_V6)) < kSmallQ || HasStrictLeftPattern(ecg));
}

bool IsPreexcited(const Ecg& ecg) {
    // Where the beginning of the complex is known, it must be slurred.
    const bool slurred = !ecg.Atria().watched || ecg.SlowOnset() >= kSlurredMs;
    return slurred && ecg.HasP() && ecg.Set().prInterval < kShortPrMs && ecg.Set().qrsDuration >= kBroadQrsMs;
}

// Alone, or with a right bundle branch block; what a left one leaves of the axis tells nothing.
bool MayBeHemiblock(const Ecg& ecg) {
    const Conduction conduction = ConductionOf(ecg);
    return conduction != Conduction::kPreexcitation && conduction != Conduction::kNonspecificDelay;
}

}  // namespace

// AHA III, WHO/ISFC for the incomplete right block, whose second R they want whatever the duration.
Conduction ConductionOf(const Ecg& ecg) {
    if (IsPreexcited(ecg)) {
        return Conduction::kPreexcitation;
    }
    if (ecg.IsBroad()) {
        return HasRightPattern(ecg)  ? Conduction::kRightBundleBlock
               : HasLeftPattern(ecg) ? Conduction::kLeftBundleBlock
                                     : Conduction::kNonspecificDelay;
    }
    if (HasSecondR(ecg)) {
        return Conduction::kIncompleteRightBundleBlock;
    }
    return IsBroaderThanNormal(ecg) && HasLeftPattern(ecg) ? Conduction::kIncompleteLeftBundleBlock
                                                           : Conduction::kNormal;
}

bool IsLeftActivationNormal(const Ecg& ecg) {
    const Conduction conduction = ConductionOf(ecg);
    const Origin origin = OriginOf(ecg);
    return conduction != Conduction::kLeftBundleBlock && conduction != Conduction::kPreexcitation &&
           conduction != Conduction::kNonspecificDelay && origin != Origin::kPaced &&
           origin != Origin::kWideTachycardia && origin != Origin::kIdioventricular;
}

bool HasRightDelay(const Ecg& ecg) {
    const Conduction conduction = ConductionOf(ecg);
    return conduction == Conduction::kRightBundleBlock ||
           conduction == Conduction::kIncompleteRightBundleBlock;
}

// AHA III, adults: the second R alone, in a complex of normal duration, is a variant of the normal.
bool IsBroaderThanNormal(const Ecg& ecg) {
    return ecg.TypicalQrsDuration() >= kIncompleteMs;
}

// Both leads that make the axis are as far up as down.
bool IsAxisIndeterminate(const Ecg& ecg) {
    const auto isBalanced = [&ecg](int lead) {
        const int net = ecg.Net(lead);
        return 20 * (net < 0 ? -net : net) <= 3 * ecg.PeakToPeak(lead);
    };
    return isBalanced(KX_LEAD_I) && isBalanced(KX_LEAD_AVF);
}

// AHA III: qR in aVL, rS in II, III and aVF. It asks for an axis from -45 degrees on; readers name the block
// by its complexes, so the axis need only point up and to the left, and S of II need not outdo R: 0.4 of it
// stands between the records that readers gave the name and those that they did not.
bool HasAnteriorHemiblock(const Ecg& ecg) {
    const int axis = ecg.Set().qrsAxis;
    const auto isDown = [&ecg](int lead) { return ecg.Net(lead) < 0; };
    return MayBeHemiblock(ecg) && -90 <= axis && axis <= -10 && ecg.DepthBeforeR(KX_LEAD_AVL) >= kSmallQ &&
           ecg.Net(KX_LEAD_AVL) > 0 && isDown(KX_LEAD_III) && isDown(KX_LEAD_AVF) &&
           10 * ecg.S(KX_LEAD_II) >= 4 * ecg.R(KX_LEAD_II);
}

// AHA III: axis from 90 to 180 degrees, rS in I and aVL, qR in III and aVF; right hypertrophy looks the same.
bool HasPosteriorHemiblock(const Ecg& ecg) {
    const auto isRs = [&ecg](int lead) { return ecg.R(lead) > 0 && ecg.S(lead) > ecg.R(lead); };
    const auto isQr = [&ecg](int lead) { return ecg.Q(lead) > 0 && ecg.R(lead) > ecg.Q(lead); };
    return MayBeHemiblock(ecg) && ConductionOf(ecg) != Conduction::kLeftBundleBlock &&
           ecg.Set().qrsAxis >= 90 && isRs(KX_LEAD_I) && isRs(KX_LEAD_AVL) && isQr(KX_LEAD_III) &&
           isQr(KX_LEAD_AVF) && !HasRightHypertrophy(ecg);
}

}  // namespace kx::interp
