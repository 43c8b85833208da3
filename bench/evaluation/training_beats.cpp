#include "bench/evaluation/training_beats.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <span>

#include "host/recording/aligned_beats.h"
#include "host/recording/median_beat.h"
#include "suite/kxanalyze/beat.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::evaluation {
namespace {

void WriteSamples(std::ostream& file, const recording::Recording& recording) {
    for (const std::vector<float>& lead : recording.leads) {
        for (const float value : lead) {
            const auto bits = static_cast<std::uint16_t>(
                static_cast<std::int16_t>(std::clamp(std::round(value), -32768.0f, 32767.0f)));
            file.put(static_cast<char>(bits & 0xFF));
            file.put(static_cast<char>(bits >> 8));
        }
    }
}

void WriteBoundary(std::ostream& file, const std::optional<double>& ms) {
    if (ms) {
        file << ' ' << *ms;
    } else {
        file << " -";
    }
}

void WriteMarks(std::ostream& file, std::span<const std::vector<MarkedBeat>> marks) {
    for (std::size_t lead = 0; lead < marks.size(); ++lead) {
        for (const MarkedBeat& beat : marks[lead]) {
            file << "mark " << lead << ' ' << beat.qrs.peak;
            for (const MarkedWave& wave :
                 {beat.p.value_or(MarkedWave{}), beat.qrs, beat.t.value_or(MarkedWave{})}) {
                WriteBoundary(file, wave.on);
                WriteBoundary(file, wave.off);
            }
            file << '\n';
        }
    }
}

}  // namespace

bool WriteTrainingBeats(const std::filesystem::path& folder, const MarkedRecord& record, std::string& error) {
    const recording::AlignedBeats beats = recording::AlignBeats(record.recording);
    const auto median = recording::MakeMedianBeat(record.recording, error);
    if (!median) {
        return false;
    }
    analysis::Episode episode({median->leads.begin(), median->leads.end()}, recording::kWorkingRate,
                              recording::kResolutionNv);
    episode.Set().rrInterval = static_cast<std::uint16_t>(median->rrMs);
    analysis::Beat beat;
    analysis::ReadBeat(episode.Get(), beat);
    const std::string name = std::to_string(record.number);
    std::ofstream samples(folder / (name + ".i16"), std::ios::binary);
    WriteSamples(samples, beats.heart);
    std::ofstream text(folder / (name + ".txt"), std::ios::binary);
    text << "rr " << median->rrMs << "\ncentre " << beat.centre << '\n';
    for (std::size_t i = 0; i < median->beatsMs.size(); ++i) {
        text << "beat " << median->beatsMs[i] << ' ' << median->kept[i] << ' ' << median->dominant[i] << '\n';
    }
    WriteMarks(text, record.marks);
    if (!samples.flush() || !text.flush()) {
        error = folder.string() + ": the beats cannot be written";
        return false;
    }
    return true;
}

}  // namespace kx::evaluation
