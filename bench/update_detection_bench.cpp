// Re-measurement of a beat while a marker is dragged: 12 leads, 1200 ms, 500 samples a second.
#include <cstdint>

#include "bench/ratio.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace {

// No measurement can do with less than reading every sample once: the floor is the sum of squares of all
// leads in microvolts.
double ReadEverySample(const KxEpisodeRecord& episode) {
    const double microvolts = episode.resolutionNv / 1000.0;
    double sum = 0;
    for (std::uint32_t i = 0; i < episode.storedLeads * episode.samplesPerLead; ++i) {
        const double value = episode.samples[i] * microvolts;
        sum += value * value;
    }
    return sum;
}

// What a step of a drag and the first measurement of a beat may take.
constexpr double kLargestStepNs = 1e6;
constexpr double kLargestFirstNs = 15e6;

// A step compares every sample with those that were measured, and finds the components of every lead between
// its markers.
constexpr double kLargestRatio = 12;

}  // namespace

int main() {
    kx::analysis::Episode episode{kx::analysis::SyntheticBeat{}};
    kx::analysis::Workspace workspace;
    if (kx::analysis::MeasureEpisode(episode.Get(), workspace) == 0) {
        return 1;
    }
    // The marker moves to and fro, so that no two calls in a row are the same.
    int step = 0;
    episode.Set().leads[0].globalManualFlags = KX_MANUAL_QRS_ON;
    const auto measured = kx::bench::Measure(
        [&] { kx::bench::Keep(ReadEverySample(*kx::bench::Fresh(episode.Get()))); },
        [&] {
            episode.Set().leads[0].qrsOn = static_cast<std::uint16_t>(380 + (step = (step + 7) % 20));
            kx::analysis::UpdateDetection(episode.Get(), workspace);
        });
    kx::bench::PrintLine("update_detection", measured, kLargestRatio);
    kx::bench::PrintLine("update_detection_of_1_ms", {kLargestStepNs, measured.subjectNs}, 1);

    // A sample that changes makes another beat of it.
    const double first = kx::bench::MeasureAlone([&] {
        episode.Lead(0)[0] = static_cast<std::int16_t>(step = (step + 1) % 5);
        kx::analysis::MeasureEpisode(episode.Get(), workspace);
    });
    kx::bench::PrintLine("first_measurement_of_15_ms", {kLargestFirstNs, first}, 1);
    return 0;
}
