#include "bench/evaluation/judge.h"

#include "host/recording/electrodes.h"
#include "host/recording/median_beat.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::evaluation {

std::optional<MeasuredRecord> Measure(const recording::Recording& recording, analysis::Workspace& workspace,
                                      std::string& refusal) {
    const auto beat = recording::MakeMedianBeat(recording, refusal);
    if (!beat) {
        return std::nullopt;
    }
    analysis::Episode episode({beat->leads.begin(), beat->leads.end()}, recording::kWorkingRate,
                              recording::kResolutionNv);
    episode->value36 = static_cast<std::uint32_t>(beat->rhythm.atrialLead);
    episode.Set().rrInterval = static_cast<std::uint16_t>(beat->rrMs);
    if (analysis::MeasureEpisode(episode.Get(), workspace) == 0) {
        refusal = workspace.Refusal();
        return std::nullopt;
    }
    return MeasuredRecord{beat->beatsMs, MeasuredPlaces(episode.Set()),
                          recording::FindExchangedElectrodes(*beat, episode.Set()) != nullptr};
}

RecordErrors Judge(const MarkedRecord& record, const MeasuredRecord& measured) {
    RecordErrors errors =
        Compare(MakeReference(record.marks, measured.beatsMs, recording::kAlignmentMs), measured.places);
    errors.number = record.number;
    errors.diagnosis = record.recording.diagnoses.empty() ? "" : record.recording.diagnoses.front();
    return errors;
}

}  // namespace kx::evaluation
