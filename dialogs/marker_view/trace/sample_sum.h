// sample_sum: by which samples that were replaced in place are told from those of before. Portable.
#pragma once

#include <cstdint>

namespace kx {

// A sum over the samples and their order (after J. Fletcher, 1982, with 32-bit sums). 0 for none.
inline std::uint32_t SampleSum(const std::int16_t* samples, std::uint32_t count) {
    std::uint32_t sum = 0;
    std::uint32_t sumOfSums = 0;
    for (std::uint32_t i = 0; samples != nullptr && i < count; ++i) {
        sum += static_cast<std::uint32_t>(samples[i]);
        sumOfSums += sum;
    }
    return sumOfSums ^ (sum << 16 | sum >> 16);
}

}  // namespace kx
