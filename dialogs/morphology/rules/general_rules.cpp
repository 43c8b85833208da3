#include "dialogs/morphology/rules/general_rules.h"

namespace kx {
namespace {

constexpr std::int32_t kEarliestQrs = 20;  // ms
constexpr std::int32_t kQrsGap = 20;       // ms, where onset and offset would meet

bool RemovePWave(MarkerEdit& edit) {
    const bool changed = edit.store.Value(kGlobalPOn) > 0;
    for (const GlobalMarker marker : {kGlobalPOn, kGlobalPOff}) {
        edit.Set(marker, 0);
        edit.Store(marker);
    }
    return changed;
}

// Whether the beat is to be measured again.
bool ApplyPresence(MarkerEdit& edit, bool noPWave) {
    if (noPWave) {
        return RemovePWave(edit);
    }
    edit.store.ClearManual(KX_MANUAL_P_ON | KX_MANUAL_P_OFF);
    return true;
}

bool ApplyPWave(MarkerEdit& edit) {
    bool changed = false;
    if (edit.IsChanged(kGlobalPOn)) {
        if (edit.Current(kGlobalPOn) > edit.Current(kGlobalPOff)) {
            edit.Set(kGlobalPOn, edit.Current(kGlobalPOff));
        }
        edit.Store(kGlobalPOn);
        changed = true;
    }
    if (edit.IsChanged(kGlobalPOff)) {
        if (edit.Current(kGlobalPOff) < edit.Current(kGlobalPOn)) {
            edit.Set(kGlobalPOff, edit.Current(kGlobalPOn));
        }
        if (edit.Current(kGlobalPOff) > edit.Current(kGlobalQrsOn)) {
            edit.Set(kGlobalPOff, edit.Current(kGlobalQrsOn));
        }
        edit.Store(kGlobalPOff);
        changed = true;
    }
    return changed;
}

bool ApplyQrsAndT(MarkerEdit& edit) {
    bool changed = false;
    if (edit.IsChanged(kGlobalQrsOn)) {
        if (edit.Current(kGlobalQrsOn) < kEarliestQrs) {
            edit.Set(kGlobalQrsOn, kEarliestQrs);
        }
        if (edit.Current(kGlobalQrsOn) < edit.Current(kGlobalPOff)) {
            edit.Set(kGlobalQrsOn, edit.Current(kGlobalPOff));
        }
        if (edit.Current(kGlobalQrsOn) >= edit.Current(kGlobalQrsOff)) {
            edit.Set(kGlobalQrsOn, edit.Current(kGlobalQrsOff) - kQrsGap);
        }
        edit.Store(kGlobalQrsOn);
        changed = true;
    }
    if (edit.IsChanged(kGlobalQrsOff)) {
        if (edit.Current(kGlobalQrsOff) <= edit.Current(kGlobalQrsOn)) {
            edit.Set(kGlobalQrsOff, edit.Current(kGlobalQrsOn) + kQrsGap);
        }
        if (edit.Current(kGlobalQrsOff) > edit.Current(kGlobalTOff)) {
            edit.Set(kGlobalQrsOff, edit.Current(kGlobalTOff));
        }
        edit.Store(kGlobalQrsOff);
        changed = true;
    }
    if (edit.IsChanged(kGlobalTOff)) {
        if (edit.Current(kGlobalTOff) < edit.Current(kGlobalQrsOff)) {
            edit.Set(kGlobalTOff, edit.Current(kGlobalQrsOff));
        }
        edit.Store(kGlobalTOff);
        changed = true;
    }
    return changed;
}

}  // namespace

void ApplyGeneralMarkers(MarkerEdit& edit, bool noPWave) {
    const bool isAbsent = edit.store.Value(kGlobalPOff) == 0;
    bool changed = noPWave || isAbsent ? ApplyPresence(edit, noPWave) : ApplyPWave(edit);
    if (ApplyQrsAndT(edit)) {
        changed = true;
    }
    if (changed) {
        edit.redetection.Redetect();
    }
}

void ApplyGeneralWaveBox(MarkerEdit& edit, bool absent) {
    if ((absent || edit.store.Value(kGlobalPOff) == 0) && ApplyPresence(edit, absent)) {
        edit.redetection.Redetect();
    }
}

}  // namespace kx
