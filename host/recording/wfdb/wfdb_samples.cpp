#include "host/recording/wfdb/wfdb_samples.h"

#include <algorithm>

namespace kx::recording {

std::vector<std::int16_t> Decode16(std::span<const std::uint8_t> bytes, std::size_t count) {
    std::vector<std::int16_t> samples(std::min(count, bytes.size() / 2));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::int16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
    }
    return samples;
}

std::vector<std::int16_t> Decode212(std::span<const std::uint8_t> bytes, std::size_t count) {
    std::vector<std::int16_t> samples;
    samples.reserve(std::min(count, bytes.size() * 2 / 3));
    // The sign is bit 11: shifted up to bit 15 and back it fills the bits above.
    const auto extended = [](unsigned value) {
        return static_cast<std::int16_t>(static_cast<std::int16_t>(value << 4) >> 4);
    };
    for (std::size_t i = 0; samples.size() < count && i + 2 <= bytes.size(); i += 3) {
        samples.push_back(extended(bytes[i] | (bytes[i + 1] & 0x0Fu) << 8));
        if (samples.size() < count && i + 2 < bytes.size()) {
            samples.push_back(extended(bytes[i + 2] | (bytes[i + 1] & 0xF0u) << 4));
        }
    }
    return samples;
}

std::vector<Gap> GapsOf(std::span<const std::int16_t> samples, std::int16_t missing) {
    std::vector<Gap> gaps;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (samples[i] == missing) {
            AppendToGaps(gaps, i);
        }
    }
    return gaps;
}

}  // namespace kx::recording
