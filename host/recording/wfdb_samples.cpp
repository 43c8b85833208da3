#include "host/recording/wfdb_samples.h"

#include <algorithm>
#include <utility>

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

void AddGaps(std::vector<Gap>& gaps, const std::vector<Gap>& more) {
    gaps.insert(gaps.end(), more.begin(), more.end());
    std::sort(gaps.begin(), gaps.end(), [](const Gap& a, const Gap& b) { return a.first < b.first; });
    std::vector<Gap> joined;
    for (const Gap& gap : gaps) {
        if (!joined.empty() && gap.first <= joined.back().end) {
            joined.back().end = std::max(joined.back().end, gap.end);
        } else {
            joined.push_back(gap);
        }
    }
    gaps = std::move(joined);
}

bool Bridge(std::vector<float>& lead, std::span<const std::int16_t> samples, std::int16_t missing,
            std::vector<Gap>& gaps) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (samples[i] != missing) {
            continue;
        }
        if (gaps.empty() || gaps.back().end != i) {
            gaps.push_back({i, i});
        }
        gaps.back().end = i + 1;
    }
    for (const Gap& gap : gaps) {
        const bool before = gap.first > 0;
        const bool after = gap.end < lead.size();
        if (!before && !after) {
            return false;
        }
        const float from = before ? lead[gap.first - 1] : lead[gap.end];
        const float to = after ? lead[gap.end] : from;
        const auto steps = static_cast<float>(gap.end - gap.first + 1);
        for (std::size_t i = gap.first; i < gap.end; ++i) {
            lead[i] = from + (to - from) * static_cast<float>(i - gap.first + 1) / steps;
        }
    }
    return true;
}

}  // namespace kx::recording
