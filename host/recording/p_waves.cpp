#include "host/recording/p_waves.h"

#include <algorithm>
#include <cmath>

namespace kx::recording {

namespace {

// What lies before the QRS complex holds a P wave whose PR interval is at most as long.
constexpr std::ptrdiff_t kNearSpan = ToAtrialSamples(210);
constexpr std::ptrdiff_t kFarSpan = ToAtrialSamples(320);
constexpr double kSame = 0.6;  // correlation with the median of the other beats
constexpr float kLeastNoise = 2;
constexpr std::size_t kFewestBeats = 3;
constexpr std::ptrdiff_t kPeakMargin = ToAtrialSamples(40);

using Window = std::array<Trace, kLeadCount>;

void RemoveLine(Trace& trace) {
    const auto last = static_cast<float>(trace.size() - 1);
    double sum = 0;
    double moment = 0;
    double square = 0;
    for (std::size_t k = 0; k < trace.size(); ++k) {
        const double ramp = static_cast<double>(static_cast<float>(k) / last) - 0.5;
        sum += double{trace[k]};
        moment += double{trace[k]} * ramp;
        square += ramp * ramp;
    }
    for (std::size_t k = 0; k < trace.size(); ++k) {
        const double ramp = static_cast<double>(static_cast<float>(k) / last) - 0.5;
        trace[k] -= static_cast<float>(sum / static_cast<double>(trace.size()) + moment / square * ramp);
    }
}

// The values of each sample over the windows in order, so that leaving one out sorts nothing again:
// recordings last up to half an hour.
class Columns {
  public:
    explicit Columns(const std::vector<Window>& windows) : count_(windows.size()) {
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            sorted_[lead].resize(windows[0][lead].size());
            for (std::size_t k = 0; k < sorted_[lead].size(); ++k) {
                Trace& column = sorted_[lead][k];
                for (const Window& window : windows) {
                    column.push_back(window[lead][k]);
                }
                std::sort(column.begin(), column.end());
            }
        }
    }

    // Each sample's median, over all windows or without one of them.
    Window Medians(const Window* without = nullptr) const {
        Window medians;
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            for (std::size_t k = 0; k < sorted_[lead].size(); ++k) {
                const Trace& column = sorted_[lead][k];
                const std::size_t left =
                    without ? static_cast<std::size_t>(
                                  std::lower_bound(column.begin(), column.end(), (*without)[lead][k]) -
                                  column.begin())
                            : count_;
                const std::size_t count = count_ - (without ? 1 : 0);
                const auto at = [&](std::size_t n) { return double{column[n < left ? n : n + 1]}; };
                const double upper = at(count / 2);
                medians[lead].push_back(
                    static_cast<float>(count % 2 != 0 ? upper : (upper + at(count / 2 - 1)) / 2));
            }
        }
        return medians;
    }

  private:
    std::size_t count_;
    std::array<std::vector<Trace>, kLeadCount> sorted_;
};

double Product(const Window& a, const Window& b) {
    double product = 0;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t k = 0; k < a[lead].size(); ++k) {
            product += double{a[lead][k]} * double{b[lead][k]};
        }
    }
    return product;
}

LeadScales NoiseOf(const std::vector<Window>& windows, const Window& median) {
    LeadScales noise{};
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        std::vector<float> differences;
        for (const Window& window : windows) {
            for (std::size_t k = 0; k < window[lead].size(); ++k) {
                differences.push_back(std::abs(window[lead][k] - median[lead][k]));
            }
        }
        noise[lead] = static_cast<float>(Median(differences)) + kLeastNoise;
    }
    return noise;
}

// Where the leads together stand out most.
std::ptrdiff_t PeakOf(const Window& median, const LeadScales& noise) {
    Trace height(median[0].size());
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        for (std::size_t k = 0; k < height.size(); ++k) {
            height[k] += std::abs(median[lead][k]) / noise[lead];
        }
    }
    const Trace smooth = MovingMean(height, 3);
    const auto end = smooth.end() - kPeakMargin;
    return std::max_element(smooth.begin() + kPeakMargin / 2, end) - smooth.begin();
}

std::optional<WavesBeforeBeats> Compare(const AtrialSignal& signal, std::ptrdiff_t span) {
    std::vector<Window> windows;
    std::vector<std::size_t> beats;
    for (std::size_t i = 0; i < signal.beats.size(); ++i) {
        const std::ptrdiff_t first = signal.beats[i] + signal.qrsOnset - span;
        if (!signal.dominant[i] || first < 0) {
            continue;
        }
        Window window;
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            window[lead].assign(signal.leads[lead].begin() + first,
                                signal.leads[lead].begin() + first + span);
            RemoveLine(window[lead]);
        }
        windows.push_back(std::move(window));
        beats.push_back(i);
    }
    if (windows.size() < kFewestBeats) {
        return std::nullopt;
    }
    WavesBeforeBeats waves;
    const Window median = Columns(windows).Medians();
    waves.noise = NoiseOf(windows, median);
    waves.peak = PeakOf(median, waves.noise) + signal.qrsOnset - span;
    waves.before.resize(signal.beats.size());
    for (Window& window : windows) {
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            for (float& value : window[lead]) {
                value /= waves.noise[lead];
            }
        }
    }
    const Columns columns(windows);
    std::size_t compared = 0;
    std::size_t same = 0;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const Window others = columns.Medians(&windows[i]);
        const double scale = std::sqrt(Product(windows[i], windows[i]) * Product(others, others));
        const bool isSame = scale > 0 && Product(windows[i], others) > kSame * scale;
        waves.before[beats[i]] = isSame;
        compared += signal.kept[beats[i]];
        same += signal.kept[beats[i]] && isSame;
    }
    waves.part = compared == 0 ? 0 : static_cast<double>(same) / static_cast<double>(compared);
    return waves;
}

}  // namespace

std::optional<WavesBeforeBeats> FindWavesBeforeBeats(const AtrialSignal& signal) {
    auto near = Compare(signal, kNearSpan);
    auto far = Compare(signal, std::min(kFarSpan, signal.rr - signal.qt));
    return near && far && far->part > near->part ? far : near;
}

}  // namespace kx::recording
