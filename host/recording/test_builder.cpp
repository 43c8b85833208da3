#include "host/recording/test_builder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "host/recording/beat_labels.h"
#include "lib/dbclient/test_record.h"

namespace kx::recording {

namespace {

constexpr std::uint32_t kResting = 2;        // testType
constexpr std::uint32_t kTwelveLeads = 0;    // leadConfiguration
constexpr std::uint16_t kDaysPerYear = 365;  // as the record counts years
constexpr std::size_t kEcgHeaderSize = 280;
constexpr char kOriginalAuthor[] = "Analisi automatica";

// UTF-8 as Windows-1252, in which the records hold texts: Latin letters stay, others become '?'.
std::string ToRecordText(std::string_view utf8) {
    std::string text;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            text += static_cast<char>(byte);
            continue;
        }
        const unsigned next = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0u;
        const bool latin =
            (byte == 0xC2 || byte == 0xC3) && (next & 0xC0u) == 0x80 && !(byte == 0xC2 && next < 0xA0);
        text += latin ? static_cast<char>((byte & 3u) << 6 | (next & 0x3Fu)) : '?';
        while (i + 1 < utf8.size() && (static_cast<unsigned char>(utf8[i + 1]) & 0xC0u) == 0x80) {
            ++i;
        }
    }
    return text;
}

void FillDiagnoses(const Recording& recording, TestRecord& test) {
    std::string text;
    for (const std::string& diagnosis : recording.diagnoses) {
        text += (text.empty() ? "" : "\r\n") + ToRecordText(diagnosis);
    }
    const std::size_t length = std::min(text.size(), sizeof test.text332 - 1);
    std::memcpy(test.text332, text.data(), length);
    test.text332[length] = '\0';
}

// The signal that the beat was taken from: a header of 280 bytes that begins with the number of leads, the
// samples per lead, the rate and the resolution, then each lead's samples. The panes ask only whether there
// is one.
bool FillEcg(const Recording& recording, TestRecord& test) {
    const std::uint32_t header[] = {kLeadCount, static_cast<std::uint32_t>(recording.SampleCount()),
                                    static_cast<std::uint32_t>(std::lround(recording.sampleRate)),
                                    kResolutionNv};
    std::vector<std::uint8_t> block(kEcgHeaderSize);
    block.reserve(kEcgHeaderSize + kLeadCount * recording.SampleCount() * sizeof(std::int16_t));
    std::memcpy(block.data(), header, sizeof header);
    for (const std::vector<float>& lead : recording.leads) {
        for (const float value : lead) {
            const auto sample = static_cast<std::int16_t>(std::clamp(std::round(value), -32768.0f, 32767.0f));
            const auto bits = static_cast<std::uint16_t>(sample);
            block.push_back(static_cast<std::uint8_t>(bits & 0xFF));
            block.push_back(static_cast<std::uint8_t>(bits >> 8));
        }
    }
    return test.SetEcg(block.data(), block.size());
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
    if (derived[kLeadAVR] && derived[kLeadAVL] && derived[kLeadAVF]) {
        episode->DeriveLimbLeads();
    }
    const auto durationMs = static_cast<std::uint32_t>(std::lround(recording.DurationMs()));
    episode->durationSeconds = std::min<std::uint32_t>(durationMs / 1000, 65000);
    episode->SetEndTimeMs(durationMs);
    episode->measurements.rrInterval = static_cast<std::uint16_t>(std::clamp(beat.rrMs, 0, 65535));
    return episode;
}

}  // namespace

EpisodeRecord* FillTestRecord(TestRecord& test, const Recording& recording, const MedianBeat& beat) {
    test.SetTestType(kResting);
    test.acquisitionTime = recording.acquisitionTime;
    test.recordingDurationMs = static_cast<std::uint32_t>(std::lround(recording.DurationMs()));
    const std::string name = ToRecordText(recording.name);
    test.SetPatientId(name.c_str());
    if (recording.ageYears >= 0) {
        test.SetAgeDays(static_cast<std::uint16_t>(recording.ageYears * kDaysPerYear));
    }
    if (recording.sex != Sex::kUnknown) {
        test.SetSex(recording.sex == Sex::kMale ? 1 : 2);
    }
    const std::string rate = std::to_string(std::lround(recording.sampleRate)) + " Hz";
    test.SetDevice(ToRecordText(recording.source).c_str(), name.c_str(), rate.c_str());
    FillDiagnoses(recording, test);
    FillEcg(recording, test);
    FillAnnotations(test, beat);
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
