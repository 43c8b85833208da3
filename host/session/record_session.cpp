#include "host/session/record_session.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "host/recording/median_beat.h"
#include "host/recording/synthetic.h"
#include "host/recording/test_builder.h"
#include "host/recording/wfdb_reader.h"
#include "host/windows/text_conversion.h"
#include "lib/replacing_file.h"

namespace kxhost {
namespace {

using kx::recording::MedianBeat;
using kx::recording::Recording;

Recording ReadRecording(const RecordRequest& request) {
    if (request.path.empty())
        return kx::recording::MakeSyntheticRecording();
    kx::recording::ReadOptions options;
    options.unitsPerMv = request.unitsPerMv;
    std::string error;
    auto recording = kx::recording::ReadWfdb(PathFromUtf8(request.path), options, error);
    if (!recording)
        throw RecordError(error);
    return std::move(*recording);
}

MedianBeat MakeBeat(const Recording& recording) {
    std::string error;
    auto beat = kx::recording::MakeMedianBeat(recording, error);
    if (!beat)
        throw RecordError(recording.name + ": " + error);
    return std::move(*beat);
}

}  // namespace

std::unique_ptr<RecordSession> RecordSession::Open(const RecordRequest& request,
                                                   const AnalysisClient& analysis) {
    const Recording recording = ReadRecording(request);
    const MedianBeat beat = MakeBeat(recording);

    std::unique_ptr<RecordSession> session(new RecordSession);
    session->episode_ = kx::recording::FillTestRecord(session->test_, recording, beat);
    if (session->episode_ == nullptr)
        throw RecordError(recording.name + ": not enough memory for the median beat");
    session->measuringFailure_ = analysis.MeasureEpisode(*session->episode_);
    session->opened_ = session->episode_->measurements;
    session->test_.ClearModified();
    session->openedTest_ = session->test_;
    session->beatsMs_ = beat.beatsMs;
    session->rPeakMs_ = kx::recording::kAlignmentMs;
    session->title_ = request.path.empty() ? L"Tracciato di esempio" : FromUtf8(recording.name);
    for (const std::string& remark : recording.remarks)
        session->remarks_.push_back(FromUtf8(remark));
    return session;
}

bool RecordSession::HasChanges() const {
    // Not every change of a report sets `modified`: a reviewer's name and a state do not. What the record
    // points to is its episode, compared by itself, and what nobody changes.
    return std::memcmp(&openedTest_, &test_, offsetof(KxTestRecord, lastChangeTime)) != 0 ||
           std::memcmp(&opened_, &episode_->measurements, sizeof opened_) != 0;
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

}  // namespace kxhost
