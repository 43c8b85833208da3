// A small convolutional network that reads the leads of a beat together and says where their waves begin and
// end.
//
// Every lead goes through the same layers, at 250, 125 and 62.5 places a second; there it is joined with the
// mean and the maximum over all leads, so that any number of them works; then back up, beside the finer
// layers. Each point is a distribution over the places. The idea of such a network for this task: V.
// Moskalenko, N. Zolotykh, G. Osipov, doi 10.48550/arXiv.2001.04689; the joining of the leads and the points
// of all leads together are what a median beat adds. tools/delineator/train.py trains it.
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "kxdialogs.h"
#include "suite/kxanalyze/network_weights.h"

namespace kx::analysis {

inline constexpr int kNetworkPlaces = 272;    // what the network sees: so many places,
inline constexpr int kNetworkStepMs = 4;      // so many ms apart,
inline constexpr int kNetworkBeforeMs = 440;  // the first so long before the centre of the complex
inline constexpr std::size_t kNetworkInputs = 7;
inline constexpr std::size_t kLeadPoints = 6;   // of a lead: P on, P off, QRS on, QRS off, T on, T off
inline constexpr std::size_t kPointsOfAll = 5;  // of all leads: P on, P off, QRS on, QRS off, T off

// Rows of one length, with room on both sides for the taps of a layer, where they are 0.
class Rows {
  public:
    void Resize(std::size_t rows, int length);
    void Clear() { std::fill(values_.begin(), values_.end(), 0.0f); }
    float* operator[](std::size_t row) { return values_.data() + row * Pitch() + kRoom; }
    const float* operator[](std::size_t row) const { return values_.data() + row * Pitch() + kRoom; }
    std::size_t Count() const { return count_; }
    int Length() const { return length_; }

  private:
    static constexpr std::size_t kRoom = 8;
    std::size_t Pitch() const { return static_cast<std::size_t>(length_) + 2 * kRoom; }
    std::size_t count_ = 0;
    int length_ = 0;
    std::vector<float> values_;
};

// What networks see of a beat: where each point lies, as the sum of their distributions; leads in the order
// in which they were added.
struct NetworkOutput {
    Rows global;
    Rows leads;        // kLeadPoints rows of each
    double pWave = 0;  // the sum of the logarithms of the odds that there is one

    void Clear(std::size_t leadCount);
};

// The medians of the distributions, ms from the centre of the complex, and the mean logarithm of the odds.
struct NetworkPoints {
    std::array<double, kPointsOfAll> global{};
    std::array<std::array<double, kLeadPoints>, KX_MEASURED_LEADS> leads{};
    std::array<double, KX_MEASURED_LEADS> earlyPOff{};  // of the leads' P ends the lower quartile
    double pWave = 0;

    void Take(const NetworkOutput& output, std::size_t networks);
};

// A network in memory of its own, which it takes at its first run for so many leads and keeps.
class Network {
  public:
    explicit Network(const NetworkWeights& weights);

    // A beat: Begin, then its leads (codes 0 to 14; input: see network_input.h), then Conclude, which adds
    // what it sees to an output cleared for as many leads.
    void Begin();
    void AddLead(const Rows& input, std::size_t leadCode);
    void Conclude(NetworkOutput& output);

  private:
    struct LeadRows {
        Rows fine, middle, coarse;
    };

    void Apply(std::size_t layer, const Rows& in, Rows& out) const;
    void Descend(const LeadRows& lead);

    NetworkWeights weights_;
    std::size_t count_ = 0;
    std::array<LeadRows, KX_MEASURED_LEADS> leads_;
    // Of the lead in work, by rate; what all leads have in common; the points.
    Rows halved_, joined_, step_, raised_, middle_, raisedMiddle_, top_;
    Rows pooled_, pooledTop_, global_;
    Rows points_, globalPoints_;
};

}  // namespace kx::analysis
