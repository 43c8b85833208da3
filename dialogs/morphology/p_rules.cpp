#include "dialogs/morphology/p_rules.h"

#include <array>

namespace kx {
namespace {

constexpr std::int32_t kNewOnset = 50;    // ms
constexpr std::int32_t kNewOffset = 100;  // ms

constexpr std::array kMarkers{
    StoredMarker{&KxLeadMeasurements::pOnMarker, KX_MANUAL_LEAD_P_ON},
    StoredMarker{&KxLeadMeasurements::pPrimeOnMarker, KX_MANUAL_LEAD_P_PRIME_ON},
    StoredMarker{&KxLeadMeasurements::pOffMarker, KX_MANUAL_LEAD_P_OFF},
};

}  // namespace

constinit const MarkerLayout kPLayout{kMarkers, &KxLeadMeasurements::markerFlags};

void ApplyPMarkers(MarkerEdit& edit) {
    for (const WaveMarker marker : {kWaveOn, kWavePrimeOn, kWaveOff}) {
        if (edit.IsChanged(marker)) {
            LimitWaveMarker(edit, marker);
            edit.Store(marker);
            edit.redetection.Redetect();
        }
    }
}

void ApplyPWaveBox(MarkerEdit& edit, bool absent) {
    ApplyWaveBox(edit, absent, kNewOnset, kNewOffset);
}

}  // namespace kx
