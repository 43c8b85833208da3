#include "dialogs/morphology/t_rules.h"

#include <array>

namespace kx {
namespace {

constexpr std::int32_t kNewOnset = 450;   // ms
constexpr std::int32_t kNewOffset = 500;  // ms

constexpr std::array kMarkers{
    StoredMarker{&KxLeadMeasurements::tOnMarker, KX_MANUAL_LEAD_T_ON},
    StoredMarker{&KxLeadMeasurements::tPrimeOnMarker, KX_MANUAL_LEAD_T_PRIME_ON},
    StoredMarker{&KxLeadMeasurements::tOffMarker, KX_MANUAL_LEAD_T_OFF},
};

}  // namespace

constinit const MarkerLayout kTLayout{kMarkers, &KxLeadMeasurements::markerFlags};

void ApplyTMarkers(MarkerEdit& edit) {
    bool changed = false;
    for (const WaveMarker marker : {kWaveOn, kWavePrimeOn, kWaveOff}) {
        if (edit.IsChanged(marker)) {
            LimitWaveMarker(edit, marker);
            edit.Store(marker);
            changed = true;
        }
    }
    if (changed) {
        edit.redetection.Redetect();
    }
}

void ApplyTWaveBox(MarkerEdit& edit, bool absent) {
    ApplyWaveBox(edit, absent, kNewOnset, kNewOffset);
}

}  // namespace kx
