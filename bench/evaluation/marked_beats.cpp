#include "bench/evaluation/marked_beats.h"

namespace kx::evaluation {
namespace {

constexpr double kLongestPToQrs = 450;  // between the peaks, ms
constexpr double kLongestQrsToT = 700;

bool IsPeak(const recording::WfdbAnnotation& mark) {
    return mark.code == recording::kPWavePeak || mark.code == recording::kNormalBeat ||
           mark.code == recording::kTWavePeak;
}

}  // namespace

std::vector<MarkedBeat> JoinMarks(std::span<const recording::WfdbAnnotation> marks, double sampleRate) {
    const auto ms = [&](std::size_t i) { return static_cast<double>(marks[i].sample) * 1000 / sampleRate; };
    std::vector<MarkedBeat> beats;
    std::optional<MarkedWave> p;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (!IsPeak(marks[i])) {
            continue;
        }
        MarkedWave wave{.peak = ms(i), .on = {}, .off = {}};
        if (i > 0 && marks[i - 1].code == recording::kWaveOnset) {
            wave.on = ms(i - 1);
        }
        if (i + 1 < marks.size() && marks[i + 1].code == recording::kWaveOffset) {
            wave.off = ms(i + 1);
        }
        if (marks[i].code == recording::kPWavePeak) {
            p = wave;
        } else if (marks[i].code == recording::kNormalBeat) {
            const bool joined = p && wave.peak - p->peak <= kLongestPToQrs;
            beats.push_back({wave, joined ? p : std::nullopt, std::nullopt});
            p.reset();
        } else if (!beats.empty() && !beats.back().t && wave.peak - beats.back().qrs.peak <= kLongestQrsToT) {
            beats.back().t = wave;
        }
    }
    return beats;
}

std::optional<std::vector<MarkedBeat>> ReadMarkedBeats(const std::filesystem::path& file, double sampleRate,
                                                       std::string& error) {
    const auto marks = recording::ReadAnnotations(file, error);
    if (!marks) {
        return std::nullopt;
    }
    return JoinMarks(*marks, sampleRate);
}

}  // namespace kx::evaluation
