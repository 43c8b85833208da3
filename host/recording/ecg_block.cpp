#include "host/recording/ecg_block.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace kx::recording {

namespace {

constexpr double kLargestUnits = 32767;
static_assert(std::endian::native == std::endian::little, "the block's numbers are copied as they are");

float InMicrovolts(double units, double unit) {
    return static_cast<float>(units * unit);
}

// Whether every sample is a multiple of the unit that 16 bits hold, as exactly as its own number can be.
bool Fits(const std::vector<float>& lead, double unit) {
    constexpr float kLastBits = 1e-6f;
    return unit > 0 && std::all_of(lead.begin(), lead.end(), [unit](float value) {
               const double units = std::round(double{value} / unit);
               return std::fabs(units) <= kLargestUnits &&
                      std::fabs(InMicrovolts(units, unit) - value) <= kLastBits * std::fabs(value);
           });
}

// Microvolts: the lead's own resolution, that of I or II or their half for a derived lead, else what its
// range allows.
double UnitOf(const Recording& recording, std::size_t lead) {
    const std::vector<float>& samples = recording.leads[lead];
    const auto& resolution = recording.resolutionUv;
    for (const double unit :
         {resolution[lead], resolution[kLeadI], resolution[kLeadI] / 2, resolution[kLeadII] / 2}) {
        if (Fits(samples, unit)) {
            return unit;
        }
    }
    float largest = 0;
    for (const float value : samples) {
        largest = std::max(largest, std::fabs(value));
    }
    constexpr double kFinest = 1.0 / 64;  // below what a recorder resolves
    double unit = kFinest;
    while (double{largest} > kLargestUnits * unit) {
        unit *= 2;
    }
    return unit;
}

}  // namespace

std::vector<std::uint8_t> EncodeEcg(const Recording& recording) {
    EcgHeader header;
    header.leads = kLeadCount;
    header.samplesPerLead = static_cast<std::uint32_t>(recording.SampleCount());
    header.sampleRate = static_cast<std::uint32_t>(std::lround(recording.sampleRate));
    header.exactRate = recording.sampleRate;
    std::vector<std::int16_t> samples;
    samples.reserve(kLeadCount * recording.SampleCount());
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        const double unit = UnitOf(recording, lead);
        header.microvolts[lead] = unit;
        header.derivedLeads |= recording.derived[lead] ? 1u << lead : 0u;
        for (const float value : recording.leads[lead]) {
            samples.push_back(static_cast<std::int16_t>(std::lround(double{value} / unit)));
        }
    }
    header.resolutionNv = static_cast<std::uint32_t>(std::lround(header.microvolts[kLeadI] * 1000));
    std::vector<std::uint8_t> block(sizeof header + samples.size() * sizeof(std::int16_t));
    std::memcpy(block.data(), &header, sizeof header);
    if (!samples.empty()) {
        std::memcpy(block.data() + sizeof header, samples.data(), samples.size() * sizeof(std::int16_t));
    }
    return block;
}

std::optional<Recording> DecodeEcg(std::span<const std::uint8_t> block) {
    EcgHeader header;
    if (block.size() < sizeof header) {
        return std::nullopt;
    }
    std::memcpy(&header, block.data(), sizeof header);
    const std::uint64_t count = header.samplesPerLead;
    if (header.leads != kLeadCount || count == 0 || !(header.exactRate > 0) ||
        !std::isfinite(header.exactRate) ||
        block.size() != sizeof header + kLeadCount * count * sizeof(std::int16_t)) {
        return std::nullopt;
    }
    Recording recording;
    recording.sampleRate = header.exactRate;
    const std::uint8_t* next = block.data() + sizeof header;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        const double unit = header.microvolts[lead];
        if (!(unit > 0) || unit > std::numeric_limits<float>::max() / kLargestUnits) {
            return std::nullopt;
        }
        recording.resolutionUv[lead] = unit;
        recording.derived[lead] = (header.derivedLeads >> lead & 1u) != 0;
        recording.leads[lead].resize(static_cast<std::size_t>(count));
        for (float& value : recording.leads[lead]) {
            std::int16_t sample;
            std::memcpy(&sample, next, sizeof sample);
            value = InMicrovolts(sample, unit);
            next += sizeof sample;
        }
    }
    return recording;
}

std::optional<Recording> DecodeEcg(const KxTestRecord& test) {
    if (test.ecg == nullptr) {
        return std::nullopt;
    }
    EcgHeader header;
    std::memcpy(&header, test.ecg, sizeof header);
    const std::size_t samples = std::size_t{header.samplesPerLead} * kLeadCount;
    return DecodeEcg(std::span(static_cast<const std::uint8_t*>(test.ecg),
                               sizeof header + samples * sizeof(std::int16_t)));
}

}  // namespace kx::recording
