// A kxanalyze.dll for tests: it counts its calls, keeps what it was given, and answers as a test says. Its
// measurements are made of the number of the call, so that a figure of an earlier call is seen to be one.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

#include "include/kxdialogs.h"
#include "tests/windows/morphology/spy_kxanalyze.h"

namespace {

std::uint32_t g_calls = 0;
bool g_fails = false;
bool g_hasAutomatic = false;
KxMeasurementSet g_automatic;
KxMeasurementSet g_input;

void TakeUnlessManual(std::uint16_t& marker, std::uint16_t automatic, int flags, int flag) {
    if ((flags & flag) == 0) {
        marker = automatic;
    }
}

void FindMarkers(KxLeadMeasurements& lead, const KxLeadMeasurements& found, int globalFlags) {
    TakeUnlessManual(lead.pOn, found.pOn, globalFlags, KX_MANUAL_P_ON);
    TakeUnlessManual(lead.pOff, found.pOff, globalFlags, KX_MANUAL_P_OFF);
    TakeUnlessManual(lead.qrsOn, found.qrsOn, globalFlags, KX_MANUAL_QRS_ON);
    TakeUnlessManual(lead.qrsOff, found.qrsOff, globalFlags, KX_MANUAL_QRS_OFF);
    TakeUnlessManual(lead.tOff, found.tOff, globalFlags, KX_MANUAL_T_OFF);
    const int flags = lead.markerFlags;
    TakeUnlessManual(lead.pOnMarker, found.pOnMarker, flags, KX_MANUAL_LEAD_P_ON);
    TakeUnlessManual(lead.pPrimeOnMarker, found.pPrimeOnMarker, flags, KX_MANUAL_LEAD_P_PRIME_ON);
    TakeUnlessManual(lead.pOffMarker, found.pOffMarker, flags, KX_MANUAL_LEAD_P_OFF);
    TakeUnlessManual(lead.qOnMarker, found.qOnMarker, flags, KX_MANUAL_LEAD_Q_ON);
    TakeUnlessManual(lead.rOnMarker, found.rOnMarker, flags, KX_MANUAL_LEAD_R_ON);
    TakeUnlessManual(lead.sOnMarker, found.sOnMarker, flags, KX_MANUAL_LEAD_S_ON);
    TakeUnlessManual(lead.rPrimeOnMarker, found.rPrimeOnMarker, flags, KX_MANUAL_LEAD_R_PRIME_ON);
    TakeUnlessManual(lead.sPrimeOnMarker, found.sPrimeOnMarker, flags, KX_MANUAL_LEAD_S_PRIME_ON);
    TakeUnlessManual(lead.qrsOffMarker, found.qrsOffMarker, flags, KX_MANUAL_LEAD_QRS_OFF);
    TakeUnlessManual(lead.tOnMarker, found.tOnMarker, flags, KX_MANUAL_LEAD_T_ON);
    TakeUnlessManual(lead.tPrimeOnMarker, found.tPrimeOnMarker, flags, KX_MANUAL_LEAD_T_PRIME_ON);
    TakeUnlessManual(lead.tOffMarker, found.tOffMarker, flags, KX_MANUAL_LEAD_T_OFF);
}

}  // namespace

extern "C" {

void __stdcall LIBSTART() {}
void __stdcall LIBSTOP() {}

std::uint32_t __stdcall UPDATEDETECTION(KxEpisodeRecord* episode) {
    ++g_calls;
    KxMeasurementSet& set = episode->measurements;
    g_input = set;
    if (g_fails) {
        return 0;
    }
    const std::uint16_t figure = kx::test::FigureOfCall(g_calls);
    for (std::uint16_t* value : {&set.pDuration, &set.prInterval, &set.qrsDuration, &set.qtInterval, &set.qtc,
                                 &set.qtcBazett, &set.rrInterval}) {
        *value = figure;
    }
    set.qrsAxis = static_cast<std::int16_t>(figure);
    const int globalFlags = set.leads[0].globalManualFlags;
    for (int i = 0; i < KX_MEASURED_LEADS; ++i) {
        KxLeadMeasurements& lead = set.leads[i];
        for (std::int16_t* value : {&lead.aP1, &lead.aP2, &lead.aQ, &lead.aR, &lead.aS, &lead.aR1, &lead.aS1,
                                    &lead.aT1, &lead.aT2}) {
            *value = static_cast<std::int16_t>(figure);
        }
        if (g_hasAutomatic) {
            FindMarkers(lead, g_automatic.leads[i], globalFlags);
        }
    }
    return 1;
}

std::uint32_t __stdcall SPY_CALLS() {
    return g_calls;
}
const KxMeasurementSet* __stdcall SPY_INPUT() {
    return &g_input;
}
void __stdcall SPY_FAIL(std::uint32_t fails) {
    g_fails = fails != 0;
}
void __stdcall SPY_AUTOMATIC(const KxMeasurementSet* set) {
    g_hasAutomatic = set != nullptr;
    if (set != nullptr) {
        g_automatic = *set;
    }
}

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}

}  // extern "C"
