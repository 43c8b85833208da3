#include "dialogs/morphology/genmorph.h"

#include "dialogs/morphology/rules/general_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{"genmorph", 92, 186, 311};

using Set = MeasurementSet;

// The values are what 16-bit words hold, so a signed number shows the unsigned ones as well.
constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_PR,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.PrInterval()); }},
    {IDC_MORPH_P_DURATION,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.PDuration()); }},
    {IDC_MORPH_QRS_DURATION,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QrsDuration()); }},
    {IDC_MORPH_QT,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QtInterval()); }},
    {IDC_MORPH_HEART_RATE, [](const Set& set, int) -> std::int32_t { return set.HeartRate(); }},
    {IDC_MORPH_QRS_AXIS_OR_RR, [](const Set& set, int) -> std::int32_t { return set.QrsAxis(); }},
    {IDC_MORPH_QTC, [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.Qtc()); }},
    {IDC_MORPH_QTC_BAZETT,
     [](const Set& set, int) -> std::int32_t { return static_cast<std::int32_t>(set.QtcBazett()); }},
};

constexpr MarkerRow kMarkers[] = {
    {IDB_BADGE_P_ON, IDC_MORPH_GLOBAL_P_ON, IDC_MORPH_GLOBAL_P_ON_MANUAL},
    {IDB_BADGE_P_OFF, IDC_MORPH_P_OFF, IDC_MORPH_P_OFF_MANUAL},
    {IDB_BADGE_QRS_ON, IDC_MORPH_QRS_ON, IDC_MORPH_QRS_ON_MANUAL},
    {IDB_BADGE_QRS_OFF, IDC_MORPH_QRS_OFF, IDC_MORPH_QRS_OFF_MANUAL},
    {IDB_BADGE_T_OFF, IDC_MORPH_T_OFF, IDC_MORPH_T_OFF_MANUAL},
};

constexpr WaveBoxRow kWaveBoxes[] = {
    {IDC_MORPH_NO_P, kGlobalPOff},
};

void ApplyMarkers(MarkerEdit& edit, bool noPWave) {
    ApplyGeneralMarkers(edit, noPWave);
}

bool ApplyBox(MarkerEdit& edit, std::size_t, bool absent) {
    ApplyGeneralWaveBox(edit, absent);
    return true;
}

const MorphTable kTable{
    .templateId = IDD_GENERAL_MORPH,
    .reports = kReports,
    .gain = 50,
    .speed = 100,
    .highEdge = 16000,
    .horizontalPosition = 50,
    .hidesDerivative = false,
    .measurements = kMeasurements,
    .markers = kMarkers,
    .waveBoxes = kWaveBoxes,
    .layout = kGeneralLayout,
    .isGlobal = true,
    .applyMarkers = ApplyMarkers,
    .applyWaveBox = ApplyBox,
};

}  // namespace

GeneralMorphDialog::GeneralMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                                       SystemServices* services)
    : MorphDialog(library, parent, test, services, kTable) {}

void GeneralMorphDialog::OnDestroy() {
    Release();
    Dialog::OnDestroy();
    delete this;
}

}  // namespace kx
