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
        table.weights = {table.bytes.data(), table.factors.data(), table.biases.data()};
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
        networks[n] = &tables_[n].weights;
    }
    return networks;
}

FoldNetworks::FoldNetworks() {
    workspaces_.push_back(std::make_unique<analysis::Workspace>());
}

std::unique_ptr<FoldNetworks> FoldNetworks::Read(const std::filesystem::path& folder, std::string& error,
                                                 const analysis::Joining& joining) {
    auto networks = std::make_unique<FoldNetworks>();
    networks->weights_.reserve(kFolds);
    for (std::size_t fold = 0; fold < kFolds; ++fold) {
        auto weights = FoldWeights::Read(folder / ("fold" + std::to_string(fold) + ".weights"), error);
        if (!weights) {
            return nullptr;
        }
        networks->weights_.push_back(std::move(*weights));
        networks->workspaces_.insert(
            networks->workspaces_.end() - 1,
            std::make_unique<analysis::Workspace>(networks->weights_.back().Networks(), joining));
    }
    std::ifstream records(folder / "records.txt");
    int record = 0;
    for (std::size_t fold = 0; records >> record >> fold && fold < kFolds;) {
        networks->folds_[record] = fold;
    }
    if (!records.eof()) {
        error = (folder / "records.txt").string() + ": no list of records and folds";
        return nullptr;
    }
    return networks;
}

std::optional<std::size_t> FoldNetworks::FoldOf(int record) const {
    const auto found = folds_.find(record);
    return found == folds_.end() ? std::nullopt : std::optional(found->second);
}

analysis::Workspace& FoldNetworks::Of(int record) {
    const auto fold = FoldOf(record);
    return fold ? *workspaces_[*fold] : *workspaces_.back();
}

}  // namespace kx::evaluation
