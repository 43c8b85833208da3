#include "host/recording/wfdb/wfdb_samples.h"

#include <algorithm>

namespace kx::recording {

namespace {

// As the format's manual, signal(5), gives them.
struct SampleFormat {
    int number;
    unsigned bits;
    unsigned group, groupBytes;  // samples that are packed together
    bool hasOffset = false;      // stored with half of the range added, not as two's complement
    bool lowestIsMissing = true;
};
constexpr SampleFormat kFormats[] = {
    {8, 8, 1, 1, false, false}, {16, 16, 1, 2},        {24, 24, 1, 3},  {32, 32, 1, 4},  {61, 16, 1, 2},
    {80, 8, 1, 1, true},        {160, 16, 1, 2, true}, {212, 12, 2, 3}, {310, 10, 3, 4}, {311, 10, 3, 4}};

const SampleFormat* FormatOf(int number) {
    const auto* found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                     [number](const SampleFormat& row) { return row.number == number; });
    return found == std::end(kFormats) ? nullptr : found;
}

// The bits of a sample out of its group's bytes, of which the first stands in the low bits of `word`.
std::uint32_t BitsOf(const SampleFormat& format, std::uint32_t word, std::size_t place) {
    switch (format.number) {
        case 61:
            return (word & 0xFFu) << 8 | word >> 8;
        case 212:
            return place == 0 ? word & 0xFFFu : word >> 16 | (word & 0xF000u) >> 4;
        case 310:
            // Two in bits 1 to 10 of either half; the third in the bits above, its low five first.
            return place < 2 ? word >> (16 * place + 1) & 0x3FFu
                             : (word >> 11 & 0x1Fu) | (word >> 27 & 0x1Fu) << 5;
        case 311:
            return word >> (10 * place) & 0x3FFu;
        default:
            return word;
    }
}

std::int32_t Lowest(const SampleFormat& format) {
    return static_cast<std::int32_t>(~0u << (format.bits - 1));
}

}  // namespace

bool IsSampleFormat(int format) {
    return FormatOf(format) != nullptr;
}

std::uint64_t SamplesIn(int format, std::uint64_t bytes) {
    const SampleFormat& row = *FormatOf(format);
    const std::uint64_t left = bytes % row.groupBytes;
    // Of a group that is cut the first samples are there; format 310 has them in halves of 16 bits.
    const std::uint64_t cut = format == 310 ? left / 2 : left * 8 / row.bits;
    return bytes / row.groupBytes * row.group + cut;
}

std::vector<std::int32_t> DecodeSamples(int format, std::span<const std::uint8_t> bytes, std::size_t count) {
    const SampleFormat& row = *FormatOf(format);
    const auto held = static_cast<std::size_t>(SamplesIn(format, bytes.size()));
    std::vector<std::int32_t> samples(std::min(count, held));
    const std::uint32_t half = 1u << (row.bits - 1);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t first = i / row.group * row.groupBytes;
        std::uint32_t word = 0;
        for (std::size_t k = std::min<std::size_t>(row.groupBytes, bytes.size() - first); k > 0; --k) {
            word = word << 8 | bytes[first + k - 1];
        }
        const std::uint32_t bits = BitsOf(row, word, i % row.group);
        // Half of the range taken off: of two's complement after the sign bit was turned.
        samples[i] = static_cast<std::int32_t>((row.hasOffset ? bits : bits ^ half) - half);
    }
    return samples;
}

std::vector<Gap> GapsOf(int format, std::span<const std::int32_t> samples) {
    const SampleFormat& row = *FormatOf(format);
    std::vector<Gap> gaps;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (row.lowestIsMissing && samples[i] == Lowest(row)) {
            AppendToGaps(gaps, i);
        }
    }
    return gaps;
}

}  // namespace kx::recording
