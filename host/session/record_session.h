// One opened recording: its test record for the library, with the measured median beat, and what was found on
// the way.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/batch/command_line.h"
#include "host/clients/analysis_client.h"
#include "host/clients/archive_client.h"
#include "host/report/table_export.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {

// A recording could not be opened; what() is one line, UTF-8.
class RecordError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class RecordSession {
  public:
    // Reads the recording, finds its beats, makes the median beat and has it measured. Throws RecordError
    // when the recording cannot be read or holds no beats. A beat that could not be measured is no error: see
    // MeasuringFailure.
    static std::unique_ptr<RecordSession> Open(const RecordRequest& request, const AnalysisClient& analysis);

    // A test of the archive, as it was saved. Throws RecordError when it cannot be had.
    static std::unique_ptr<RecordSession> OpenArchived(const ArchiveClient& archive, ArchivedKey key);

    // Saves the test into the archive, with an entry of its history, and takes its changes for saved. asNew:
    // as a test of its own, beside the one that it came from.
    ArchiveClient::Result Save(const ArchiveClient& archive, bool asNew = false);
    bool IsArchived() const { return key_.id != 0; }
    const ArchivedKey& Key() const { return key_; }
    // The folder of the recording's file; empty for one that came from none.
    std::filesystem::path Folder() const;

    kx::TestRecord& Test() { return test_; }
    const kx::TestRecord& Test() const { return test_; }
    // The measurements of the median beat.
    const KxMeasurementSet& Measurements() const { return episode_->measurements; }

    // Times of the beats from the start of the recording, and of the alignment point from the start of the
    // median beat, ms.
    const std::vector<int>& BeatsMs() const { return beatsMs_; }
    int RPeakMs() const { return rPeakMs_; }

    // For the title bar and the status bar.
    const std::wstring& Title() const { return title_; }
    // Why the beat is not measured; empty when it is.
    const std::wstring& MeasuringFailure() const { return measuringFailure_; }
    // What a reader of the measurements should know of the recording: an assumed gain, missing samples.
    const std::vector<std::wstring>& Remarks() const { return remarks_; }

    // Whether anything was changed since the recording was opened: a value of the test, a marker, a
    // measurement.
    bool HasChanges() const { return HasChangedMarkers() || HasChangedReport() || test_.IsModified(); }
    bool HasChangedMarkers() const;
    // Who, when and how far: what the library stores without setting `modified` as well (a reviewer's name, a
    // confirmation).
    bool HasChangedReport() const;
    bool HasChangedText() const;
    bool HasManualMarkers() const;
    // The median beat with its measurements in its serialized form. The file is replaced as a whole; false,
    // and it is as it was, when it could not be written.
    bool SaveEpisode(const std::filesystem::path& file) const;
    // The same with the table of the wave amplitudes.
    bool SaveTable(const std::filesystem::path& file, TableFormat format) const;
    // The same with the recording and what was found in it (HL7 aECG), or with its samples (CSV).
    bool SaveSignal(const std::filesystem::path& file, SignalFormat format) const;
    bool Export(const std::filesystem::path& file, ExportFormat format) const;

  private:
    RecordSession() = default;

    kx::TestRecord test_;
    std::vector<int> beatsMs_;
    int rPeakMs_ = 0;
    std::wstring title_;
    std::wstring measuringFailure_;
    std::vector<std::wstring> remarks_;
    void TakeAsSaved();

    kx::EpisodeRecord* episode_ = nullptr;  // the test's, never null in an opened session
    KxMeasurementSet opened_{};             // as first measured, or as last saved
    std::string openedText_;                // the statement likewise
    KxTestRecord openedReport_{};           // the report's state, names and times likewise
    std::string source_;                    // the recording's path, UTF-8
    ArchivedKey key_;
};

}  // namespace kxhost
