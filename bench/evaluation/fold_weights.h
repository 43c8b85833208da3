// The networks of the cross-validation: each is trained on four fifths of the marked records and judged on
// the fifth that it has not seen.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "suite/kxanalyze/delineator.h"
#include "suite/kxanalyze/network_weights.h"

namespace kx::evaluation {

inline constexpr std::size_t kFolds = 5;

// The tables of a fold as tools/train_delineator.sh writes them: of each network the bytes, then the factors
// and the biases as 32-bit little-endian floating-point numbers.
class FoldWeights {
  public:
    // Nothing, and one line in `error`, when the file is not such a table.
    static std::optional<FoldWeights> Read(const std::filesystem::path& file, std::string& error);

    // Valid as long as this is and is not moved.
    analysis::TrainedNetworks Networks() const;

  private:
    struct Table {
        std::vector<std::int8_t> bytes;
        std::vector<float> factors;
        std::vector<float> biases;
        analysis::NetworkWeights weights;  // the three
    };
    std::array<Table, analysis::kNetworks> tables_;
};

// A network for every record: that of the fold that has not seen it, or the shipped one for a record that
// none of the networks was trained on.
class FoldNetworks {
  public:
    // All records by the shipped network.
    FoldNetworks();
    // folder: what tools/train_delineator.sh has written, fold0.weights to fold4.weights and records.txt, of
    // each record a line with its number and its fold. Nothing, and one line in `error`, when it cannot be
    // read.
    static std::unique_ptr<FoldNetworks> Read(const std::filesystem::path& folder, std::string& error,
                                              const analysis::Joining& joining = {});

    analysis::Workspace& Of(int record);
    // Nothing for a record that none of the networks was trained on.
    std::optional<std::size_t> FoldOf(int record) const;

  private:
    std::vector<FoldWeights> weights_;
    std::vector<std::unique_ptr<analysis::Workspace>> workspaces_;  // of the folds, the shipped one last
    std::map<int, std::size_t> folds_;
};

}  // namespace kx::evaluation
