#include "bench/evaluation/fold_weights.h"

#include <fstream>

namespace kx::evaluation {

std::optional<FoldWeights> FoldWeights::Read(const std::filesystem::path& file, std::string& error) {
    FoldWeights weights;
    std::ifstream stream(file, std::ios::binary);
    const auto read = [&](auto& values, std::size_t count) {
        values.resize(count);
        stream.read(reinterpret_cast<char*>(values.data()),
                    static_cast<std::streamsize>(count * sizeof values[0]));
    };
    for (Table& table : weights.tables_) {
        read(table.bytes, analysis::kNetworkBytes);
        read(table.factors, analysis::kNetworkOutputs);
        read(table.biases, analysis::kNetworkOutputs);
    }
    if (!stream || stream.peek() != std::ifstream::traits_type::eof()) {
        error = file.string() + ": no tables of these networks";
        return std::nullopt;
    }
    return weights;
}

analysis::TrainedNetworks FoldWeights::Networks() const {
    analysis::TrainedNetworks networks{};
    for (std::size_t n = 0; n < networks.size(); ++n) {
        networks[n] = {tables_[n].bytes.data(), tables_[n].factors.data(), tables_[n].biases.data()};
    }
    return networks;
}

}  // namespace kx::evaluation
