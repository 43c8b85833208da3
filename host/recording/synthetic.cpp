#include "host/recording/synthetic.h"

#include <cmath>
#include <numbers>

namespace kx::recording {

namespace {

using Vector = std::array<double, 3>;

// One Gaussian of the heart's dipole, microvolts along x (to the left), y (to the feet) and z (to the back).
struct Wave {
    double centreMs;  // from the R wave, at 60 beats a minute
    double widthMs;   // standard deviation
    Vector moment;
};

// P, the septal, main and basal vectors of the QRS complex, and T as a slow rise with a steeper fall.
constexpr Wave kWaves[] = {
    {-170, 20, {120, 80, -50}}, {-19, 6, {-130, -40, -170}}, {0, 9, {1150, 950, 230}},
    {20, 8, {-140, -60, 520}},  {235, 45, {150, 110, -110}}, {275, 28, {170, 120, -120}},
};
constexpr std::size_t kFirstTWave = 4;

// I, II and V1 to V6 from x, y, z: the Dower matrix.
struct Projection {
    Lead lead;
    Vector weights;
};
constexpr Projection kProjections[] = {
    {kLeadI, {0.632, -0.235, 0.059}},
    {kLeadII, {0.235, 1.066, -0.132}},
    {kLeadV1, {-0.515, 0.157, -0.917}},
    {static_cast<Lead>(kLeadV1 + 1), {0.044, 0.164, -1.387}},
    {static_cast<Lead>(kLeadV1 + 2), {0.882, 0.098, -1.277}},
    {static_cast<Lead>(kLeadV1 + 3), {1.213, 0.127, -0.601}},
    {static_cast<Lead>(kLeadV1 + 4), {1.125, 0.127, -0.086}},
    {static_cast<Lead>(kLeadV1 + 5), {0.831, 0.076, 0.230}},
};

// The weights of any lead: the limb leads follow from I and II.
Vector WeightsOf(std::size_t lead) {
    const Vector one = kProjections[0].weights;
    const Vector two = kProjections[1].weights;
    const auto mix = [&](double ofOne, double ofTwo) {
        return Vector{ofOne * one[0] + ofTwo * two[0], ofOne * one[1] + ofTwo * two[1],
                      ofOne * one[2] + ofTwo * two[2]};
    };
    switch (lead) {
        case kLeadIII:
            return mix(-1, 1);
        case kLeadAVR:
            return mix(-0.5, -0.5);
        case kLeadAVL:
            return mix(1, -0.5);
        case kLeadAVF:
            return mix(-0.5, 1);
        default:
            for (const Projection& projection : kProjections) {
                if (projection.lead == lead) {
                    return projection.weights;
                }
            }
            return {};
    }
}

// A generator of its own (xorshift, G. Marsaglia, J. Stat. Softw. 8 (14), 2003): the library's distributions
// differ between compilers.
class Generator {
  public:
    explicit Generator(std::uint32_t seed) : state_(seed != 0 ? seed : 1) {}
    // 0 to 1, both excluded.
    double Uniform() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return (static_cast<double>(state_) + 0.5) / 4294967296.0;
    }
    // Standard deviation 1, by the sum of twelve.
    double Normal() {
        double sum = -6;
        for (int i = 0; i < 12; ++i) {
            sum += Uniform();
        }
        return sum;
    }

  private:
    std::uint32_t state_;
};

double MeanRrMs(const SyntheticOptions& options) {
    return 60000 / options.beatsPerMinute;
}

Vector DipoleAt(const SyntheticOptions& options, double msFromR) {
    // The T wave comes later at slow rates, as the square root of the RR interval (Bazett).
    const double stretch = std::sqrt(MeanRrMs(options) / 1000);
    Vector dipole{};
    for (std::size_t k = 0; k < std::size(kWaves); ++k) {
        const Wave& wave = kWaves[k];
        const double centre = k >= kFirstTWave ? wave.centreMs * stretch : wave.centreMs;
        const double width = k >= kFirstTWave ? wave.widthMs * stretch : wave.widthMs;
        const double distance = (msFromR - centre) / width;
        const double height = std::exp(-distance * distance / 2);
        for (std::size_t axis = 0; axis < dipole.size(); ++axis) {
            dipole[axis] += wave.moment[axis] * height;
        }
    }
    return dipole;
}

double Project(const Vector& weights, const Vector& dipole) {
    return weights[0] * dipole[0] + weights[1] * dipole[1] + weights[2] * dipole[2];
}

}  // namespace

std::vector<double> SyntheticBeatTimes(const SyntheticOptions& options) {
    Generator random(options.seed);
    std::vector<double> times;
    constexpr double kFirstMs = 480;
    constexpr double kBreathHz = 0.23;
    const double end = options.seconds * 1000;
    for (double time = kFirstMs; time < end;) {
        times.push_back(time);
        const double breath = std::sin(2 * std::numbers::pi * kBreathHz * time / 1000);
        time += MeanRrMs(options) + options.rrVariationMs * (0.7 * breath + 0.6 * (random.Uniform() - 0.5));
    }
    return times;
}

double SyntheticBeatValue(const SyntheticOptions& options, std::size_t lead, double msFromR) {
    return Project(WeightsOf(lead), DipoleAt(options, msFromR));
}

Recording MakeSyntheticRecording(const SyntheticOptions& options) {
    constexpr double kReachMs = 600;  // beyond it a beat is below a nanovolt
    constexpr double kWanderHz = 0.23;
    constexpr double kMainsHz = 50;
    Recording recording;
    recording.name = "SYNTHETIC";
    recording.source = "Synthetic ECG";
    recording.sampleRate = options.sampleRate;
    recording.patient.id = recording.name;
    recording.patient.ageDays = 45 * 365;
    recording.patient.sex = Sex::kFemale;
    recording.device = {recording.source, recording.name,
                        std::to_string(std::lround(recording.sampleRate)) + " Hz"};
    recording.diagnoses = {"Built-in recording: sinus rhythm, computed"};
    recording.acquisitionTime = {2026, 14, 2, 30, 9, 0, 0};  // 14 February 2026, 9:30
    const std::vector<double> beats = SyntheticBeatTimes(options);
    Generator random(options.seed ^ 0x5DEECE66u);
    const auto count = static_cast<std::size_t>(std::floor(options.seconds * options.sampleRate));
    for (std::size_t i = 0; i < count; ++i) {
        const double ms = static_cast<double>(i) * 1000 / options.sampleRate;
        Vector dipole{};
        for (const double beat : beats) {
            if (std::abs(ms - beat) > kReachMs) {
                continue;
            }
            const Vector one = DipoleAt(options, ms - beat);
            for (std::size_t axis = 0; axis < dipole.size(); ++axis) {
                dipole[axis] += one[axis];
            }
        }
        const double turns = 2 * std::numbers::pi * ms / 1000;
        for (std::size_t k = 0; k < std::size(kProjections); ++k) {
            const auto phase = static_cast<double>(k);
            const double wander = options.wanderMicrovolts * std::sin(kWanderHz * turns + phase);
            const double mains = options.mainsMicrovolts * std::sin(kMainsHz * turns + phase / 2);
            const double value = Project(kProjections[k].weights, dipole) + wander + mains +
                                 options.noiseMicrovolts * random.Normal();
            recording.leads[kProjections[k].lead].push_back(static_cast<float>(value));
        }
    }
    // Computed for the recording's own sake: the leads count as recorded.
    for (const Lead lead : {kLeadIII, kLeadAVR, kLeadAVL, kLeadAVF}) {
        recording.derived[lead] = true;
    }
    DeriveLeads(recording);
    recording.derived = {};
    return recording;
}

}  // namespace kx::recording
