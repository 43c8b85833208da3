// The boundaries of a beat's waves, as marked and as measured, on one scale.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "bench/evaluation/marked_beats.h"
#include "host/recording/recording.h"
#include "include/kxdialogs.h"

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
    // global: the second earliest of the leads' onsets, the second latest of their offsets: in single records
    // the outermost lead stands 50 to 130 ms outside. No T onset: no field holds one.
    BeatPlaces places;
    // Which boundaries belong to waves that are marked in no beat at all although the beats are marked.
    std::array<bool, kBoundaries> absentGlobal{};
    std::array<std::array<bool, kBoundaries>, recording::kLeadCount> absent{};
};

// The reference of a median beat: of each boundary the median, over the beats, of its distance from the beat.
// A wave counts as there when at least half of the beats have it. leads[i]: marked beats of lead i; beatsMs:
// the beats where they are reported, ms; alignmentMs: the place in the median beat that they are reported at.
Reference MakeReference(std::span<const std::vector<MarkedBeat>> leads, const std::vector<int>& beatsMs,
                        double alignmentMs);

// What a measurement set says. The onset of a lead's QRS complex is that of its first component.
BeatPlaces MeasuredPlaces(const KxMeasurementSet& set);

}  // namespace kx::evaluation
