#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

constexpr int kCompleteMs = 120;  // AHA III, adults
constexpr int kIncompleteMs = 110;
// A single lead shows a little less than all leads together; one lead that ends late by noise is not to make
// a block.
constexpr int kLeadAllowanceMs = 10;
constexpr int kShortPrMs = 120;

// AHA III: rsr', rsR' or rSR' in V1 or V2, or a broad R with a late peak; S longer than R or than 40 ms in I
// and V6.
bool HasRightPattern(const Ecg& ecg) {
    const auto lateR = [&ecg](int lead) {
        return ecg.RPrime(lead) > 0 || (ecg.S(lead) == 0 && ecg.RPeakTime(lead) > 50);
    };
    const auto broadS = [&ecg](int lead) {
        return ecg.SDuration(lead) > 40 || ecg.SDuration(lead) > ecg.RDuration(lead);
    };
    return (lateR(KX_LEAD_V1) || lateR(KX_LEAD_V2)) && broadS(KX_LEAD_I) && broadS(KX_LEAD_V6);
}

// AHA III: broad R without Q in I, V5 and V6, R peak later than 60 ms in V5 and V6; V1 points away.
bool HasLeftPattern(const Ecg& ecg) {
    for (const int lead : {KX_LEAD_I, KX_LEAD_V5, KX_LEAD_V6}) {
        if (ecg.Q(lead) > 0 || ecg.Net(lead) <= 0) {
            return false;
        }
    }
    return ecg.Net(KX_LEAD_V1) < 0 && (ecg.RPeakTime(KX_LEAD_V5) > 60 || ecg.RPeakTime(KX_LEAD_V6) > 60);
}

}  // namespace

Conduction ConductionOf(const Ecg& ecg) {
    const int qrs = ecg.Set().qrsDuration;
    const int typical = ecg.TypicalQrsDuration();
    const int limit = qrs >= kCompleteMs ? kCompleteMs : kIncompleteMs;
    if (qrs < kIncompleteMs || typical < limit - kLeadAllowanceMs) {
        return Conduction::kNormal;
    }
    const bool complete = qrs >= kCompleteMs;
    // AHA III: PR below 120 ms and QRS of 120 ms or more; the delta wave itself is not among the
    // measurements.
    if (complete && ecg.HasP() && ecg.Set().prInterval < kShortPrMs) {
        return Conduction::kPreexcitation;
    }
    if (HasRightPattern(ecg)) {
        return complete ? Conduction::kRightBundleBlock : Conduction::kIncompleteRightBundleBlock;
    }
    if (HasLeftPattern(ecg)) {
        return complete ? Conduction::kLeftBundleBlock : Conduction::kIncompleteLeftBundleBlock;
    }
    // No pattern supports it: then the single leads must be as broad.
    return typical >= kCompleteMs ? Conduction::kNonspecificDelay : Conduction::kNormal;
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

// Both leads that make the axis are as far up as down.
bool IsAxisIndeterminate(const Ecg& ecg) {
    const auto isBalanced = [&ecg](int lead) {
        const int net = ecg.Net(lead);
        return 20 * (net < 0 ? -net : net) <= 3 * ecg.PeakToPeak(lead);
    };
    return isBalanced(KX_LEAD_I) && isBalanced(KX_LEAD_AVF);
}

// AHA III: axis from -45 to -90 degrees, qR in aVL with its R peak at 45 ms or later, QRS below 120 ms (or
// with a right bundle branch block).
bool HasAnteriorHemiblock(const Ecg& ecg) {
    const int axis = ecg.Set().qrsAxis;
    const bool own =
        ecg.Set().qrsDuration < kCompleteMs || ConductionOf(ecg) == Conduction::kRightBundleBlock;
    return own && -90 <= axis && axis <= -45 && ecg.Q(KX_LEAD_AVL) > 0 &&
           ecg.R(KX_LEAD_AVL) > ecg.Q(KX_LEAD_AVL) && ecg.RPeakTime(KX_LEAD_AVL) >= 45;
}

// AHA III: axis from 90 to 180 degrees, rS in I and aVL, qR in III and aVF; right hypertrophy looks the same.
bool HasPosteriorHemiblock(const Ecg& ecg) {
    const int axis = ecg.Set().qrsAxis;
    const bool own =
        ecg.Set().qrsDuration < kCompleteMs || ConductionOf(ecg) == Conduction::kRightBundleBlock;
    const auto isRs = [&ecg](int lead) { return ecg.R(lead) > 0 && ecg.S(lead) > ecg.R(lead); };
    const auto isQr = [&ecg](int lead) { return ecg.Q(lead) > 0 && ecg.R(lead) > ecg.Q(lead); };
    return own && axis >= 90 && isRs(KX_LEAD_I) && isRs(KX_LEAD_AVL) && isQr(KX_LEAD_III) &&
           isQr(KX_LEAD_AVF) && !HasRightHypertrophy(ecg);
}

}  // namespace kx::interp
