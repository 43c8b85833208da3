#include "dialogs/morphology/rules/wave_rules.h"

#include <array>

namespace kx {
namespace {

constexpr std::int32_t kGap = 5;               // ms between neighbours
constexpr std::int32_t kShortestToSplit = 10;  // ms

constexpr std::array kAllMarkers{kWaveOn, kWavePrimeOn, kWaveOff};

void LimitOnset(MarkerEdit& edit) {
    if (edit.Current(kWaveOn) >= edit.Current(kWaveOff)) {
        edit.Set(kWaveOn, edit.Current(kWaveOff) - kGap);
    }
    if (edit.Current(kWavePrimeOn) > 0 && edit.Current(kWaveOn) >= edit.Current(kWavePrimeOn)) {
        edit.Set(kWaveOn, edit.Current(kWavePrimeOn) - kGap);
    }
}

void LimitSecondOnset(MarkerEdit& edit) {
    if (edit.Current(kWavePrimeOn) >= edit.Current(kWaveOff)) {
        edit.Set(kWavePrimeOn, edit.Current(kWaveOff) - kGap);
    }
    if (edit.Current(kWaveOn) >= edit.Current(kWavePrimeOn)) {
        edit.Set(kWavePrimeOn, edit.Current(kWaveOn) + kGap);
    }
}

void LimitOffset(MarkerEdit& edit) {
    const std::int32_t second = edit.Current(kWavePrimeOn);
    if (second > 0 && second >= edit.Current(kWaveOff)) {
        edit.Set(kWaveOff, second + kGap);
    }
    if (second == 0 && edit.Current(kWaveOn) >= edit.Current(kWaveOff)) {
        edit.Set(kWaveOff, edit.Current(kWaveOn) + kGap);
    }
}

void Limit(MarkerEdit& edit, WaveMarker marker) {
    switch (marker) {
        case kWaveOn:
            LimitOnset(edit);
            break;
        case kWavePrimeOn:
            LimitSecondOnset(edit);
            break;
        case kWaveOff:
            LimitOffset(edit);
            break;
    }
}

void ApplyWaveBox(MarkerEdit& edit, bool absent, std::int32_t onset, std::int32_t offset) {
    edit.Set(kWaveOn, absent ? 0 : onset);
    edit.Set(kWavePrimeOn, 0);
    edit.Set(kWaveOff, absent ? 0 : offset);
    for (const WaveMarker marker : kAllMarkers) {
        edit.Store(marker);
    }
    edit.redetection.Redetect();
}

}  // namespace

void ApplyPMarkers(MarkerEdit& edit) {
    for (const WaveMarker marker : kAllMarkers) {
        if (edit.IsChanged(marker)) {
            Limit(edit, marker);
            edit.Store(marker);
            edit.redetection.Redetect();
        }
    }
}

void ApplyTMarkers(MarkerEdit& edit) {
    bool changed = false;
    for (const WaveMarker marker : kAllMarkers) {
        if (edit.IsChanged(marker)) {
            Limit(edit, marker);
            edit.Store(marker);
            changed = true;
        }
    }
    if (changed) {
        edit.redetection.Redetect();
    }
}

void ApplyPWaveBox(MarkerEdit& edit, bool absent) {
    constexpr std::int32_t kNewOnset = 50;    // ms
    constexpr std::int32_t kNewOffset = 100;  // ms
    ApplyWaveBox(edit, absent, kNewOnset, kNewOffset);
}

void ApplyTWaveBox(MarkerEdit& edit, bool absent) {
    constexpr std::int32_t kNewOnset = 450;   // ms
    constexpr std::int32_t kNewOffset = 500;  // ms
    ApplyWaveBox(edit, absent, kNewOnset, kNewOffset);
}

bool ApplySecondComponentBox(MarkerEdit& edit, bool absent) {
    if (!absent && edit.Current(kWaveOn) + kShortestToSplit > edit.Current(kWaveOff)) {
        return false;
    }
    edit.Set(kWavePrimeOn, absent ? 0 : (edit.Current(kWaveOn) + edit.Current(kWaveOff)) / 2);
    edit.Store(kWavePrimeOn);
    edit.redetection.Redetect();
    return true;
}

}  // namespace kx
