#include "host/session/record_session.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>
#include <random>
#include <string_view>
#include <tuple>

#include "host/printing/tracing_output.h"
#include "host/recording/aecg/aecg_writer.h"
#include "host/recording/csv/samples_csv.h"
#include "host/recording/ecg_block.h"
#include "host/recording/electrodes.h"
#include "host/recording/median_beat.h"
#include "host/recording/open_recording.h"
#include "host/recording/synthetic.h"
#include "host/recording/test_builder.h"
#include "host/windows/text_conversion.h"
#include "host/worklist/listing_words.h"
#include "lib/annotation_store.h"
#include "lib/replacing_file.h"

namespace kxhost {
namespace {

using kx::recording::MedianBeat;
using kx::recording::Recording;

Recording ReadRecording(const RecordRequest& request) {
    if (request.path.empty()) {
        return kx::recording::MakeSyntheticRecording();
    }
    kx::recording::ReadOptions options;
    options.unitsPerMv = request.unitsPerMv;
    std::string error;
    auto recording = kx::recording::OpenRecording(PathFromUtf8(request.path), options, error);
    if (!recording) {
        throw RecordError(error);
    }
    return std::move(*recording);
}

MedianBeat MakeBeat(const Recording& recording) {
    std::string error;
    auto beat = kx::recording::MakeMedianBeat(recording, error);
    if (!beat) {
        throw RecordError(recording.name + ": " + error);
    }
    return std::move(*beat);
}

template <std::size_t Size>
std::string_view Text(const char (&field)[Size]) {
    return {field, strnlen(field, Size)};
}

std::string_view Bytes(const KxDateTime& time) {
    return {reinterpret_cast<const char*>(&time), sizeof time};
}

// A random UUID (RFC 4122, version 4).
std::string NewIdentifier() {
    std::random_device random;
    const auto next = [&random](unsigned mask, unsigned bits) { return (random() & mask) | bits; };
    char text[40];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%04x-%08x%04x", next(0xFFFFFFFF, 0), next(0xFFFF, 0),
                  next(0x0FFF, 0x4000), next(0x3FFF, 0x8000), next(0xFFFFFFFF, 0), next(0xFFFF, 0));
    return text;
}

}  // namespace

std::unique_ptr<RecordSession> RecordSession::Open(const RecordRequest& request,
                                                   const AnalysisClient& analysis) {
    const Recording recording = ReadRecording(request);
    const MedianBeat beat = MakeBeat(recording);

    std::unique_ptr<RecordSession> session(new RecordSession);
    session->episode_ = kx::recording::FillTestRecord(session->test_, recording, beat);
    if (session->episode_ == nullptr) {
        throw RecordError(recording.name + ": not enough memory for the median beat");
    }
    session->measuringFailure_ = analysis.MeasureEpisode(*session->episode_);
    session->source_ = request.path;
    session->TakeAsSaved();
    session->beatsMs_ = beat.beatsMs;
    session->rPeakMs_ = kx::recording::kAlignmentMs;
    session->title_ = request.path.empty() ? L"Tracciato di esempio" : FromUtf8(recording.name);
    for (const auto* remarks : {&recording.remarks, &beat.remarks}) {
        for (const std::string& remark : *remarks) {
            session->remarks_.push_back(FromUtf8(remark));
        }
    }
    if (const char* exchanged =
            kx::recording::FindExchangedElectrodes(beat, session->episode_->measurements)) {
        session->remarks_.push_back(FromUtf8(exchanged));
    }
    return session;
}

std::unique_ptr<RecordSession> RecordSession::OpenArchived(const ArchiveClient& archive, ArchivedKey key) {
    std::unique_ptr<RecordSession> session(new RecordSession);
    const ArchiveClient::Result fetched = archive.Fetch(key, session->test_, session->source_);
    if (fetched.answer != kx::kArchiveDone) {
        throw RecordError(ToUtf8(fetched.text));
    }
    session->episode_ = session->test_.Episode(0);
    if (session->episode_ == nullptr) {
        throw RecordError(ToUtf8(L"l'esame non ha un battito mediano"));
    }
    session->key_ = key;
    session->rPeakMs_ = kx::recording::kAlignmentMs;
    if (const kx::AnnotationStore* beats = session->test_.Annotations()) {
        for (std::uint32_t i = 0; i < beats->Count(); ++i) {
            session->beatsMs_.push_back(static_cast<int>(beats->Time(i)));
        }
    }
    if (session->episode_->measurements.measured == 0) {
        session->measuringFailure_ = L"il battito mediano di questo esame non è misurato";
    }
    char name[64];
    session->test_.SortName(name, sizeof name);
    const std::string id(session->test_.patientId,
                         strnlen(session->test_.patientId, sizeof session->test_.patientId));
    session->title_ = std::strlen(name) > 3 ? NameText(name) : FromRecordText(id);
    session->TakeAsSaved();
    return session;
}

void RecordSession::TakeAsSaved() {
    opened_ = episode_->measurements;
    openedText_ = test_.InterpretationText(nullptr, 0);
    openedReport_ = test_;
    test_.ClearModified();
}

ArchiveClient::Result RecordSession::Save(const ArchiveClient& archive, bool asNew) {
    // Action codes of the history: 1 the first save of a test, 3 any later one.
    constexpr std::uint32_t kFirstSave = 1;
    constexpr std::uint32_t kLaterSave = 3;
    ArchivedKey key = asNew ? ArchivedKey() : key_;
    const std::uint8_t modified = test_.modified;
    const std::uint32_t entries = test_.history != nullptr ? test_.history->count : 0;
    test_.AddHistoryEntry(key.id == 0 ? kFirstSave : kLaterSave, kx::DateTime(),
                          ArchiveClient::UserName().c_str());
    test_.ClearModified();
    ArchiveClient::Result saved = archive.Save(test_, source_, key);
    if (saved.answer == kx::kArchiveDone) {
        key_ = key;
        TakeAsSaved();
    } else {
        test_.modified = modified;
        if (test_.history != nullptr) {
            test_.history->count = entries;
        }
    }
    return saved;
}

std::filesystem::path RecordSession::Folder() const {
    return source_.empty() ? std::filesystem::path() : PathFromUtf8(source_).parent_path();
}

bool RecordSession::HasChangedMarkers() const {
    return std::memcmp(&opened_, &episode_->measurements, sizeof opened_) != 0;
}

bool RecordSession::HasChangedReport() const {
    const auto report = [](const KxTestRecord& test) {
        return std::tuple(test.reportState, Text(test.overreadBy), Text(test.confirmedBy),
                          Bytes(test.overreadTime), Bytes(test.confirmedTime));
    };
    return report(test_) != report(openedReport_);
}

bool RecordSession::HasChangedText() const {
    return openedText_ != test_.InterpretationText(nullptr, 0);
}

bool RecordSession::HasManualMarkers() const {
    constexpr unsigned kGlobalFlags = 0x1F;
    constexpr unsigned kLeadFlags = 0xFFF;
    const KxMeasurementSet& set = episode_->measurements;
    return (set.leads[0].globalManualFlags & kGlobalFlags) != 0 ||
           std::any_of(std::begin(set.leads), std::end(set.leads),
                       [](const KxLeadMeasurements& lead) { return (lead.markerFlags & kLeadFlags) != 0; });
}

bool RecordSession::SaveEpisode(const std::filesystem::path& file) const {
    const std::vector<std::uint8_t> block = episode_->Serialize();
    kx::ReplacingFile replaced(file.wstring());
    return !block.empty() && replaced.Write(block.data(), static_cast<std::uint32_t>(block.size())) &&
           replaced.Commit();
}

bool RecordSession::SaveTable(const std::filesystem::path& file, TableFormat format) const {
    kx::ReplacingFile replaced(file.wstring());
    return WriteTable(test_, format, kx::UserLocale(), replaced) && replaced.Commit();
}

bool RecordSession::SaveSignal(const std::filesystem::path& file, SignalFormat format) const {
    std::optional<std::string> text;
    if (format == SignalFormat::kAecg) {
        text = kx::recording::WriteAecg(test_, NewIdentifier());
    } else if (const auto recording = kx::recording::DecodeEcg(test_)) {
        text = kx::recording::SamplesCsv(*recording);
    }
    kx::ReplacingFile replaced(file.wstring());
    return text && replaced.Write(text->data(), static_cast<std::uint32_t>(text->size())) &&
           replaced.Commit();
}

bool RecordSession::Export(const std::filesystem::path& file, ExportFormat format) const {
    switch (format) {
        case ExportFormat::kAecg:
            return SaveSignal(file, SignalFormat::kAecg);
        case ExportFormat::kSamples:
            return SaveSignal(file, SignalFormat::kCsv);
        case ExportFormat::kTable:
            return SaveTable(file, TableFormat::kHtml);
        default:
            return SaveTracing(DescribeTracing(test_),
                               format == ExportFormat::kPdf ? PageFormat::kPdf : PageFormat::kPng, file,
                               title_);
    }
}

}  // namespace kxhost
