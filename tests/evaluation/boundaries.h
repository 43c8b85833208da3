// The boundaries of a beat's waves, as marked and as measured, on one scale.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "host/recording/recording.h"
#include "include/kxdialogs.h"
#include "tests/evaluation/marked_beats.h"

namespace kx::evaluation {

enum Boundary : std::size_t { kPOn, kPOff, kQrsOn, kQrsOff, kTOn, kTOff, kBoundaries };
inline constexpr std::array<const char*, kBoundaries> kBoundaryNames = {"P on",    "P off", "QRS on",
                                                                        "QRS off", "T on",  "T off"};

// Where a boundary lies in the median beat, ms from its start; nothing where the wave has none.
using Places = std::array<std::optional<double>, kBoundaries>;

// The places of a beat on all leads together and in each of the twelve.
struct BeatPlaces {
    Places global;
    std::array<Places, recording::kLeadCount> leads;
};

struct Reference {
    // global: the earliest of the leads' onsets, the latest of their offsets.
    BeatPlaces places;
    // The other way to join beats and leads: of each beat the earliest onset and the latest offset that is
    // marked in any lead, and of these the median. A single mark far out moves it.
    Places widestOfBeats;
    // Which boundaries belong to waves that are marked in no beat at all although the beats are marked.
    std::array<bool, kBoundaries> absentGlobal{};
    std::array<std::array<bool, kBoundaries>, recording::kLeadCount> absent{};
};

// The reference of a median beat: of each boundary the median, over the beats that are in the median beat, of
// its distance from the beat's alignment point. A wave counts as there when at least half of the beats have
// it. leads[i]: marked beats of lead i; alignedMs as in MedianBeat; alignmentMs: the alignment point's place
// in the median beat.
Reference MakeReference(std::span<const std::vector<MarkedBeat>> leads, const std::vector<int>& alignedMs,
                        double alignmentMs);

// What a measurement set says. The onset of a lead's QRS complex is that of its first component; there is no
// T onset on all leads together.
BeatPlaces MeasuredPlaces(const KxMeasurementSet& set);

}  // namespace kx::evaluation
