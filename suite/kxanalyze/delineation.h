// Where the waves of a beat begin and end, by the rules and the network together.
#pragma once

#include <vector>

#include "suite/kxanalyze/boundaries.h"
#include "suite/kxanalyze/joining.h"
#include "suite/kxanalyze/network.h"
#include "suite/kxanalyze/network_input.h"

namespace kx::analysis {

// What the samples alone say, before anything placed by hand is taken in.
struct Waves {
    WaveBoundaries p;
    WaveBoundaries qrs;
    WaveBoundaries t;
};

// The boundaries are the networks', brought into the order of the waves. The rules (waves_by_rules.h) guard
// them: a global point that lies far from theirs is theirs. Memory is taken at the first beat and kept.
class Delineation {
  public:
    // The tables of the networks outlive it.
    explicit Delineation(const TrainedNetworks& weights, const Joining& joining = {});

    // Needs a beat of ReadBeat. Without a QRS complex nothing is present.
    Waves Of(const Beat& beat);

  private:
    void Run(const Beat& beat, ShortenedSegment segment);

    std::vector<Network> networks_;
    Joining joining_;
    Rows input_;
    NetworkOutput output_;
    NetworkPoints points_;
};

}  // namespace kx::analysis
