// Criteria of infarction and ischemia: Q waves, ST segment, T wave.
#include <algorithm>
#include <array>
#include <initializer_list>

#include "suite/kxinterp/criteria.h"

namespace kx::interp {

namespace {

// Leads that look at neighbouring parts of the heart, in this order. The limb leads of each plane stand in
// the order of their angles: -30, 0 and 60 degrees with the lateral chest leads, 60, 90 and 120 degrees
// below.
constexpr std::array kAnterior{KX_LEAD_V1, KX_LEAD_V2, KX_LEAD_V3, KX_LEAD_V4};
constexpr std::array kInferior{KX_LEAD_II, KX_LEAD_AVF, KX_LEAD_III};
constexpr std::array kLateral{KX_LEAD_AVL, KX_LEAD_I, KX_LEAD_V6, KX_LEAD_V5};
constexpr std::array kChest{KX_LEAD_V1, KX_LEAD_V2, KX_LEAD_V3, KX_LEAD_V4, KX_LEAD_V5, KX_LEAD_V6};

// The largest value of a region in which two neighbours have one; 0 without such a pair.
template <std::size_t N, class Value>
int LargestOfPairs(const std::array<decltype(KX_LEAD_I), N>& leads, Value value) {
    int largest = 0;
    for (std::size_t i = 1; i < N; ++i) {
        const int a = value(leads[i - 1]);
        const int b = value(leads[i]);
        if (a > 0 && b > 0) {
            largest = std::max({largest, a, b});
        }
    }
    return largest;
}

// UDMI: any Q wave of more than 20 ms or QS in V2 and V3; elsewhere Q of 30 ms and 1 mm, or QS. Outside V1 to
// V3, where small septal Q waves are normal, also a quarter of R (H. Blackburn et al., the Minnesota Code,
// Circulation 21, 1160-1175, 1960, code 1-1).
bool HasInfarctQ(const Ecg& ecg, int lead) {
    const int q = ecg.Q(lead);
    if (lead == KX_LEAD_V2 || lead == KX_LEAD_V3) {
        return ecg.IsQs(lead) || (q >= 50 && ecg.QDuration(lead) > 20);
    }
    return q >= 100 && (ecg.IsQs(lead) || (ecg.QDuration(lead) >= 30 && 4 * q >= ecg.R(lead)));
}

// UDMI: 2 mm in V2 and V3 (men from 40 years on), 1 mm elsewhere, at the J point. That it is still there a
// little later keeps the end of a broad complex from being taken for it.
int Elevation(const Ecg& ecg, int lead) {
    const int limit = lead == KX_LEAD_V2 || lead == KX_LEAD_V3 ? 200 : 100;
    const int level = ecg.St(lead, 0);
    return level >= limit && ecg.St(lead, 40) >= limit / 2 ? level : 0;
}

// UDMI: 0.5 mm, horizontal or downsloping.
int Depression(const Ecg& ecg, int lead) {
    const int level = ecg.St(lead, 0);
    const int later = ecg.St(lead, 60);
    return level <= -50 && later <= -50 && later <= level + 20 ? -level : 0;
}

// UDMI: T inverted by more than 1 mm where R is larger than S.
bool HasInvertedT(const Ecg& ecg, int lead) {
    return ecg.T(lead) < -100 && ecg.R(lead) > ecg.Depth(lead);
}

template <std::size_t N>
int RegionElevation(const Ecg& ecg, const std::array<decltype(KX_LEAD_I), N>& leads) {
    return LargestOfPairs(leads, [&ecg](int lead) { return Elevation(ecg, lead); });
}

// R in V1 and V2 of 40 ms and as large as S, with an upright T wave (UDMI); what else makes R large there is
// excluded.
bool HasPosteriorPattern(const Ecg& ecg) {
    const auto hasTallR = [&ecg](int lead) {
        return ecg.R(lead) > 0 && ecg.R(lead) >= ecg.Depth(lead) && ecg.RDuration(lead) >= 40 &&
               ecg.T(lead) > 0;
    };
    return hasTallR(KX_LEAD_V1) && hasTallR(KX_LEAD_V2) && !HasRightDelay(ecg) && ecg.Set().qrsAxis <= 90;
}

}  // namespace

Infarction InfarctionOf(const Ecg& ecg) {
    const auto q = [&ecg](int lead) { return HasInfarctQ(ecg, lead); };
    const bool inferior = q(KX_LEAD_AVF) && (q(KX_LEAD_II) || q(KX_LEAD_III));
    const bool anterior = q(KX_LEAD_V4) && (q(KX_LEAD_V3) || q(KX_LEAD_V5));
    // Left hypertrophy takes the R waves of V1 to V3, too (AHA VI).
    const bool septal = q(KX_LEAD_V2) && (q(KX_LEAD_V1) || q(KX_LEAD_V3)) && !HasLeftVoltage(ecg);
    const bool lateral =
        (q(KX_LEAD_I) && (q(KX_LEAD_AVL) || q(KX_LEAD_V6))) || (q(KX_LEAD_V5) && q(KX_LEAD_V6));
    return {septal, anterior, lateral, inferior, HasPosteriorPattern(ecg)};
}

int AnteriorElevation(const Ecg& ecg) {
    return RegionElevation(ecg, kAnterior);
}

int InferiorElevation(const Ecg& ecg) {
    return RegionElevation(ecg, kInferior);
}

int LateralElevation(const Ecg& ecg) {
    return RegionElevation(ecg, kLateral);
}

// P. W. Macfarlane et al., "The early repolarization pattern", J. Am. Coll. Cardiol. 66, 470-477, 2015, and
// L. E. Ginzton and M. M. Laks, Circulation 65, 1004-1009, 1982: a small elevation in front or at the side of
// a narrow complex, T upright and at least four times as high, and no lead that mirrors it.
bool IsEarlyRepolarisation(const Ecg& ecg) {
    if (ecg.IsBroad()) {
        return false;
    }
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_V6; ++lead) {
        if (lead == KX_LEAD_AVR) {
            continue;
        }
        const int level = Elevation(ecg, lead);
        const bool mirrors = lead != KX_LEAD_V1 && ecg.St(lead, 0) <= -50;
        if (mirrors || level >= 300 || ecg.T(lead) < 4 * level || (level > 0 && HasInfarctQ(ecg, lead))) {
            return false;
        }
    }
    return true;
}

int StDepression(const Ecg& ecg) {
    const auto depression = [&ecg](int lead) {
        const bool belongsToBlock = HasRightDelay(ecg) && lead >= KX_LEAD_V1 && lead <= KX_LEAD_V3;
        return belongsToBlock ? 0 : Depression(ecg, lead);
    };
    return std::max({LargestOfPairs(kChest, depression), LargestOfPairs(kInferior, depression),
                     LargestOfPairs(kLateral, depression)});
}

// In V1 and V2 an inverted T wave may be normal, and behind a right bundle branch block up to V3.
bool HasAnteriorTInversion(const Ecg& ecg) {
    const auto inverted = [&ecg](int lead) { return ecg.T(lead) < -100; };
    return inverted(KX_LEAD_V4) && (inverted(KX_LEAD_V5) || (inverted(KX_LEAD_V3) && !HasRightDelay(ecg)));
}

bool HasInferiorTInversion(const Ecg& ecg) {
    return HasInvertedT(ecg, KX_LEAD_AVF) &&
           (HasInvertedT(ecg, KX_LEAD_II) || HasInvertedT(ecg, KX_LEAD_III));
}

bool HasLateralTInversion(const Ecg& ecg) {
    return (HasInvertedT(ecg, KX_LEAD_I) &&
            (HasInvertedT(ecg, KX_LEAD_AVL) || HasInvertedT(ecg, KX_LEAD_V6))) ||
           (HasInvertedT(ecg, KX_LEAD_V5) && HasInvertedT(ecg, KX_LEAD_V6));
}

// AHA IV: a T wave of less than a tenth of R, or slightly inverted, where it should be upright.
bool HasFlatT(const Ecg& ecg) {
    const auto isFlat = [&ecg](int lead) {
        const int r = ecg.R(lead);
        return r >= 300 && r > ecg.Depth(lead) && 10 * ecg.T(lead) < r;
    };
    int flat = 0;
    for (const int lead : {KX_LEAD_I, KX_LEAD_II, KX_LEAD_V4, KX_LEAD_V5, KX_LEAD_V6}) {
        flat += isFlat(lead);
    }
    return flat >= 2;
}

// AHA IV: not by Bazett where another formula is at hand; a broad complex lengthens QT by as much as it is
// broader than 100 ms.
int CorrectedQt(const Ecg& ecg) {
    const KxMeasurementSet& set = ecg.Set();
    const int qtc = set.qtc != 0 ? set.qtc : set.qtcBazett;
    const int excess = ecg.IsBroad() ? ecg.TypicalQrsDuration() - 100 : 0;
    return qtc > excess ? qtc - excess : 0;
}

}  // namespace kx::interp
