// The networks of the cross-validation: each is trained on four fifths of the marked records and judged on
// the fifth that it has not seen.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "suite/kxanalyze/network_weights.h"

namespace kx::evaluation {

inline constexpr std::size_t kFolds = 5;

// Of the records in ascending order the n-th is judged by the network of this fold.
constexpr std::size_t FoldOf(std::size_t n) {
    return n % kFolds;
}

// The tables of a fold as tools/train_delineator.sh writes them: of each network the bytes, then the factors
// and the biases as 32-bit little-endian floating-point numbers.
class FoldWeights {
  public:
    // Nothing, and one line in `error`, when the file is not such a table.
    static std::optional<FoldWeights> Read(const std::filesystem::path& file, std::string& error);

    // Valid as long as this is.
    analysis::TrainedNetworks Networks() const;

  private:
    struct Table {
        std::vector<std::int8_t> bytes;
        std::vector<float> factors;
        std::vector<float> biases;
    };
    std::array<Table, analysis::kNetworks> tables_;
};

}  // namespace kx::evaluation
