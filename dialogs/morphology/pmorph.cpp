#include "dialogs/morphology/pmorph.h"

#include "dialogs/morphology/rules/wave_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{
    .source = "pmorph", .noEpisodeLine = 94, .initialisationLine = 198, .redetectionLine = 327};

constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_QRS_START, Read<&MeasurementSet::QrsOn>},
    {IDC_MORPH_T_END, Read<&MeasurementSet::TOff>},
    {IDC_MORPH_P_START, Read<&MeasurementSet::POn>},
    {IDC_MORPH_P_END, Read<&MeasurementSet::POff>},
    {IDC_MORPH_P1_AMPLITUDE, Read<&MeasurementSet::LeadAP1>},
    {IDC_MORPH_P2_AMPLITUDE, Read<&MeasurementSet::LeadAP2>},
    {IDC_MORPH_PR, Read<&MeasurementSet::PrInterval>},
    {IDC_MORPH_QRS_AXIS_OR_RR, Read<&MeasurementSet::RrInterval>},
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

}  // namespace kx
