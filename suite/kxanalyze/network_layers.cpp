#include "suite/kxanalyze/network_layers.h"

#include <algorithm>
#include <numeric>

#include "suite/kxanalyze/elementary.h"

namespace kx::analysis {
namespace {

std::size_t BytesBefore(std::size_t name) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < name; ++i) {
        const Layer& layer = kLayerTable[i];
        bytes += layer.outputs * layer.inputs * static_cast<std::size_t>(layer.taps);
    }
    return bytes;
}

std::size_t OutputsBefore(std::size_t name) {
    std::size_t outputs = 0;
    for (std::size_t i = 0; i < name; ++i) {
        outputs += kLayerTable[i].outputs;
    }
    return outputs;
}

// sum[t] += the taps of one input, each in its turn, so that the sum is the same however it is compiled.
// Apart and with everything that can be fixed fixed, so that it is compiled to a loop over vectors.
template <int kTaps, int kStride>
void AddTaps(const float* weights, int dilation, const float* __restrict in, float* __restrict sum,
             int length) {
    for (int t = 0; t < length; ++t) {
        float value = sum[t];
        for (int tap = 0; tap < kTaps; ++tap) {
            value += weights[tap] * in[kStride * t + tap * dilation];
        }
        sum[t] = value;
    }
}

}  // namespace

const std::size_t kNetworkBytes = BytesBefore(kLayers);
const std::size_t kNetworkOutputs = OutputsBefore(kLayers);

void Rows::Resize(std::size_t rows, int length) {
    if (count_ != rows || length_ != length) {
        count_ = rows;
        length_ = length;
        values_.assign(rows * Pitch(), 0);
    }
}

LayerWeights::LayerWeights(const NetworkWeights& weights, LayerName name)
    : layer_(kLayerTable[name]),
      bytes_(weights.bytes + BytesBefore(name)),
      factors_(weights.factors + OutputsBefore(name)),
      biases_(weights.biases + OutputsBefore(name)) {}

void LayerWeights::Begin(Rows& out) const {
    for (std::size_t o = 0; o < layer_.outputs; ++o) {
        std::fill_n(out[o], out.Length(), biases_[o]);
    }
}

void LayerWeights::Add(const Rows& in, std::size_t firstInput, Rows& out) const {
    const int reach = layer_.taps / 2 * layer_.dilation;
    const auto add = layer_.taps == 1     ? AddTaps<1, 1>
                     : layer_.taps == 7   ? AddTaps<7, 1>
                     : layer_.stride == 1 ? AddTaps<5, 1>
                                          : AddTaps<5, 2>;
    std::array<float, kMostTaps> weights{};
    for (std::size_t o = 0; o < layer_.outputs; ++o) {
        for (std::size_t i = 0; i < in.Count(); ++i) {
            for (int tap = 0; tap < layer_.taps; ++tap) {
                weights[static_cast<std::size_t>(tap)] = At(o, firstInput + i, tap);
            }
            add(weights.data(), layer_.dilation, in[i] - reach, out[o], out.Length());
        }
    }
}

void Rectify(Rows& rows) {
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        float* const values = rows[row];
        for (int t = 0; t < rows.Length(); ++t) {
            values[t] = std::max(values[t], 0.0f);
        }
    }
}

void Raise(const Rows& in, Rows& out) {
    for (std::size_t row = 0; row < in.Count(); ++row) {
        for (int t = 0; t < out.Length(); ++t) {
            out[row][t] = in[row][t / 2];
        }
    }
}

void Pool::Add(const Rows& rows) {
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        float* const mean = out_[row];
        float* const largest = out_[rows.Count() + row];
        for (int t = 0; t < rows.Length(); ++t) {
            const float value = rows[row][t];
            mean[t] = count_ == 0 ? value : mean[t] + value;
            largest[t] = count_ == 0 ? value : std::max(largest[t], value);
        }
    }
    ++count_;
}

void Pool::Conclude() {
    for (std::size_t row = 0; row < out_.Count() / 2; ++row) {
        for (int t = 0; t < out_.Length(); ++t) {
            out_[row][t] /= static_cast<float>(count_);
        }
    }
}

void AddDistribution(const float* logits, int length, float* sum) {
    const auto largest = double{*std::max_element(logits, logits + length)};
    std::array<double, kNetworkPlaces> parts;
    double whole = 0;
    for (int t = 0; t < length; ++t) {
        whole += parts[static_cast<std::size_t>(t)] = Exp(double{logits[t]} - largest);
    }
    for (int t = 0; t < length; ++t) {
        sum[t] += static_cast<float>(parts[static_cast<std::size_t>(t)] / whole);
    }
}

double QuantilePlace(const float* distribution, int length, double part) {
    const double below = std::accumulate(distribution, distribution + length, 0.0) * part;
    double before = 0;
    for (int t = 0; t < length; ++t) {
        const auto here = double{distribution[t]};
        if (here > 0 && before + here >= below) {
            return t + (below - before) / here - 0.5;
        }
        before += here;
    }
    return length - 0.5;
}

}  // namespace kx::analysis
