#include "host/recording/mains_hum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "host/recording/signal_math.h"

namespace kx::recording {

namespace {

using Phasor = std::complex<double>;

// Amplitude and phase are taken from windows of two seconds, one every second.
constexpr std::ptrdiff_t kWindow = ToSamples(2000);
constexpr std::ptrdiff_t kShortest = ToSamples(500);
// A hum keeps its amplitude, and its phase turns evenly: the products of the phasors of neighbouring windows
// add up.
constexpr double kSteady = 0.8;
constexpr double kPartOfRange = 0.01;

double Turn(double hertz, double samples) {
    return 2 * std::numbers::pi * hertz * samples / kWorkingRate;
}

// The phasor of each window of a lead.
std::vector<Phasor> FindPhasors(const Trace& lead, double hertz) {
    const auto count = static_cast<std::ptrdiff_t>(lead.size());
    const std::ptrdiff_t window = std::min(kWindow, count);
    const std::ptrdiff_t step = std::max<std::ptrdiff_t>(1, window / 2);
    std::vector<Phasor> phasors;
    for (std::ptrdiff_t first = 0; first + window <= count; first += step) {
        Phasor sum = 0;
        for (std::ptrdiff_t i = 0; i < window; ++i) {
            const double weight = 1 - std::cos(2 * std::numbers::pi * (static_cast<double>(i) + 0.5) /
                                               static_cast<double>(window));
            sum += weight * double{lead[static_cast<std::size_t>(first + i)]} *
                   std::polar(1.0, -Turn(hertz, static_cast<double>(first + i)));
        }
        phasors.push_back(2.0 * sum / static_cast<double>(window));
    }
    return phasors;
}

struct Hum {
    double power = 0;    // of all windows
    Phasor turning = 0;  // sum of the products of neighbours

    void Add(const std::vector<Phasor>& phasors) {
        for (std::size_t i = 0; i < phasors.size(); ++i) {
            const Phasor& before = phasors[i == 0 ? 0 : i - 1];
            power += std::norm(phasors[i]);
            turning += i == 0 ? Phasor(std::norm(phasors[i])) : phasors[i] * std::conj(before);
        }
    }
    bool IsSteady() const { return std::abs(turning) > kSteady * power; }
};

void Subtract(Trace& lead, const std::vector<Phasor>& phasors, double hertz) {
    const auto window = static_cast<double>(std::min(kWindow, static_cast<std::ptrdiff_t>(lead.size())));
    const auto last = static_cast<double>(phasors.size() - 1);
    for (std::size_t i = 0; i < lead.size(); ++i) {
        const auto place = static_cast<double>(i);
        const double position =
            std::clamp((place - window / 2) / std::max(1.0, std::floor(window / 2)), 0.0, last);
        const auto before = static_cast<std::size_t>(position);
        const std::size_t behind = std::min(before + 1, phasors.size() - 1);
        const double part = position - std::floor(position);
        const Phasor phasor = phasors[before] * (1 - part) + phasors[behind] * part;
        lead[i] -= static_cast<float>((phasor * std::polar(1.0, Turn(hertz, place))).real());
    }
}

// Returns its amplitude in the lead that had most of it, 0 when there is none.
double RemoveHumOf(Recording& recording, int nominal) {
    Hum hum;
    for (const Trace& lead : recording.leads) {
        hum.Add(FindPhasors(lead, nominal));
    }
    if (!hum.IsSteady()) {
        return 0;
    }
    // The mains are up to half a hertz away from what they should be; windows follow one another by a second.
    const std::ptrdiff_t step = std::min(kWindow, static_cast<std::ptrdiff_t>(recording.SampleCount())) / 2;
    const double stepSeconds = static_cast<double>(step) / kWorkingRate;
    const double hertz = nominal + std::arg(hum.turning) / (2 * std::numbers::pi * stepSeconds);
    double largest = 0;
    for (Trace& lead : recording.leads) {
        const std::vector<Phasor> phasors = FindPhasors(lead, hertz);
        const auto [lowest, highest] = std::minmax_element(lead.begin(), lead.end());
        double mean = 0;
        for (const Phasor& phasor : phasors) {
            mean += std::abs(phasor) / static_cast<double>(phasors.size());
        }
        if (mean > kPartOfRange * double{*highest - *lowest}) {
            Subtract(lead, phasors, hertz);
            largest = std::max(largest, mean);
        }
    }
    return largest;
}

}  // namespace

MainsHum RemoveMainsHum(Recording& recording) {
    if (static_cast<std::ptrdiff_t>(recording.SampleCount()) < kShortest) {
        return {};
    }
    for (const int hertz : {50, 60}) {
        if (const double microvolts = RemoveHumOf(recording, hertz); microvolts > 0) {
            return {hertz, microvolts};
        }
    }
    return {};
}

}  // namespace kx::recording
