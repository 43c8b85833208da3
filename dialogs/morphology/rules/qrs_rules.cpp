#include "dialogs/morphology/rules/qrs_rules.h"

namespace kx {
namespace {

constexpr std::int32_t kGap = 5;           // ms between neighbours
constexpr std::int32_t kInsertGap = 10;    // ms behind the predecessor of a new component
constexpr std::int32_t kFirstPlace = 200;  // ms, for a component without neighbours
constexpr std::int32_t kRoomForQ = 11;     // ms before the R onset that a new Q onset needs

constexpr std::uint16_t kComponentFlags = KX_MANUAL_LEAD_Q_ON | KX_MANUAL_LEAD_R_ON | KX_MANUAL_LEAD_S_ON |
                                          KX_MANUAL_LEAD_R_PRIME_ON | KX_MANUAL_LEAD_S_PRIME_ON;

void StoreAndMeasure(MarkerEdit& edit, std::size_t slot) {
    edit.store.Write(slot, edit.fields[slot]);
    edit.store.SetManual(kComponentFlags);
    edit.redetection.Redetect();
}

// Whether `slot` stands less than the gap before `later`, or behind it.
bool Touches(const MarkerEdit& edit, std::size_t slot, std::size_t later) {
    return edit.Current(slot) + kGap >= edit.Current(later);
}

void PushBehind(MarkerEdit& edit, std::size_t slot, std::size_t earlier) {
    edit.Set(slot, edit.Current(earlier) + kGap);
}

// Holds a component before its successor, or before the QRS offset when there is no successor or it does not
// matter.
void KeepBefore(MarkerEdit& edit, std::size_t slot, std::size_t successor) {
    if (edit.Current(successor) > 0 && Touches(edit, slot, successor)) {
        edit.Set(slot, edit.Current(successor) - kGap);
    } else if (Touches(edit, slot, kQrsOff)) {
        edit.Set(slot, edit.Current(kQrsOff) - kGap);
    }
}

void LimitComponent(MarkerEdit& edit, std::size_t slot) {
    // Only an absent Q wave does not bound its successor; R, S and R' bound theirs even at 0.
    const bool bounded = slot != kQOn && (slot != kROn || edit.Current(kQOn) > 0);
    if (bounded && Touches(edit, slot - 1, slot)) {
        PushBehind(edit, slot, slot - 1);
    }
    KeepBefore(edit, slot, slot + 1);
}

// The offset goes behind the latest component that it meets. An R' that pushes it does not end the search:
// the S wave, the R wave and the Q wave may still lie behind R'.
void LimitOffset(MarkerEdit& edit) {
    const auto meets = [&edit](QrsMarker component) {
        return edit.Current(component) != 0 && Touches(edit, component, kQrsOff);
    };
    if (meets(kSPrimeOn)) {
        PushBehind(edit, kQrsOff, kSPrimeOn);
    } else if (meets(kRPrimeOn)) {
        PushBehind(edit, kQrsOff, kRPrimeOn);
    }
    if (meets(kSOn)) {
        PushBehind(edit, kQrsOff, kSOn);
    } else if (meets(kROn)) {
        PushBehind(edit, kQrsOff, kROn);
    } else if (Touches(edit, kQOn, kQrsOff)) {
        PushBehind(edit, kQrsOff, kQOn);
    }
}

bool Remove(MarkerEdit& edit, QrsMarker component) {
    switch (component) {
        case kQOn:
            if (edit.Current(kROn) == 0) {
                return false;
            }
            break;
        case kROn:
            if (edit.Current(kQOn) == 0) {
                return false;
            }
            break;
        case kSOn:
        case kRPrimeOn:
            if (edit.Current(component + 1) != 0) {
                return false;
            }
            break;
        default:
            break;
    }
    edit.Set(component, 0);
    StoreAndMeasure(edit, component);
    return true;
}

void MoveOffsetBehind(MarkerEdit& edit, QrsMarker component) {
    if (edit.Current(kQrsOff) <= edit.Current(component)) {
        edit.Set(kQrsOff, edit.Current(component) + kInsertGap);
    }
}

bool Insert(MarkerEdit& edit, QrsMarker component) {
    if (component == kQOn) {
        const std::int32_t r = edit.Current(kROn);
        if (r >= kRoomForQ) {
            edit.Set(kQOn, r - kGap);
            MoveOffsetBehind(edit, kQOn);
        } else if (r > 0) {
            return false;
        } else {
            edit.Set(kQOn, kFirstPlace);
        }
    } else if (component == kROn) {
        const std::int32_t q = edit.Current(kQOn);
        edit.Set(kROn, q != 0 ? q + kInsertGap : kFirstPlace);
        MoveOffsetBehind(edit, kROn);
    } else {
        const std::int32_t predecessor = edit.Current(component - 1);
        if (predecessor == 0) {
            return false;
        }
        edit.Set(component, predecessor + kInsertGap);
    }
    StoreAndMeasure(edit, component);
    return true;
}

}  // namespace

void ApplyQrsMarkers(MarkerEdit& edit) {
    for (std::size_t slot = kQOn; slot <= kQrsOff; ++slot) {
        if (!edit.IsChanged(slot)) {
            continue;
        }
        if (slot == kQrsOff) {
            LimitOffset(edit);
        } else {
            LimitComponent(edit, slot);
        }
        StoreAndMeasure(edit, slot);
    }
}

bool ApplyQrsWaveBox(MarkerEdit& edit, QrsMarker component, bool absent) {
    return absent ? Remove(edit, component) : Insert(edit, component);
}

}  // namespace kx
