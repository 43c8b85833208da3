#include "suite/kxanalyze/beat.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "suite/kxanalyze/delineator.h"

namespace kx::analysis {
namespace {

constexpr std::int16_t kMissing = -32768;
// Widths of the moving means, ms. The spline window of the fine one passes what a QRS complex holds (-3 dB at
// about 60 Hz), that of the wide one what P and T waves hold (about 16 Hz).
constexpr int kFineWidth = 5;
constexpr int kWideWidth = 17;
// A lead whose samples all lie within this span carries no signal.
constexpr double kFlatMicrovolts = 10;

// The samples of a lead, empty when the lead is not stored wholly inside the sample area.
std::span<const std::int16_t> LeadSamples(const KxEpisodeRecord& episode, std::uint32_t code) {
    const std::uint64_t area = std::uint64_t{episode.storedLeads} * episode.samplesPerLead;
    for (const KxLeadSlot& slot : episode.leadTable) {
        if (slot.leadCode == code && std::uint64_t{slot.sampleOffset} + episode.samplesPerLead <= area) {
            return {episode.samples + slot.sampleOffset, episode.samplesPerLead};
        }
    }
    return {};
}

// Microvolts above the first known sample, missing samples bridged by a straight line. False when more is
// missing than there is.
bool Microvolts(std::span<const std::int16_t> samples, double microvoltsPerUnit, Trace& level) {
    level.resize(samples.size());
    std::size_t known = 0;
    int origin = 0;
    std::ptrdiff_t last = -1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (samples[i] == kMissing) {
            continue;
        }
        if (last < 0) {
            origin = samples[i];
        }
        level[i] = (samples[i] - origin) * microvoltsPerUnit;
        const auto here = static_cast<std::ptrdiff_t>(i);
        for (std::ptrdiff_t gap = last + 1; gap < here; ++gap) {
            const double from = last < 0 ? level[i] : level[static_cast<std::size_t>(last)];
            const double part = static_cast<double>(gap - last) / static_cast<double>(here - last);
            level[static_cast<std::size_t>(gap)] = from + (level[i] - from) * (last < 0 ? 1.0 : part);
        }
        last = here;
        ++known;
    }
    if (2 * known < samples.size() || last < 0) {
        return false;
    }
    std::fill(level.begin() + last + 1, level.end(), level[static_cast<std::size_t>(last)]);
    return true;
}

// The sample at a place, the ends continued by their last values.
double SampleAt(const Trace& samples, std::ptrdiff_t place) {
    const auto last = static_cast<std::ptrdiff_t>(samples.size()) - 1;
    return samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(place, 0, last))];
}

// A cubic through the four samples around a place (E. Catmull and R. Rom, 1974).
double Between(const Trace& samples, double position) {
    const auto i = static_cast<std::ptrdiff_t>(position);
    const double t = position - static_cast<double>(i);
    const bool inside = i > 0 && i + 2 < static_cast<std::ptrdiff_t>(samples.size());
    const double* here = samples.data() + i;
    const double a = inside ? here[-1] : SampleAt(samples, i - 1),
                 b = inside ? here[0] : SampleAt(samples, i), c = inside ? here[1] : SampleAt(samples, i + 1),
                 d = inside ? here[2] : SampleAt(samples, i + 2);
    return b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

// One value a millisecond: the mean of the samples of each ms at rates above, a cubic below.
void Resample(const Trace& samples, double rate, int lengthMs, Trace& level) {
    const double step = rate / 1000.0;
    level.resize(static_cast<std::size_t>(lengthMs));
    for (std::size_t ms = 0; ms < level.size(); ++ms) {
        const double position = static_cast<double>(ms) * step;
        if (step < 2) {
            level[ms] = Between(samples, position);
            continue;
        }
        const auto from = static_cast<std::ptrdiff_t>(std::ceil(position - step / 2));
        const auto to = static_cast<std::ptrdiff_t>(std::floor(position + step / 2));
        double sum = 0;
        for (std::ptrdiff_t i = from; i <= to; ++i) {
            sum += SampleAt(samples, i);
        }
        level[ms] = sum / static_cast<double>(to - from + 1);
    }
}

// One pass of a moving mean of 2 `half` + 1 samples.
void MovingMean(const Trace& from, std::ptrdiff_t half, Trace& to) {
    const auto count = static_cast<std::ptrdiff_t>(from.size());
    const double part = 1.0 / static_cast<double>(2 * half + 1);
    to.resize(from.size());
    double sum = 0;
    for (std::ptrdiff_t i = -half; i <= half; ++i) {
        sum += SampleAt(from, i);
    }
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        to[static_cast<std::size_t>(i)] = sum * part;
        const bool inside = i >= half && i + half + 1 < count;
        sum += inside
                   ? from[static_cast<std::size_t>(i + half + 1)] - from[static_cast<std::size_t>(i - half)]
                   : SampleAt(from, i + half + 1) - SampleAt(from, i - half);
    }
}

// A plateau at the lead's highest or lowest value with steep sides: what exceeds the range of a converter or
// of an amplifier. Within this part of the range, so long and so many samples, the sides by this part within
// 4 ms or a sample.
constexpr double kPlateau = 0.02;
constexpr double kPlateauMs = 16;
constexpr std::size_t kPlateauSamples = 4;
constexpr double kSide = 0.1;
constexpr double kSideMs = 4;

bool Saturates(const Trace& samples, double lowest, double highest, double rate) {
    const double range = highest - lowest;
    const auto side = static_cast<std::size_t>(std::max(1.0, std::floor(kSideMs * rate / 1000)));
    const auto least =
        std::max(kPlateauSamples, static_cast<std::size_t>(std::ceil(kPlateauMs * rate / 1000)));
    for (const bool high : {true, false}) {
        const auto away = [&](std::size_t i) { return high ? highest - samples[i] : samples[i] - lowest; };
        for (std::size_t i = side; i + side < samples.size(); ++i) {
            const std::size_t first = i;
            while (i + side < samples.size() && away(i) <= kPlateau * range) {
                ++i;
            }
            if (i - first >= least && away(first - side) >= kSide * range &&
                away(i - 1 + side) >= kSide * range) {
                return true;
            }
        }
    }
    return false;
}

// Reads one lead that is stored. Null; or why it cannot be measured.
const char* ReadLead(const KxEpisodeRecord& episode, std::span<const std::int16_t> samples, Beat& beat,
                     BeatLead& lead) {
    if (!Microvolts(samples, episode.resolutionNv / 1000.0, beat.working)) {
        return "more than half of its samples are missing";
    }
    const auto [lowest, highest] = std::minmax_element(beat.working.begin(), beat.working.end());
    if (*highest - *lowest < kFlatMicrovolts) {
        return "it is flat";
    }
    if (Saturates(beat.working, *lowest, *highest, episode.sampleRate)) {
        return "it exceeds the range of the recorder";
    }
    Resample(beat.working, episode.sampleRate, beat.length, lead.level);
    return nullptr;
}

}  // namespace

const char* ReadBeat(const KxEpisodeRecord* episode, Beat& beat) {
    if (episode == nullptr || episode->samples == nullptr || episode->storedLeads == 0 ||
        episode->storedLeads > KX_LEAD_SLOTS || episode->resolutionNv == 0 ||
        KX_EPISODE_FIXED_SIZE + 2ull * episode->storedLeads * episode->samplesPerLead > episode->totalSize) {
        return "the record of the beat does not hold what it announces";
    }
    if (episode->sampleRate < kLowestRate || episode->sampleRate > kHighestRate) {
        return "the beat has less than 100 or more than 32000 samples a second";
    }
    const std::uint64_t lengthMs = std::uint64_t{episode->samplesPerLead} * 1000 / episode->sampleRate;
    if (lengthMs < kShortestBeatMs || lengthMs > kLongestBeatMs) {
        return "the beat is shorter than 300 ms or longer than 4 s";
    }
    beat.length = static_cast<int>(lengthMs);
    beat.rr = episode->measurements.rrInterval;
    beat.atria = AtrialLeadOf(episode->value36);
    bool any = false;
    for (std::uint32_t code = 0; code < KX_MEASURED_LEADS; ++code) {
        BeatLead& lead = beat.leads[code];
        const std::span<const std::int16_t> samples = LeadSamples(*episode, code);
        lead.refusal = samples.empty() ? nullptr : ReadLead(*episode, samples, beat, lead);
        lead.present = !samples.empty() && lead.refusal == nullptr;
        any = any || lead.present;
    }
    if (!any) {
        return "no lead of the beat can be measured";
    }
    SmoothLeads(beat);
    BridgeSpikes(beat);
    return JoinLeads(beat) ? nullptr : kNoComplex;
}

void SmoothLeads(Beat& beat) {
    for (BeatLead& lead : beat.leads) {
        if (lead.present) {
            Smooth(lead.level, kFineWidth, lead.fine, beat.working);
            Slope(lead.fine, lead.fineSlope);
            Smooth(lead.level, kWideWidth, lead.wide, beat.working);
            Slope(lead.wide, lead.wideSlope);
        }
    }
}

void Smooth(const Trace& level, int width, Trace& result, Trace& working) {
    result.resize(level.size());
    if (level.empty()) {
        return;
    }
    const std::ptrdiff_t half = width / 2;
    MovingMean(level, half, result);
    MovingMean(result, half, working);
    MovingMean(working, half, result);
}

void Slope(const Trace& level, Trace& slope) {
    slope.assign(level.size(), 0);
    for (std::size_t i = 1; i + 1 < level.size(); ++i) {
        slope[i] = (level[i + 1] - level[i - 1]) / 2;
    }
}

double MeanBetween(const Trace& trace, Place from, Place to, double otherwise) {
    from = std::max(from, 0);
    to = std::min(to, static_cast<int>(trace.size()));
    if (from >= to) {
        return otherwise;
    }
    double sum = 0;
    for (Place i = from; i < to; ++i) {
        sum += trace[static_cast<std::size_t>(i)];
    }
    return sum / (to - from);
}

double Quantile(const Beat& beat, std::span<const double> all, double part) {
    if (all.empty()) {
        return 0;
    }
    Trace& values = beat.sorted;
    values.assign(all.begin(), all.end());
    const double position = part * static_cast<double>(values.size() - 1);
    const auto below = values.begin() + static_cast<std::ptrdiff_t>(position);
    std::nth_element(values.begin(), below, values.end());
    const double rest = position - std::floor(position);
    const auto above = std::min_element(below + 1, values.end());
    return above == values.end() ? *below : *below + (*above - *below) * rest;
}

std::span<const double> Between(const Trace& trace, Place from, Place to) {
    from = std::max(from, 0);
    to = std::min(to, static_cast<Place>(trace.size()));
    return from >= to ? std::span<const double>()
                      : std::span(trace).subspan(static_cast<std::size_t>(from),
                                                 static_cast<std::size_t>(to - from));
}

}  // namespace kx::analysis
