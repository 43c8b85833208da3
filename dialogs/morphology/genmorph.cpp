#include "dialogs/morphology/genmorph.h"

#include "dialogs/morphology/rules/general_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{
    .source = "genmorph", .noEpisodeLine = 92, .initialisationLine = 186, .redetectionLine = 311};

constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_PR, Read<&MeasurementSet::PrInterval>},
    {IDC_MORPH_P_DURATION, Read<&MeasurementSet::PDuration>},
    {IDC_MORPH_QRS_DURATION, Read<&MeasurementSet::QrsDuration>},
    {IDC_MORPH_QT, Read<&MeasurementSet::QtInterval>},
    {IDC_MORPH_HEART_RATE, Read<&MeasurementSet::HeartRate>},
    {IDC_MORPH_QRS_AXIS_OR_RR, Read<&MeasurementSet::QrsAxis>},
    {IDC_MORPH_QTC, Read<&MeasurementSet::Qtc>},
    {IDC_MORPH_QTC_BAZETT, Read<&MeasurementSet::QtcBazett>},
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

}  // namespace kx
