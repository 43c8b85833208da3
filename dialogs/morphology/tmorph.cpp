#include "dialogs/morphology/tmorph.h"

#include "dialogs/morphology/rules/wave_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{
    .source = "tmorph", .noEpisodeLine = 95, .initialisationLine = 199, .redetectionLine = 329};

constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_QRS_END, Read<&MeasurementSet::QrsOff>},
    {IDC_MORPH_T_END, Read<&MeasurementSet::TOff>},
    {IDC_MORPH_T1_AMPLITUDE, Read<&MeasurementSet::LeadAT1>},
    {IDC_MORPH_T2_AMPLITUDE, Read<&MeasurementSet::LeadAT2>},
    {IDC_MORPH_QT, Read<&MeasurementSet::QtInterval>},
    {IDC_MORPH_QRS_AXIS_OR_RR, Read<&MeasurementSet::RrInterval>},
    {IDC_MORPH_QTC, Read<&MeasurementSet::Qtc>},
    {IDC_MORPH_QTC_BAZETT, Read<&MeasurementSet::QtcBazett>},
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

}  // namespace kx
