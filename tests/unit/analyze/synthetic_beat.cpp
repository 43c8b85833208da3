#include "tests/unit/analyze/synthetic_beat.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kx::analysis {
namespace {

double ValueAt(const Deflection& wave, double ms) {
    if (ms <= wave.on || ms >= wave.off) {
        return 0;
    }
    return wave.microvolts * 0.5 * (1 - std::cos(2 * std::numbers::pi * (ms - wave.on) / (wave.off - wave.on)));
}

}  // namespace

double LeadWeight(std::size_t code) {
    // I, II, III with I + III = II, then the augmented leads that follow from them, then the chest leads.
    constexpr double kWeights[KX_STANDARD_LEADS] = {0.8, 1.0, 0.2, -0.9, 0.3, 0.6, 0.5, 0.7, 0.9, 1.1, 1.0, 0.8};
    return kWeights[code];
}

Episode::Episode(const SyntheticBeat& beat) : record_(std::make_unique<KxEpisodeRecord>()) {
    const auto count = static_cast<std::size_t>(std::uint64_t{beat.lengthMs} * beat.rate / 1000);
    LayOut(KX_STANDARD_LEADS, count);
    record_->sampleRate = beat.rate;
    record_->resolutionNv = beat.resolutionNv;
    record_->measurements.rrInterval = beat.rr;
    for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
        for (std::size_t i = 0; i < count; ++i) {
            const double ms = static_cast<double>(i) * 1000 / beat.rate;
            double microvolts = 0;
            for (const Deflection& wave : {beat.p, beat.q, beat.r, beat.s, beat.t}) {
                microvolts += LeadWeight(code) * ValueAt(wave, ms);
            }
            Lead(code)[i] = static_cast<std::int16_t>(std::lround(microvolts * 1000 / beat.resolutionNv));
        }
    }
}

Episode::Episode(const std::vector<std::vector<std::int16_t>>& leads, std::uint32_t rate, std::uint32_t resolutionNv)
    : record_(std::make_unique<KxEpisodeRecord>()) {
    LayOut(leads.size(), leads.empty() ? 0 : leads.front().size());
    record_->sampleRate = rate;
    record_->resolutionNv = resolutionNv;
    for (std::size_t code = 0; code < leads.size(); ++code) {
        std::copy(leads[code].begin(), leads[code].end(), Lead(code));
    }
}

std::int16_t* Episode::Lead(std::size_t code) { return samples_.get() + record_->leadTable[code].sampleOffset; }

void Episode::LayOut(std::size_t leads, std::size_t samplesPerLead) {
    samples_ = std::make_unique<std::int16_t[]>(leads * samplesPerLead);
    KxEpisodeRecord& record = *record_;
    record.formatVersion = KX_EPISODE_FORMAT_VERSION;
    record.totalSize = static_cast<std::uint32_t>(KX_EPISODE_FIXED_SIZE + 2 * leads * samplesPerLead);
    record.storedLeads = static_cast<std::uint32_t>(leads);
    record.samplesPerLead = static_cast<std::uint32_t>(samplesPerLead);
    record.endTimeMs = 10000;
    record.samples = samples_.get();
    for (std::size_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
        record.leadTable[slot].leadCode = static_cast<std::uint32_t>(slot < leads ? slot : std::size_t{KX_LEAD_EMPTY});
        record.leadTable[slot].sampleOffset = slot < leads ? static_cast<std::uint32_t>(slot * samplesPerLead) : 0;
    }
    record.measurements.size = KX_MEASUREMENT_SET_SIZE;
}

}  // namespace kx::analysis
