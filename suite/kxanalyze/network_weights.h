// What the training of the network has found.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kx::analysis {

// Layer after layer the weights as signed bytes, [output][input][tap]; of each output the factor that they
// are multiplied by and the value that is added.
struct NetworkWeights {
    const std::int8_t* bytes;
    const float* factors;
    const float* biases;
};

// How many there are of each.
extern const std::size_t kNetworkBytes;
extern const std::size_t kNetworkOutputs;

// Networks of the same form, trained from different beginnings: the mean of what they see is steadier.
inline constexpr std::size_t kNetworks = 3;
using TrainedNetworks = std::array<const NetworkWeights*, kNetworks>;

// network_weights_1.cpp and those behind it
extern const NetworkWeights kNetwork1, kNetwork2, kNetwork3;
inline constexpr TrainedNetworks kTrainedNetworks{&kNetwork1, &kNetwork2, &kNetwork3};

}  // namespace kx::analysis
