#include "dialogs/morphology/tmorph.h"

#include "dialogs/morphology/rules/wave_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{"tmorph", 95, 199, 329};

using Set = MeasurementSet;

// The values are what 16-bit words hold, so a signed number shows the unsigned ones as well.
constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_QRS_END,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QrsOff()); }},
    {IDC_MORPH_T_END,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.TOff()); }},
    {IDC_MORPH_T1_AMPLITUDE, [](const Set& set, int lead) -> std::int32_t { return set.LeadAT1(lead); }},
    {IDC_MORPH_T2_AMPLITUDE, [](const Set& set, int lead) -> std::int32_t { return set.LeadAT2(lead); }},
    {IDC_MORPH_QT,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QtInterval()); }},
    {IDC_MORPH_QRS_AXIS_OR_RR,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.RrInterval()); }},
    {IDC_MORPH_QTC, [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.Qtc()); }},
    {IDC_MORPH_QTC_BAZETT,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QtcBazett()); }},
};

constexpr MarkerRow kMarkers[] = {
    {IDB_BADGE_T_ON_LEAD, IDC_MORPH_T_ON, IDC_MORPH_T_ON_MANUAL},
    {IDB_BADGE_T_PRIME_ON_LEAD, IDC_MORPH_T_PRIME_ON, IDC_MORPH_T_PRIME_ON_MANUAL},
    {IDB_BADGE_OFF_LEAD, IDC_MORPH_T_OFF, IDC_MORPH_T_OFF_MANUAL},
};

constexpr WaveBoxRow kWaveBoxes[] = {
    {IDC_MORPH_NO_T, kWaveOff},
    {IDC_MORPH_NO_T_PRIME, kWavePrimeOn},
};

void ApplyMarkers(MarkerEdit& edit, bool) {
    ApplyTMarkers(edit);
}

bool ApplyBox(MarkerEdit& edit, std::size_t box, bool absent) {
    if (kWaveBoxes[box].marker == kWavePrimeOn) {
        return ApplySecondComponentBox(edit, absent);
    }
    ApplyTWaveBox(edit, absent);
    return true;
}

const MorphTable kTable{
    .templateId = IDD_T_MORPH,
    .reports = kReports,
    .gain = 100,
    .speed = 250,
    .highEdge = 16000,
    .horizontalPosition = 10,
    .hidesDerivative = false,
    .measurements = kMeasurements,
    .markers = kMarkers,
    .waveBoxes = kWaveBoxes,
    .layout = kTLayout,
    .isGlobal = false,
    .applyMarkers = ApplyMarkers,
    .applyWaveBox = ApplyBox,
};

}  // namespace

TMorphDialog::TMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                           SystemServices* services)
    : MorphDialog(library, parent, test, services, kTable) {}

void TMorphDialog::OnDestroy() {
    Release();
    Dialog::OnDestroy();
    delete this;
}

}  // namespace kx
