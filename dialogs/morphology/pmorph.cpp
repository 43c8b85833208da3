#include "dialogs/morphology/pmorph.h"

#include "dialogs/morphology/rules/wave_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{"pmorph", 94, 198, 327};

using Set = MeasurementSet;

// The values are what 16-bit words hold, so a signed number shows the unsigned ones as well.
constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_QRS_START,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QrsOn()); }},
    {IDC_MORPH_T_END,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.TOff()); }},
    {IDC_MORPH_P_START,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.POn()); }},
    {IDC_MORPH_P_END,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.POff()); }},
    {IDC_MORPH_P1_AMPLITUDE, [](const Set& set, int lead) -> std::int32_t { return set.LeadAP1(lead); }},
    {IDC_MORPH_P2_AMPLITUDE, [](const Set& set, int lead) -> std::int32_t { return set.LeadAP2(lead); }},
    {IDC_MORPH_PR,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.PrInterval()); }},
    {IDC_MORPH_QRS_AXIS_OR_RR,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.RrInterval()); }},
};

constexpr MarkerRow kMarkers[] = {
    {IDB_BADGE_P_ON_LEAD, IDC_MORPH_P_ON, IDC_MORPH_P_ON_MANUAL},
    {IDB_BADGE_P_PRIME_ON_LEAD, IDC_MORPH_P_PRIME_ON, IDC_MORPH_P_PRIME_ON_MANUAL},
    {IDB_BADGE_OFF_LEAD, IDC_MORPH_P_OFF, IDC_MORPH_P_OFF_MANUAL},
};

constexpr WaveBoxRow kWaveBoxes[] = {
    {IDC_MORPH_NO_P, kWaveOff},
    {IDC_MORPH_NO_P_PRIME, kWavePrimeOn},
};

void ApplyMarkers(MarkerEdit& edit, bool) {
    ApplyPMarkers(edit);
}

bool ApplyBox(MarkerEdit& edit, std::size_t box, bool absent) {
    if (kWaveBoxes[box].marker == kWavePrimeOn) {
        return ApplySecondComponentBox(edit, absent);
    }
    ApplyPWaveBox(edit, absent);
    return true;
}

const MorphTable kTable{
    .templateId = IDD_P_MORPH,
    .reports = kReports,
    .gain = 100,
    .speed = 250,
    .highEdge = 40000,
    .horizontalPosition = 10,
    .hidesDerivative = true,
    .measurements = kMeasurements,
    .markers = kMarkers,
    .waveBoxes = kWaveBoxes,
    .layout = kPLayout,
    .isGlobal = false,
    .applyMarkers = ApplyMarkers,
    .applyWaveBox = ApplyBox,
};

}  // namespace

PMorphDialog::PMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                           SystemServices* services)
    : MorphDialog(library, parent, test, services, kTable) {}

void PMorphDialog::OnDestroy() {
    Release();
    Dialog::OnDestroy();
    delete this;
}

}  // namespace kx
