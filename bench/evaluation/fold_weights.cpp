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

FoldNetworks::FoldNetworks() {
    workspaces_.push_back(std::make_unique<analysis::Workspace>());
}

std::unique_ptr<FoldNetworks> FoldNetworks::Read(const std::filesystem::path& folder, std::string& error) {
    auto networks = std::make_unique<FoldNetworks>();
    for (std::size_t fold = 0; fold < kFolds; ++fold) {
        auto weights = FoldWeights::Read(folder / ("fold" + std::to_string(fold) + ".weights"), error);
        if (!weights) {
            return nullptr;
        }
        networks->weights_.push_back(std::move(*weights));
        networks->workspaces_.insert(
            networks->workspaces_.end() - 1,
            std::make_unique<analysis::Workspace>(networks->weights_.back().Networks()));
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

analysis::Workspace& FoldNetworks::Of(int record) {
    const auto found = folds_.find(record);
    return found == folds_.end() ? *workspaces_.back() : *workspaces_[found->second];
}

}  // namespace kx::evaluation
