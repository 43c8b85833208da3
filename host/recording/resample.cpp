#include "host/recording/resample.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kx::recording {

namespace {

constexpr double kZeroCrossings = 16;

double Sinc(double x) {
    const double angle = std::numbers::pi * x;
    return std::abs(x) < 1e-9 ? 1 : std::sin(angle) / angle;
}

// At -1 to 1.
double Blackman(double x) {
    return 0.42 + 0.5 * std::cos(std::numbers::pi * x) + 0.08 * std::cos(2 * std::numbers::pi * x);
}

// The weights of the input samples around a place between them.
class Kernel {
  public:
    // bandwidth: the cutoff as a part of the input's rate, x 2.
    explicit Kernel(double bandwidth) : bandwidth_(bandwidth), reach_(kZeroCrossings / bandwidth) {}

    void Place(double position) {
        first_ = static_cast<std::ptrdiff_t>(std::ceil(position - reach_));
        const auto last = static_cast<std::ptrdiff_t>(std::floor(position + reach_));
        weights_.clear();
        double sum = 0;
        for (std::ptrdiff_t i = first_; i <= last; ++i) {
            const double distance = static_cast<double>(i) - position;
            weights_.push_back(Sinc(distance * bandwidth_) * Blackman(distance / reach_));
            sum += weights_.back();
        }
        for (double& weight : weights_) {
            weight /= sum;
        }
    }

    float Apply(const std::vector<float>& samples) const {
        const auto end = static_cast<std::ptrdiff_t>(samples.size()) - 1;
        double value = 0;
        for (std::size_t k = 0; k < weights_.size(); ++k) {
            const std::ptrdiff_t index =
                std::clamp(first_ + static_cast<std::ptrdiff_t>(k), std::ptrdiff_t{0}, end);
            value += weights_[k] * double{samples[static_cast<std::size_t>(index)]};
        }
        return static_cast<float>(value);
    }

  private:
    double bandwidth_;
    double reach_;
    std::ptrdiff_t first_ = 0;
    std::vector<double> weights_;
};

}  // namespace

Recording ResampleToWorkingRate(const Recording& recording) {
    const double step = recording.sampleRate / kWorkingRate;
    if (recording.SampleCount() == 0 || !(recording.sampleRate > 0) || std::abs(step - 1) < 1e-12) {
        return recording;
    }
    Recording result = recording;
    result.sampleRate = kWorkingRate;
    const auto last = static_cast<double>(recording.SampleCount() - 1);
    const auto count = static_cast<std::size_t>(std::floor(last / step + 1e-9)) + 1;
    for (std::vector<float>& lead : result.leads) {
        lead.resize(count);
    }
    Kernel kernel(step > 1 ? 0.9 / step : 1.0);
    for (std::size_t i = 0; i < count; ++i) {
        kernel.Place(static_cast<double>(i) * step);
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            result.leads[lead][i] = kernel.Apply(recording.leads[lead]);
        }
    }
    for (Gap& gap : result.gaps) {
        gap.first = static_cast<std::size_t>(static_cast<double>(gap.first) / step);
        gap.end = std::min(count, static_cast<std::size_t>(std::ceil(static_cast<double>(gap.end) / step)));
    }
    return result;
}

}  // namespace kx::recording
