// Criteria of voltage and of the chambers' size.
#include <algorithm>

#include "suite/kxinterp/criteria.h"

namespace kx::interp {

// AHA V: no lead of the group reaches the limit from peak to peak. A group that was not recorded has no
// voltage.
bool HasLowVoltage(const Ecg& ecg, int firstLead, int lastLead, int limit) {
    int largest = 0;
    for (int lead = firstLead; lead <= lastLead; ++lead) {
        largest = std::max(largest, ecg.PeakToPeak(lead));
    }
    return largest > 0 && largest < limit;
}

// AHA V: the terminal part of P in V1 reaches 0.04 mm s, depth times duration, 1 mm being 100 uV (J. J.
// Morris et al., Circulation 29, 242-252, 1964). A P wave that only points down there is all terminal part.
bool HasLeftAtrialEnlargement(const Ecg& ecg) {
    const KxLeadMeasurements& v1 = ecg.Lead(KX_LEAD_V1);
    const bool biphasic = v1.pPrimeOnMarker != 0;
    const int depth = biphasic ? -v1.aP2 : -v1.aP1;
    const int duration = v1.pOffMarker - (biphasic ? v1.pPrimeOnMarker : v1.pOnMarker);
    return ecg.HasP() && depth > 0 && depth * duration >= 100 * 40;
}

// AHA V: P taller than 2.5 mm in II or than 1.5 mm in V1.
bool HasRightAtrialEnlargement(const Ecg& ecg) {
    return ecg.HasP() && (ecg.Lead(KX_LEAD_II).aP1 > 250 || ecg.Lead(KX_LEAD_V1).aP1 > 150);
}

// M. Sokolow and T. P. Lyon, Am. Heart J. 37, 161-186, 1949: S in V1 and the taller R of V5 and V6, 3.5 mV.
int SokolowLyon(const Ecg& ecg) {
    return ecg.Depth(KX_LEAD_V1) + std::max(ecg.R(KX_LEAD_V5), ecg.R(KX_LEAD_V6));
}

// P. N. Casale et al., J. Am. Coll. Cardiol. 6, 572-580, 1985: R in aVL and S in V3, 2.8 mV (2.0 mV in
// women).
int Cornell(const Ecg& ecg) {
    return ecg.R(KX_LEAD_AVL) + ecg.Depth(KX_LEAD_V3);
}

bool HasLeftVoltage(const Ecg& ecg) {
    return SokolowLyon(ecg) >= 3500 || Cornell(ecg) > 2800;
}

// AHA V: ST depressed and T inverted in the leads that look at the left ventricle.
bool HasLeftStrain(const Ecg& ecg) {
    const auto isStrained = [&ecg](int lead) {
        return ecg.T(lead) <= -100 && ecg.St(lead, 0) < 0 && ecg.R(lead) > ecg.S(lead);
    };
    return HasLeftVoltage(ecg) && (isStrained(KX_LEAD_V5) || isStrained(KX_LEAD_V6));
}

// AHA V: R larger than S in V1, R in V1 and S in V5 or V6 above 1.05 mV together, and the axis to the right.
bool HasRightHypertrophy(const Ecg& ecg) {
    const int r = ecg.R(KX_LEAD_V1);
    const int s = std::max(ecg.S(KX_LEAD_V5), ecg.S(KX_LEAD_V6));
    return ecg.Set().qrsAxis > 90 && r > ecg.S(KX_LEAD_V1) && r + s > 1050 && !HasRightDelay(ecg);
}

// S. McGinn and P. D. White, J. Am. Med. Assoc. 104, 1473-1480, 1935; each wave at least 1.5 mm.
bool HasS1Q3T3(const Ecg& ecg) {
    return ecg.S(KX_LEAD_I) >= 150 && ecg.Q(KX_LEAD_III) >= 150 && ecg.T(KX_LEAD_III) < -50;
}

int TransitionLead(const Ecg& ecg) {
    for (int lead = KX_LEAD_V1; lead <= KX_LEAD_V6; ++lead) {
        if (ecg.HasQrs(lead) && ecg.R(lead) >= ecg.Depth(lead)) {
            return lead - KX_LEAD_V1 + 1;
        }
    }
    return 7;
}

}  // namespace kx::interp
