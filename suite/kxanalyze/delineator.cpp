#include "suite/kxanalyze/delineator.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/components.h"
#include "suite/kxanalyze/delineation.h"
#include "suite/kxanalyze/derived_values.h"
#include "suite/kxanalyze/markers.h"

namespace kx::analysis {
namespace {

GlobalRow FoundPoints(const Waves& waves) {
    return {waves.p.global.on, waves.p.global.off, waves.qrs.global.on, waves.qrs.global.off,
            waves.t.global.off};
}

// The automatic boundaries of a lead's waves, inside the global points.
LeadRow FoundBoundaries(const Waves& waves, std::size_t code, const GlobalRow& points) {
    LeadRow row{};
    const Interval p = Within(waves.p.leads[code], points[kGlobalPOn], points[kGlobalPOff]);
    const Interval t = Within(waves.t.leads[code], points[kGlobalQrsOff], points[kGlobalTOff]);
    row[kLeadPOn] = p.on;
    row[kLeadPOff] = p.off;
    row[kLeadQrsOff] = Within(waves.qrs.leads[code], points[kGlobalQrsOn], points[kGlobalQrsOff]).off;
    row[kLeadTOn] = t.on;
    row[kLeadTOff] = t.off;
    return row;
}

// Fills in the automatic components between the boundaries that the row holds.
void FindComponents(const Beat& beat, const BeatLead& lead, const GlobalRow& points, Interval complex,
                    LeadRow& row) {
    const double base = IsoelectricLevel(lead, points[kGlobalQrsOn], points[kGlobalPOff]);
    const auto second = [&](LeadMarker on, LeadMarker off, double level) {
        const bool present = row[on] != 0 && row[off] != 0;
        return present ? FindSecondComponent(lead.fine, level, {row[on], row[off]}, beat.phases) : 0;
    };
    row[kLeadPPrimeOn] = second(kLeadPOn, kLeadPOff, LevelBeforeP(lead, row[kLeadPOn]));
    row[kLeadTPrimeOn] = second(kLeadTOn, kLeadTOff, base);
    if (complex.Present()) {
        const auto onsets = FindQrsComponents(lead.level, base, {complex.on, row[kLeadQrsOff]}, beat.phases);
        std::copy(onsets.begin(), onsets.end(), row.begin() + kLeadQOn);
    }
}

// Who placed all five component onsets of a lead by hand placed the complex.
bool IsComplexManual(std::uint32_t manual) {
    constexpr std::uint32_t kOnsets = KX_MANUAL_LEAD_Q_ON | KX_MANUAL_LEAD_R_ON | KX_MANUAL_LEAD_S_ON |
                                      KX_MANUAL_LEAD_R_PRIME_ON | KX_MANUAL_LEAD_S_PRIME_ON;
    return (manual & kOnsets) == kOnsets;
}

// The markers of a lead. The components are looked for between boundaries that are final: those placed by
// hand and what is left of the automatic ones beside them.
LeadRow MarkersOf(const Beat& beat, const Waves& waves, std::size_t code, const GlobalRow& points,
                  const LeadRow& stored, std::uint32_t manual) {
    const BeatLead& lead = beat.leads[code];
    if (!lead.present) {
        return JoinLead({}, stored, manual);
    }
    LeadRow row = FoundBoundaries(waves, code, points);
    if (IsComplexManual(manual) && stored[kLeadQrsOff] != 0) {
        row[kLeadQrsOff] = stored[kLeadQrsOff];
    }
    row = JoinLead(row, stored, manual);
    FindComponents(beat, lead, points,
                   Within(waves.qrs.leads[code], points[kGlobalQrsOn], points[kGlobalQrsOff]), row);
    return JoinLead(row, stored, manual);
}

void WriteMeasurements(const Beat& beat, const Waves& waves, bool honourManual, KxMeasurementSet& set) {
    const auto flags = [&](std::uint16_t stored) { return honourManual ? std::uint32_t{stored} : 0u; };
    const GlobalRow points =
        JoinGlobal(FoundPoints(waves), ReadGlobalRow(set), flags(set.leads[0].globalManualFlags));
    WriteGlobalRow(points, set);
    for (std::size_t code = 0; code < KX_MEASURED_LEADS; ++code) {
        KxLeadMeasurements& lead = set.leads[code];
        const LeadRow markers =
            MarkersOf(beat, waves, code, points, ReadLeadRow(lead), flags(lead.markerFlags));
        WriteLeadRow(markers, lead);
        DeriveLeadValues(beat.leads[code], points, markers, lead);
    }
    DeriveIntervals(points, set);
    DeriveAxes(beat, points, waves.t.global.on, set);
}

}  // namespace

// A beat and everything that its samples say, with a copy of what it was read from.
class Workspace::Kept {
  public:
    Kept(const TrainedNetworks& networks, const Joining& joining) : delineation_(networks, joining) {}

    // Null when the episode can be measured, else why not. Does nothing for the episode of the call before.
    const char* Take(const KxEpisodeRecord* episode) {
        fresh_ = !IsKnown(episode);
        if (fresh_) {
            known_ = false;
            refusal_ = ReadBeat(episode, beat_);
            if (refusal_ == nullptr) {
                waves_ = delineation_.Of(beat_);
                refusal_ = waves_.qrs.global.Present() ? nullptr : kNoComplex;
            }
            Remember(episode);
        }
        return refusal_;
    }

    bool IsFresh() const { return fresh_; }
    const char* LeadRefusal(std::size_t code) const { return beat_.leads[code].refusal; }
    const Beat& TheBeat() const { return beat_; }
    const Waves& TheWaves() const { return waves_; }

  private:
    static std::size_t SampleCount(const KxEpisodeRecord& episode) {
        return std::size_t{episode.storedLeads} * episode.samplesPerLead;
    }

    bool IsKnown(const KxEpisodeRecord* episode) const {
        return known_ && episode != nullptr && episode->samples != nullptr &&
               episode->storedLeads == episode_.storedLeads &&
               episode->samplesPerLead == episode_.samplesPerLead &&
               episode->sampleRate == episode_.sampleRate && episode->totalSize == episode_.totalSize &&
               episode->resolutionNv == episode_.resolutionNv && episode->value36 == episode_.value36 &&
               episode->measurements.rrInterval == episode_.measurements.rrInterval &&
               std::memcmp(episode->leadTable, episode_.leadTable, sizeof episode_.leadTable) == 0 &&
               std::memcmp(episode->samples, samples_.data(), samples_.size() * sizeof samples_[0]) == 0;
    }

    void Remember(const KxEpisodeRecord* episode) {
        if (refusal_ == nullptr) {
            episode_ = *episode;
            samples_.assign(episode->samples, episode->samples + SampleCount(*episode));
            known_ = true;
        }
    }

    Beat beat_;
    Delineation delineation_;
    Waves waves_;
    const char* refusal_ = nullptr;
    bool fresh_ = false;
    bool known_ = false;
    KxEpisodeRecord episode_{};
    std::vector<std::int16_t> samples_;
};

Workspace::Workspace(const TrainedNetworks& networks, const Joining& joining)
    : kept_(std::make_unique<Kept>(networks, joining)) {}
Workspace::~Workspace() = default;

const char* Workspace::LeadRefusal(std::size_t leadCode) const {
    return kept_->LeadRefusal(leadCode);
}

bool Workspace::IsFresh() const {
    return kept_->IsFresh();
}

std::uint32_t Workspace::Measure(KxEpisodeRecord* episode, bool honourManual) {
    refusal_ = kept_->Take(episode);
    if (refusal_ != nullptr) {
        return 0;
    }
    KxMeasurementSet set = episode->measurements;
    WriteMeasurements(kept_->TheBeat(), kept_->TheWaves(), honourManual, set);
    set.size = KX_MEASUREMENT_SET_SIZE;
    set.measured = 1;
    set.episodeTime = episode->endTimeMs;
    episode->measurements = set;
    return 1;
}

std::uint32_t MeasureEpisode(KxEpisodeRecord* episode, Workspace& workspace) {
    return workspace.Measure(episode, false);
}

std::uint32_t UpdateDetection(KxEpisodeRecord* episode, Workspace& workspace) {
    return workspace.Measure(episode, true);
}

std::uint32_t MeasureEpisode(KxEpisodeRecord* episode) {
    Workspace workspace;
    return MeasureEpisode(episode, workspace);
}

std::uint32_t UpdateDetection(KxEpisodeRecord* episode) {
    Workspace workspace;
    return UpdateDetection(episode, workspace);
}

}  // namespace kx::analysis
