#include "suite/kxanalyze/network.h"

#include <algorithm>

#include "suite/kxanalyze/network_layers.h"

namespace kx::analysis {
namespace {

constexpr int kMiddlePlaces = kNetworkPlaces / 2;
constexpr int kCoarsePlaces = kNetworkPlaces / 4;

constexpr std::size_t kPOffOfLead = 1;

double ToMs(double place) {
    return place * kNetworkStepMs - kNetworkBeforeMs;
}

// The mean and the largest of a row.
struct Summary {
    float mean = 0;
    float largest = 0;
};
Summary Summarise(const float* row, int length) {
    Summary summary{0, row[0]};
    for (int t = 0; t < length; ++t) {
        summary.mean += row[t];
        summary.largest = std::max(summary.largest, row[t]);
    }
    summary.mean /= static_cast<float>(length);
    return summary;
}

}  // namespace

void NetworkOutput::Clear(std::size_t leadCount) {
    global.Resize(kPointsOfAll, kNetworkPlaces);
    leads.Resize(leadCount * kLeadPoints, kNetworkPlaces);
    global.Clear();
    leads.Clear();
    pWave = 0;
}

void NetworkPoints::Take(const NetworkOutput& output, std::size_t networks) {
    const auto quantile = [](const float* distribution, double part) {
        return ToMs(QuantilePlace(distribution, kNetworkPlaces, part));
    };
    for (std::size_t point = 0; point < kPointsOfAll; ++point) {
        global[point] = quantile(output.global[point], 0.5);
    }
    for (std::size_t row = 0; row < output.leads.Count(); ++row) {
        leads[row / kLeadPoints][row % kLeadPoints] = quantile(output.leads[row], 0.5);
        if (row % kLeadPoints == kPOffOfLead) {
            earlyPOff[row / kLeadPoints] = quantile(output.leads[row], 0.25);
        }
    }
    pWave = output.pWave / static_cast<double>(networks);
}

Network::Network(const NetworkWeights& weights) : weights_(weights) {}

void Network::Begin() {
    count_ = 0;
    halved_.Resize(kMiddle, kMiddlePlaces);
    pooled_.Resize(2 * kCoarse, kCoarsePlaces);
    joined_.Resize(kCoarse, kCoarsePlaces);
    step_.Resize(kCoarse, kCoarsePlaces);
    raised_.Resize(kCoarse, kMiddlePlaces);
    middle_.Resize(kMiddle, kMiddlePlaces);
    raisedMiddle_.Resize(kMiddle, kNetworkPlaces);
    top_.Resize(kFine, kNetworkPlaces);
    pooledTop_.Resize(2 * kFine, kNetworkPlaces);
    points_.Resize(kLeadPoints, kNetworkPlaces);
    global_.Resize(kGlobal, kNetworkPlaces);
    globalPoints_.Resize(kPointsOfAll, kNetworkPlaces);
}

void Network::AddLead(const Rows& input, std::size_t leadCode) {
    LeadRows& lead = leads_[count_++];
    lead.fine.Resize(kFine, kNetworkPlaces);
    lead.middle.Resize(kMiddle, kMiddlePlaces);
    lead.coarse.Resize(kCoarse, kCoarsePlaces);
    Apply(kToFine, input, lead.fine);
    Apply(kToMiddle, lead.fine, halved_);
    Apply(kAtMiddle, halved_, lead.middle);
    Apply(kToCoarse, lead.middle, lead.coarse);
    const LayerWeights names(weights_, kLeadName);
    for (std::size_t row = 0; row < kCoarse; ++row) {
        const float name = names.At(std::min(leadCode, kLeadNames - 1), row, 0);
        float* const values = lead.coarse[row];
        std::transform(values, values + kCoarsePlaces, values, [&](float value) { return value + name; });
    }
}

void Network::Apply(std::size_t name, const Rows& in, Rows& out) const {
    const LayerWeights layer(weights_, static_cast<LayerName>(name));
    layer.Begin(out);
    layer.Add(in, 0, out);
    Rectify(out);
}

// From the coarse rows of a lead and what all leads have in common back up to its finest.
void Network::Descend(const LeadRows& lead) {
    const LayerWeights join(weights_, kJoin);
    join.Begin(joined_);
    join.Add(lead.coarse, 0, joined_);
    join.Add(pooled_, kCoarse, joined_);
    Rectify(joined_);
    for (const std::size_t step : {kStep1, kStep2, kStep4}) {
        Apply(step, joined_, step_);
        for (std::size_t row = 0; row < kCoarse; ++row) {
            std::transform(joined_[row], joined_[row] + kCoarsePlaces, step_[row], joined_[row],
                           std::plus<>());
        }
    }
    Raise(joined_, raised_);
    const LayerWeights toMiddle(weights_, kUpToMiddle);
    toMiddle.Begin(middle_);
    toMiddle.Add(raised_, 0, middle_);
    toMiddle.Add(lead.middle, kCoarse, middle_);
    Rectify(middle_);
    Raise(middle_, raisedMiddle_);
    const LayerWeights toFine(weights_, kUpToFine);
    toFine.Begin(top_);
    toFine.Add(raisedMiddle_, 0, top_);
    toFine.Add(lead.fine, kMiddle, top_);
    Rectify(top_);
}

void Network::Conclude(NetworkOutput& output) {
    Pool pool(pooled_);
    for (std::size_t i = 0; i < count_; ++i) {
        pool.Add(leads_[i].coarse);
    }
    pool.Conclude();
    Pool top(pooledTop_);
    const LayerWeights leadOut(weights_, kLeadOut);
    for (std::size_t i = 0; i < count_; ++i) {
        Descend(leads_[i]);
        top.Add(top_);
        leadOut.Begin(points_);
        leadOut.Add(top_, 0, points_);
        for (std::size_t point = 0; point < kLeadPoints; ++point) {
            AddDistribution(points_[point], kNetworkPlaces, output.leads[i * kLeadPoints + point]);
        }
    }
    top.Conclude();
    Apply(kGlobalIn, pooledTop_, global_);
    const LayerWeights globalOut(weights_, kGlobalOut);
    globalOut.Begin(globalPoints_);
    globalOut.Add(global_, 0, globalPoints_);
    for (std::size_t point = 0; point < kPointsOfAll; ++point) {
        AddDistribution(globalPoints_[point], kNetworkPlaces, output.global[point]);
    }
    const LayerWeights pWave(weights_, kPWave);
    float sum = pWave.Bias(0);
    for (std::size_t row = 0; row < kGlobal; ++row) {
        const Summary summary = Summarise(global_[row], kNetworkPlaces);
        sum += pWave.At(0, row, 0) * summary.mean + pWave.At(0, kGlobal + row, 0) * summary.largest;
    }
    output.pWave += double{sum};
}

}  // namespace kx::analysis
