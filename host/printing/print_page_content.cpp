#include "host/printing/print_page_content.h"

#include <span>
#include <string_view>

#include "host/frame/patient_strip.h"
#include "host/windows/text_conversion.h"
#include "lib/fiducial_markers.h"
#include "lib/measurement_table.h"
#include "lib/text_field.h"

namespace kxhost {
namespace {

constexpr const wchar_t* kMissing = L"...";

std::vector<PrintedMarker> Markers(const KxLeadMeasurements& block, unsigned flags,
                                   std::span<const kx::FiducialMarker> rows) {
    std::vector<PrintedMarker> markers;
    for (const kx::FiducialMarker& row : rows) {
        if (block.*row.ms != 0) {
            markers.push_back({FromRecordText(row.name), block.*row.ms, (flags & row.flag) != 0});
        }
    }
    return markers;
}

void DescribeLead(const KxLeadMeasurements& block, PrintedPage& page) {
    for (const kx::AmplitudeColumn& row : kx::kAmplitudeColumns) {
        const int value = block.*row.value;
        page.leadValues.push_back(
            {FromRecordText(row.wave), value == 0 ? kMissing : std::to_wstring(value) + L" µV"});
    }
    const unsigned deflection = block.intrinsicoidDeflection;
    page.leadValues.push_back(
        {L"Deflessione intrinsecoide", deflection == 0 ? kMissing : std::to_wstring(deflection) + L" ms"});
    // At the J point and 60 ms behind it; a level of 0 is a level.
    page.leadValues.push_back({L"ST a J", std::to_wstring(block.stLevel[0]) + L" µV"});
    page.leadValues.push_back({L"ST a J + 60 ms", std::to_wstring(block.stLevel[6]) + L" µV"});
}

void DescribeMeasurements(const KxMeasurementSet& set, unsigned lead, PrintedPage& page) {
    if (set.measured == 0) {
        return;
    }
    page.globalMarkers = Markers(set.leads[0], set.leads[0].globalManualFlags, kx::kGlobalMarkers);
    page.leadMarkers = Markers(set.leads[lead], set.leads[lead].markerFlags, kx::kLeadMarkers);
    DescribeLead(set.leads[lead], page);
}

void TakeWaveform(const kx::EpisodeRecord& episode, unsigned lead, PrintedPage& page) {
    constexpr double kNvPerMicrovolt = 1000;
    const std::int16_t* samples = episode.Samples(lead);
    if (samples == nullptr || episode.SampleRate() == 0) {
        return;
    }
    page.samplesPerMs = episode.SampleRate() / 1000.0;
    for (std::uint32_t i = 0; i < episode.SamplesPerLead(); ++i) {
        page.microvolts.push_back(samples[i] * static_cast<double>(episode.ResolutionNv()) / kNvPerMicrovolt);
    }
}

std::wstring Statement(const KxTestRecord& test) {
    std::wstring text = FromRecordText(kx::FieldView(test.interpretationText));
    std::erase(text, L'\r');
    while (!text.empty() && (text.back() == L'\n' || text.back() == L' ')) {
        text.pop_back();
    }
    return text;
}

std::wstring ReportState(const KxTestRecord& test) {
    std::wstring text = ReportStateText(test.reportState);
    const std::string_view author = test.reportState == KX_REPORT_CONFIRMED  ? kx::FieldView(test.confirmedBy)
                                    : test.reportState == KX_REPORT_OVERREAD ? kx::FieldView(test.overreadBy)
                                                                             : kx::FieldView(test.originalBy);
    if (!author.empty()) {
        text += L", " + FromRecordText(author);
    }
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
    for (const PatientTexts::Measurement& measurement : texts.measurements) {
        page.globalValues.push_back({measurement.label, measurement.value});
    }
    DescribeMeasurements(episode.measurements, lead, page);
    TakeWaveform(episode, lead, page);
    page.statement = Statement(test);
    return page;
}

}  // namespace kxhost
