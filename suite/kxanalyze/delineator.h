// Measurement of a median beat: where its waves begin and end, and every value that follows from that.
//
// Method. Nothing is measured in microvolts, so that gains do not matter. Pacing spikes are bridged first.
// Rules (waves_by_rules.h) take slopes in units of each lead's own noise, join them over the leads and seek a
// boundary where that curve leaves the quiet line beside the wave, from the line inwards, so that no step
// over the line into the next wave is possible. Small networks (network.h) read all leads together.
// delineation.h joins the two: the rules guard the networks. docs/measurement.md says how, and how far the
// boundaries lie from cardiologists' marks;
// `./kx evaluate` prints it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "kxdialogs.h"
#include "suite/kxanalyze/joining.h"
#include "suite/kxanalyze/network_weights.h"

namespace kx::analysis {

// What a beat must be for the operations below to measure it.
inline constexpr std::uint32_t kLowestRate = 100;      // samples per second
inline constexpr std::uint32_t kHighestRate = 32000;   // samples per second
inline constexpr std::uint32_t kShortestBeatMs = 300;  // shorter ones cannot hold a QRS complex and a T wave
inline constexpr std::uint32_t kLongestBeatMs = 4000;  // a longer block is no median beat; it is refused

// The memory that a measurement works in, about 1 MB for a beat of 1200 ms and 12 leads, and everything that
// the samples of the last beat alone say. Kept by who measures again and again: the steps of a drag, which
// change markers and no sample, allocate nothing and look for no wave. For one thread at a time.
class Workspace {
  public:
    // The tables of the networks outlive the workspace.
    explicit Workspace(const TrainedNetworks& networks = kTrainedNetworks, const Joining& joining = {});
    ~Workspace();

    // Why the last measurement failed, one line of English; null when it did not.
    const char* Refusal() const { return refusal_; }
    // Whether the last measurement was of other samples than the one before.
    bool IsFresh() const;
    // Why a lead that the last beat stores (0 to 14) is not measured; null when it is.
    const char* LeadRefusal(std::size_t leadCode) const;

  private:
    class Kept;
    friend std::uint32_t MeasureEpisode(KxEpisodeRecord* episode, Workspace& workspace);
    friend std::uint32_t UpdateDetection(KxEpisodeRecord* episode, Workspace& workspace);
    std::uint32_t Measure(KxEpisodeRecord* episode, bool honourManual);

    std::unique_ptr<Kept> kept_;
    const char* refusal_ = nullptr;
};

// Measures the beat of the episode and writes the result into its measurement set: the five global points
// into all 15 lead blocks, the markers, amplitudes, intrinsicoid deflection and ST levels of every lead with
// samples (codes 0 to 14; the blocks of the others get their wave values zeroed), the intervals and axes,
// `measured` = 1. Every marker is placed by the analysis, whatever the manual flags say.
//
// Times are ms from the start of the beat, 0 = absent; amplitudes microvolts against the isoelectric level
// before the QRS complex (P waves: before the P wave). Global points belong to all leads together: pOn and
// qrsOn are the earliest, pOff, qrsOff and tOff the latest places at which any lead shows the wave.
//   pDuration = pOff - pOn, prInterval = qrsOn - pOn, qrsDuration = qrsOff - qrsOn, qtInterval = tOff -
//   qrsOn, each 0 when one of its points is absent. qtc: Fridericia, QT / (RR / 1 s)^(1/3) (Acta Med. Scand.
//   53, 469-486, 1920); qtcBazett: QT / (RR / 1 s)^(1/2). Both need `rrInterval`, which is the caller's (one
//   beat does not tell it) and is kept; both are 0 when it is 0. Axes: direction of the wave in leads I and
//   aVF, aVF scaled by 2 / sqrt(3) because its augmented lead vector is shorter; of P and T by the net area,
//   of QRS by height less depth, as readers take it (the area turns with the broad late S of a bundle branch
//   block); degrees, -179 to 180; 0 when there is no wave or one of the leads is missing. stLevel[k]: level
//   10 k ms after the J point, which is the global QRS offset. intrinsicoidDeflection: from the global QRS
//   onset to the peak of the lead's last R or R' wave; 0 without one.
// `value36` of the record may say what the whole recording tells of the P wave (lib/atrial_lead.h): none is
// measured where none leads the complexes; where one leads every one of them, a fainter one is.
// Kept as they are: both flag words, rrInterval, the three report field values, all reserved words,
// everything outside the measurement set. `episodeTime` takes the episode's endTimeMs.
//
// Returns 1 when the beat was measured. Returns 0 and changes nothing for a null record, no samples, a lead
// layout that does not fit, a rate or a length outside the limits above, resolution 0, or no lead with a QRS
// complex in it. Samples of -32768 are missing ones and are bridged. Reads only the record and the
// storedLeads x samplesPerLead samples behind it. May throw std::bad_alloc, before anything was written.
std::uint32_t MeasureEpisode(KxEpisodeRecord* episode, Workspace& workspace);
std::uint32_t MeasureEpisode(KxEpisodeRecord* episode);  // in memory of its own

// The same, but every global point whose bit in globalManualFlags is set and every lead marker whose bit in
// markerFlags is set keeps its value; 0 there says that the wave is absent, and the wave's automatic points
// become 0 with it. The other markers give way, so that the order of the waves holds as far as the manual
// markers themselves keep it, and every derived value follows from the result. A marker without its flag is
// placed anew whatever stands in it, except the QRS offset of a lead whose five component onsets all have
// theirs: who placed the complex by hand placed its end, too. It stays unless it is 0, and gives way to a
// component behind it. Global points are those of all leads together: the manual marker of one lead changes
// that lead's values only, and a manual global point bounds the automatic markers of the leads.
std::uint32_t UpdateDetection(KxEpisodeRecord* episode, Workspace& workspace);
std::uint32_t UpdateDetection(KxEpisodeRecord* episode);

}  // namespace kx::analysis
