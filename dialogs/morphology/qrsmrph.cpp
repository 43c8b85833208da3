#include "dialogs/morphology/qrsmrph.h"

#include "dialogs/morphology/rules/qrs_rules.h"
#include "dialogs/resources/morphology_ids.h"
#include "dialogs/resources/picture_ids.h"

namespace kx {
namespace {

constexpr MorphReports kReports{
    .source = "qrsmrph", .noEpisodeLine = 96, .initialisationLine = 203, .redetectionLine = 402};

constexpr MeasurementRow kMeasurements[] = {
    {IDC_MORPH_QRS_START, Read<&MeasurementSet::QrsOn>},
    {IDC_MORPH_QRS_END, Read<&MeasurementSet::QrsOff>},
    {IDC_MORPH_Q_AMPLITUDE, Read<&MeasurementSet::LeadAQ>},
    {IDC_MORPH_R_AMPLITUDE, Read<&MeasurementSet::LeadAR>},
    {IDC_MORPH_S_AMPLITUDE, Read<&MeasurementSet::LeadAS>},
    {IDC_MORPH_R_PRIME_AMPLITUDE, Read<&MeasurementSet::LeadAR1>},
    {IDC_MORPH_S_PRIME_AMPLITUDE, Read<&MeasurementSet::LeadAS1>},
    {IDC_MORPH_QRS_DURATION, Read<&MeasurementSet::QrsDuration>},
};

constexpr MarkerRow kMarkers[] = {
    {IDB_BADGE_Q_ON_LEAD, IDC_MORPH_Q_ON, IDC_MORPH_Q_ON_MANUAL},
    {IDB_BADGE_R_ON_LEAD, IDC_MORPH_R_ON, IDC_MORPH_R_ON_MANUAL},
    {IDB_BADGE_S_ON_LEAD, IDC_MORPH_S_ON, IDC_MORPH_S_ON_MANUAL},
    {IDB_BADGE_R_PRIME_ON_LEAD, IDC_MORPH_R_PRIME_ON, IDC_MORPH_R_PRIME_ON_MANUAL},
    {IDB_BADGE_S_PRIME_ON_LEAD, IDC_MORPH_S_PRIME_ON, IDC_MORPH_S_PRIME_ON_MANUAL},
    {IDB_BADGE_OFF_LEAD, IDC_MORPH_QRS_OFF, IDC_MORPH_QRS_OFF_MANUAL},
};

constexpr WaveBoxRow kWaveBoxes[] = {
    {IDC_MORPH_NO_Q, kQOn},
    {IDC_MORPH_NO_R, kROn},
    {IDC_MORPH_NO_S, kSOn},
    {IDC_MORPH_NO_R_PRIME, kRPrimeOn},
    {IDC_MORPH_NO_S_PRIME, kSPrimeOn},
};

void ApplyMarkers(MarkerEdit& edit, bool) {
    ApplyQrsMarkers(edit);
}

bool ApplyBox(MarkerEdit& edit, std::size_t box, bool absent) {
    return ApplyQrsWaveBox(edit, static_cast<QrsMarker>(kWaveBoxes[box].marker), absent);
}

const MorphTable kTable{
    .templateId = IDD_QRS_MORPH,
    .reports = kReports,
    .gain = 100,
    .speed = 250,
    .highEdge = 16000,
    .horizontalPosition = 40,
    .hidesDerivative = false,
    .measurements = kMeasurements,
    .markers = kMarkers,
    .waveBoxes = kWaveBoxes,
    .layout = kQrsLayout,
    .isGlobal = false,
    .applyMarkers = ApplyMarkers,
    .applyWaveBox = ApplyBox,
};

}  // namespace

QrsMorphDialog::QrsMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                               SystemServices* services)
    : MorphDialog(library, parent, test, services, kTable) {}

}  // namespace kx
