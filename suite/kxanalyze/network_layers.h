// The layers of the network: their shapes, where their weights lie in the table, and what they do.
#pragma once

#include <array>
#include <cstddef>

#include "suite/kxanalyze/network.h"

namespace kx::analysis {

struct Layer {
    std::size_t outputs;
    std::size_t inputs;
    int taps;
    int stride = 1;
    int dilation = 1;
};

// Channels of the three rates.
inline constexpr std::size_t kFine = 10;
inline constexpr std::size_t kMiddle = 14;
inline constexpr std::size_t kCoarse = 18;
inline constexpr std::size_t kGlobal = 16;
inline constexpr std::size_t kLeadNames = KX_STANDARD_LEADS + 1;  // the last stands for every other lead

enum LayerName : std::size_t {
    kToFine,
    kToMiddle,
    kAtMiddle,
    kToCoarse,
    kLeadName,
    kJoin,
    kStep1,
    kStep2,
    kStep4,
    kUpToMiddle,
    kUpToFine,
    kLeadOut,
    kGlobalIn,
    kGlobalOut,
    kPWave,
    kLayers
};
inline constexpr std::array<Layer, kLayers> kLayerTable = {{
    {kFine, kNetworkInputs, 7},
    {kMiddle, kFine, 5, 2},
    {kMiddle, kMiddle, 5},
    {kCoarse, kMiddle, 5, 2},
    {kLeadNames, kCoarse, 1},
    {kCoarse, 3 * kCoarse, 1},
    {kCoarse, kCoarse, 5, 1, 1},
    {kCoarse, kCoarse, 5, 1, 2},
    {kCoarse, kCoarse, 5, 1, 4},
    {kMiddle, kCoarse + kMiddle, 5},
    {kFine, kMiddle + kFine, 5},
    {kLeadPoints, kFine, 1},
    {kGlobal, 2 * kFine, 5},
    {kPointsOfAll, kGlobal, 1},
    {1, 2 * kGlobal, 1},
}};

inline constexpr std::size_t kMostTaps = 7;

// A layer with its weights.
class LayerWeights {
  public:
    LayerWeights(const NetworkWeights& weights, LayerName name);

    float At(std::size_t output, std::size_t input, int tap) const {
        const auto taps = static_cast<std::size_t>(layer_.taps);
        return factors_[output] *
               static_cast<float>(
                   bytes_[(output * layer_.inputs + input) * taps + static_cast<std::size_t>(tap)]);
    }
    float Bias(std::size_t output) const { return biases_[output]; }

    // A layer over inputs that lie in several rows: Begin, Add for each group of rows, then Rectify if the
    // layer passes no negative values.
    void Begin(Rows& out) const;
    void Add(const Rows& in, std::size_t firstInput, Rows& out) const;

  private:
    const Layer& layer_;
    const std::int8_t* bytes_;
    const float* factors_;
    const float* biases_;
};

void Rectify(Rows& rows);

// out: each place of `in` twice.
void Raise(const Rows& in, Rows& out);

// The mean and the largest over several rows of the same shape: the first row of `out` from the first of
// each.
class Pool {
  public:
    explicit Pool(Rows& out) : out_(out) {}
    void Add(const Rows& rows);
    void Conclude();

  private:
    Rows& out_;
    int count_ = 0;
};

// Adds the distribution whose logarithms (up to a constant) a row holds.
void AddDistribution(const float* logits, int length, float* sum);

// The place below which the given part of a distribution, or of a sum of them, lies, in places.
double QuantilePlace(const float* distribution, int length, double part);

}  // namespace kx::analysis
