#include "suite/kxanalyze/delineator.h"

#include <algorithm>

#include "suite/kxanalyze/beat.h"
#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/components.h"
#include "suite/kxanalyze/derived_values.h"
#include "suite/kxanalyze/markers.h"

namespace kx::analysis {
namespace {

// What the samples alone say, before anything placed by hand is taken in.
struct Waves {
    WaveBoundaries p;
    WaveBoundaries qrs;
    WaveBoundaries t;
};

GlobalRow FoundPoints(const Waves& waves) {
    return {waves.p.global.on, waves.p.global.off, waves.qrs.global.on, waves.qrs.global.off,
            waves.t.global.off};
}

// The automatic boundaries of a lead's waves, inside the global points.
LeadRow FoundBoundaries(const Waves& waves, std::size_t code, const GlobalRow& points) {
    LeadRow row{};
    const Interval p = Within(waves.p.leads[code], points[kPOn], points[kPOff]);
    const Interval t = Within(waves.t.leads[code], points[kQrsOff], points[kTOff]);
    row[kLeadPOn] = p.on;
    row[kLeadPOff] = p.off;
    row[kLeadQrsOff] = Within(waves.qrs.leads[code], points[kQrsOn], points[kQrsOff]).off;
    row[kLeadTOn] = t.on;
    row[kLeadTOff] = t.off;
    return row;
}

// Fills in the automatic components between the boundaries that the row holds.
void FindComponents(const Beat& beat, const BeatLead& lead, const GlobalRow& points, Interval complex,
                    LeadRow& row) {
    const double base = IsoelectricLevel(lead, points[kQrsOn], points[kPOff]);
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

// The markers of a lead. The components are looked for between boundaries that are final: those placed by
// hand and what is left of the automatic ones beside them.
LeadRow MarkersOf(const Beat& beat, const Waves& waves, std::size_t code, const GlobalRow& points,
                  const LeadRow& stored, std::uint32_t manual) {
    const BeatLead& lead = beat.leads[code];
    if (!lead.present) {
        return JoinLead({}, stored, manual);
    }
    LeadRow row = JoinLead(FoundBoundaries(waves, code, points), stored, manual);
    FindComponents(beat, lead, points, Within(waves.qrs.leads[code], points[kQrsOn], points[kQrsOff]), row);
    return JoinLead(row, stored, manual);
}

std::uint32_t Measure(KxEpisodeRecord* episode, bool honourManual, Beat& beat) {
    if (!ReadBeat(episode, beat)) {
        return 0;
    }
    Waves waves;
    waves.qrs = FindQrs(beat);
    if (!waves.qrs.global.Present()) {
        return 0;
    }
    waves.t = FindT(beat, waves.qrs);
    waves.p = FindP(beat, waves.qrs, waves.t);

    KxMeasurementSet set = episode->measurements;
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
    set.size = KX_MEASUREMENT_SET_SIZE;
    set.measured = 1;
    set.episodeTime = episode->endTimeMs;
    episode->measurements = set;
    return 1;
}

}  // namespace

Workspace::Workspace() : beat_(std::make_unique<Beat>()) {}
Workspace::~Workspace() = default;

std::uint32_t MeasureEpisode(KxEpisodeRecord* episode, Workspace& workspace) {
    return Measure(episode, false, *workspace.beat_);
}

std::uint32_t UpdateDetection(KxEpisodeRecord* episode, Workspace& workspace) {
    return Measure(episode, true, *workspace.beat_);
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
