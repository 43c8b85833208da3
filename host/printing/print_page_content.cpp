#include "host/printing/print_page_content.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "host/frame/patient_strip.h"
#include "host/windows/text_conversion.h"
#include "lib/dbclient/record_text.h"
#include "lib/measurement_table.h"

namespace kxhost {
namespace {

constexpr const wchar_t* kMissing = L"...";

// A fiducial point: its name as in the panes, where it stands and which flag says that a reviewer placed it.
struct MarkerRow {
    const wchar_t* name;
    std::uint16_t KxLeadMeasurements::*ms;
    unsigned flag;
};

using Block = KxLeadMeasurements;

constexpr MarkerRow kGlobalMarkers[] = {
    {L"Pon", &Block::pOn, KX_MANUAL_P_ON},       {L"Poff", &Block::pOff, KX_MANUAL_P_OFF},
    {L"QRSon", &Block::qrsOn, KX_MANUAL_QRS_ON}, {L"QRSoff", &Block::qrsOff, KX_MANUAL_QRS_OFF},
    {L"Toff", &Block::tOff, KX_MANUAL_T_OFF},
};

constexpr MarkerRow kLeadMarkers[] = {
    {L"Pon", &Block::pOnMarker, KX_MANUAL_LEAD_P_ON},
    {L"P'on", &Block::pPrimeOnMarker, KX_MANUAL_LEAD_P_PRIME_ON},
    {L"Poff", &Block::pOffMarker, KX_MANUAL_LEAD_P_OFF},
    {L"Qon", &Block::qOnMarker, KX_MANUAL_LEAD_Q_ON},
    {L"Ron", &Block::rOnMarker, KX_MANUAL_LEAD_R_ON},
    {L"Son", &Block::sOnMarker, KX_MANUAL_LEAD_S_ON},
    {L"R'on", &Block::rPrimeOnMarker, KX_MANUAL_LEAD_R_PRIME_ON},
    {L"S'on", &Block::sPrimeOnMarker, KX_MANUAL_LEAD_S_PRIME_ON},
    {L"QRSoff", &Block::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
    {L"Ton", &Block::tOnMarker, KX_MANUAL_LEAD_T_ON},
    {L"T'on", &Block::tPrimeOnMarker, KX_MANUAL_LEAD_T_PRIME_ON},
    {L"Toff", &Block::tOffMarker, KX_MANUAL_LEAD_T_OFF},
};

struct AmplitudeRow {
    const wchar_t* name;
    std::int16_t KxLeadMeasurements::*microvolts;
};

constexpr AmplitudeRow kAmplitudes[] = {
    {L"P", &Block::aP1},  {L"P'", &Block::aP2}, {L"Q", &Block::aQ},  {L"R", &Block::aR},   {L"S", &Block::aS},
    {L"R'", &Block::aR1}, {L"S'", &Block::aS1}, {L"T", &Block::aT1}, {L"T'", &Block::aT2},
};

std::vector<PrintedMarker> Markers(const KxLeadMeasurements& block, unsigned flags,
                                   std::span<const MarkerRow> rows) {
    std::vector<PrintedMarker> markers;
    for (const MarkerRow& row : rows) {
        if (block.*row.ms != 0)
            markers.push_back({row.name, block.*row.ms, (flags & row.flag) != 0});
    }
    return markers;
}

void DescribeLead(const KxLeadMeasurements& block, PrintedPage& page) {
    for (const AmplitudeRow& row : kAmplitudes) {
        const int value = block.*row.microvolts;
        page.leadValues.push_back({row.name, value == 0 ? kMissing : std::to_wstring(value) + L" µV"});
    }
    const unsigned deflection = block.intrinsicoidDeflection;
    page.leadValues.push_back(
        {L"Deflessione intrinsecoide", deflection == 0 ? kMissing : std::to_wstring(deflection) + L" ms"});
    // At the J point and 60 ms behind it; a level of 0 is a level.
    page.leadValues.push_back({L"ST a J", std::to_wstring(block.stLevel[0]) + L" µV"});
    page.leadValues.push_back({L"ST a J + 60 ms", std::to_wstring(block.stLevel[6]) + L" µV"});
}

void DescribeMeasurements(const KxMeasurementSet& set, unsigned lead, PrintedPage& page) {
    if (set.measured == 0)
        return;
    page.globalMarkers = Markers(set.leads[0], set.leads[0].globalManualFlags, kGlobalMarkers);
    page.leadMarkers = Markers(set.leads[lead], set.leads[lead].markerFlags, kLeadMarkers);
    DescribeLead(set.leads[lead], page);
}

void TakeWaveform(const kx::EpisodeRecord& episode, unsigned lead, PrintedPage& page) {
    constexpr double kNvPerMicrovolt = 1000;
    const std::int16_t* samples = episode.Samples(lead);
    if (samples == nullptr || episode.SampleRate() == 0)
        return;
    page.samplesPerMs = episode.SampleRate() / 1000.0;
    for (std::uint32_t i = 0; i < episode.SamplesPerLead(); ++i)
        page.microvolts.push_back(samples[i] * static_cast<double>(episode.ResolutionNv()) / kNvPerMicrovolt);
}

std::wstring Statement(const KxTestRecord& test) {
    std::wstring text = FromRecordText(kx::FieldView(test.interpretationText));
    std::erase(text, L'\r');
    while (!text.empty() && (text.back() == L'\n' || text.back() == L' '))
        text.pop_back();
    return text;
}

std::wstring ReportState(const KxTestRecord& test) {
    std::wstring text = ReportStateText(test.reportState);
    const std::string_view author = test.reportState == KX_REPORT_CONFIRMED  ? kx::FieldView(test.confirmedBy)
                                    : test.reportState == KX_REPORT_OVERREAD ? kx::FieldView(test.overreadBy)
                                                                             : kx::FieldView(test.originalBy);
    if (!author.empty())
        text += L", " + FromRecordText(author);
    return text;
}

}  // namespace

PrintedPage DescribePage(const kx::TestRecord& test, unsigned lead) {
    const kx::EpisodeRecord& episode = *test.Episode(0);
    const PatientTexts texts = DescribePatient(test, &episode.measurements);
    PrintedPage page;
    page.patient = texts.name;
    page.details = texts.details;
    page.reportState = ReportState(test);
    page.lead = FromRecordText(kx::StandardLeadName(lead));
    for (const PatientTexts::Measurement& measurement : texts.measurements)
        page.globalValues.push_back({measurement.label, measurement.value});
    DescribeMeasurements(episode.measurements, lead, page);
    TakeWaveform(episode, lead, page);
    page.statement = Statement(test);
    return page;
}

}  // namespace kxhost
