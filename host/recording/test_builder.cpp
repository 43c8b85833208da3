#include "host/recording/test_builder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "host/recording/ecg_block.h"
#include "host/recording/record_text.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

constexpr std::uint32_t kResting = 2;      // testType
constexpr std::uint32_t kTwelveLeads = 0;  // leadConfiguration
constexpr char kOriginalAuthor[] = "Analisi automatica";

void FillDiagnoses(const Recording& recording, TestRecord& test) {
    std::string text;
    for (const std::string& diagnosis : recording.diagnoses) {
        text += (text.empty() ? "" : "\r\n") + ToRecordText(diagnosis);
    }
    const std::size_t length = std::min(text.size(), sizeof test.text332 - 1);
    std::memcpy(test.text332, text.data(), length);
    test.text332[length] = '\0';
}

void FillPatient(const Recording& recording, TestRecord& test) {
    const Patient& patient = recording.patient;
    test.SetPatientId(ToRecordText(patient.id).c_str());
    const std::string last = ToRecordText(patient.lastName), first = ToRecordText(patient.firstName),
                      middle = ToRecordText(patient.middleName);
    if (!(last + first + middle).empty()) {
        test.SetPatientName(first.c_str(), middle.c_str(), last.c_str());
    }
    if (patient.ageDays >= 0) {
        test.SetAgeDays(static_cast<std::uint16_t>(std::min(patient.ageDays, 65535)));
    }
    if (patient.birthDate.year != 0) {
        test.SetBirthDate(patient.birthDate);
    }
    if (patient.sex != Sex::kUnknown) {
        test.SetSex(patient.sex == Sex::kMale ? KX_SEX_MALE : KX_SEX_FEMALE);
    }
}

void FillDevice(const Recording& recording, TestRecord& test) {
    const Device& device = recording.device;
    test.SetDevice(ToRecordText(device.name).c_str(), ToRecordText(device.serial).c_str(),
                   ToRecordText(device.revision).c_str());
    test.SetMainsFrequency(static_cast<std::uint32_t>(recording.filters.mainsHz));
    test.SetArtifactFilter(recording.filters.artifact, false, false);
    test.SetBaselineFilter(recording.filters.baseline);
}

EpisodeRecord* AddBeat(TestRecord& test, const Recording& recording, const MedianBeat& beat) {
    EpisodeRecord* episode =
        test.AddEpisode(kTwelveLeads, kLeadCount, kMedianBeatSamples, kWorkingRate, kResolutionNv);
    if (!episode) {
        return nullptr;
    }
    for (std::uint32_t lead = 0; lead < kLeadCount; ++lead) {
        if (!episode->SetLeadSamples(lead, beat.leads[lead].data(), kMedianBeatSamples)) {
            test.ReleaseEpisodes();
            return nullptr;
        }
    }
    // The record derives all four or none: where some were recorded, the others are the reader's.
    const std::array<bool, kLeadCount>& derived = recording.derived;
    if (derived[kLeadIII] && derived[kLeadAVR] && derived[kLeadAVL] && derived[kLeadAVF]) {
        episode->DeriveLimbLeads();
    }
    const auto durationMs = static_cast<std::uint32_t>(std::lround(recording.DurationMs()));
    episode->durationSeconds = std::min<std::uint32_t>(durationMs / 1000, 65000);
    episode->SetEndTimeMs(durationMs);
    episode->value36 = static_cast<std::uint32_t>(beat.rhythm.atrialLead);
    episode->measurements.rrInterval = static_cast<std::uint16_t>(std::clamp(beat.rrMs, 0, 65535));
    return episode;
}

}  // namespace

EpisodeRecord* FillTestRecord(TestRecord& test, const Recording& recording, const MedianBeat& beat) {
    test.SetTestType(kResting);
    test.acquisitionTime = recording.acquisitionTime;
    test.recordingDurationMs = static_cast<std::uint32_t>(std::lround(recording.DurationMs()));
    FillPatient(recording, test);
    FillDevice(recording, test);
    FillDiagnoses(recording, test);
    const std::vector<std::uint8_t> ecg = EncodeEcg(recording);
    test.SetEcg(ecg.data(), ecg.size());
    FillAnnotations(test, beat.rhythm);
    // The original report is the analysis's own and as old as the recording; nobody has written a statement
    // yet.
    test.SetOriginalInterpretation(&test.acquisitionTime, "");
    test.SetOriginalBy(kOriginalAuthor);
    EpisodeRecord* episode = AddBeat(test, recording, beat);
    // Nothing of this is a reviewer's change.
    test.ClearModified();
    return episode;
}

}  // namespace kx::recording
