// A median beat made of waves whose boundaries and amplitudes are known, in an episode record that owns its
// samples.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "kxdialogs.h"

namespace kx::analysis {

// One deflection: a raised cosine from `on` to `off` (ms), 0 outside, `microvolts` in its middle on a lead of
// weight 1.
struct Deflection {
    double on;
    double off;
    double microvolts;
};

struct SyntheticBeat {
    std::uint32_t rate = 500;
    std::uint32_t resolutionNv = 1000;
    std::uint32_t lengthMs = 1200;
    std::uint16_t rr = 800;
    Deflection p{230, 340, 150};
    Deflection q{400, 424, -150};
    Deflection r{424, 464, 1200};
    Deflection s{464, 490, -300};
    Deflection t{560, 760, 350};
};

// A record with its samples.
class Episode {
  public:
    explicit Episode(const SyntheticBeat& beat);
    // Leads of any contents, all of the same length.
    Episode(const std::vector<std::vector<std::int16_t>>& leads, std::uint32_t rate, std::uint32_t resolutionNv);

    KxEpisodeRecord* operator->() { return record_.get(); }
    KxEpisodeRecord* Get() { return record_.get(); }
    KxMeasurementSet& Set() { return record_->measurements; }
    std::int16_t* Lead(std::size_t code);

  private:
    void LayOut(std::size_t leads, std::size_t samplesPerLead);

    std::unique_ptr<KxEpisodeRecord> record_;
    std::unique_ptr<std::int16_t[]> samples_;  // exactly as many as the record says, so that the sanitizer sees one more
};

// How much each of the twelve leads shows of the beat: a frontal axis of about 40 degrees.
double LeadWeight(std::size_t code);

}  // namespace kx::analysis
