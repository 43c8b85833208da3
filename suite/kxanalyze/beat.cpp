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

// Microvolts above the first known sample, missing samples bridged by a straight line; empty when more is
// missing than there is.
Trace Microvolts(std::span<const std::int16_t> samples, double microvoltsPerUnit) {
    Trace level(samples.size());
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
        return {};
    }
    std::fill(level.begin() + last + 1, level.end(), level[static_cast<std::size_t>(last)]);
    return level;
}

// One value a millisecond: the mean of the samples of each ms at rates above, a cubic through four samples
// below.
Trace Resample(const Trace& samples, double rate, int lengthMs) {
    const double step = rate / 1000.0;
    const auto count = static_cast<std::ptrdiff_t>(samples.size());
    const auto at = [&](std::ptrdiff_t i) {
        return samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i, 0, count - 1))];
    };
    Trace level(static_cast<std::size_t>(lengthMs));
    for (std::size_t ms = 0; ms < level.size(); ++ms) {
        const double position = static_cast<double>(ms) * step;
        if (step >= 2) {
            const auto from = static_cast<std::ptrdiff_t>(std::ceil(position - step / 2));
            const auto to = static_cast<std::ptrdiff_t>(std::floor(position + step / 2));
            double sum = 0;
            for (std::ptrdiff_t i = from; i <= to; ++i) {
                sum += at(i);
            }
            level[ms] = sum / static_cast<double>(to - from + 1);
            continue;
        }
        const double whole = std::floor(position);
        const double t = position - whole;
        const auto i = static_cast<std::ptrdiff_t>(whole);
        const double a = at(i - 1), b = at(i), c = at(i + 1), d = at(i + 2);
        level[ms] = b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
    }
    return level;
}

}  // namespace

std::optional<Beat> ReadBeat(const KxEpisodeRecord* episode) {
    if (episode == nullptr || episode->samples == nullptr || episode->storedLeads == 0 ||
        episode->storedLeads > KX_LEAD_SLOTS || episode->resolutionNv == 0 ||
        episode->sampleRate < kLowestRate || episode->sampleRate > kHighestRate) {
        return std::nullopt;
    }
    const std::uint64_t lengthMs = std::uint64_t{episode->samplesPerLead} * 1000 / episode->sampleRate;
    if (lengthMs < kShortestBeatMs || lengthMs > kLongestBeatMs) {
        return std::nullopt;
    }
    Beat beat;
    beat.length = static_cast<int>(lengthMs);
    beat.rr = episode->measurements.rrInterval;
    bool any = false;
    for (std::uint32_t code = 0; code < KX_MEASURED_LEADS; ++code) {
        const Trace samples = Microvolts(LeadSamples(*episode, code), episode->resolutionNv / 1000.0);
        if (samples.empty()) {
            continue;
        }
        const auto [lowest, highest] = std::minmax_element(samples.begin(), samples.end());
        if (*highest - *lowest < kFlatMicrovolts) {
            continue;
        }
        BeatLead& lead = beat.leads[code];
        lead.present = any = true;
        lead.level = Resample(samples, episode->sampleRate, beat.length);
        lead.fine = Smooth(lead.level, kFineWidth);
        lead.fineSlope = Slope(lead.fine);
        lead.wide = Smooth(lead.level, kWideWidth);
        lead.wideSlope = Slope(lead.wide);
    }
    if (!any) {
        return std::nullopt;
    }
    beat.fineVelocity = OverLeads(beat, &BeatLead::fineSlope);
    beat.wideVelocity = OverLeads(beat, &BeatLead::wideSlope);
    return beat;
}

Trace Smooth(const Trace& level, int width) {
    Trace result = level;
    if (level.empty()) {
        return result;
    }
    const auto half = static_cast<std::ptrdiff_t>(width / 2);
    const auto count = static_cast<std::ptrdiff_t>(level.size());
    for (int pass = 0; pass < 3; ++pass) {
        const Trace from = result;
        const auto at = [&](std::ptrdiff_t i) {
            return from[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i, 0, count - 1))];
        };
        double sum = 0;
        for (std::ptrdiff_t i = -half; i <= half; ++i) {
            sum += at(i);
        }
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            result[static_cast<std::size_t>(i)] = sum / static_cast<double>(2 * half + 1);
            sum += at(i + half + 1) - at(i - half);
        }
    }
    return result;
}

Trace Slope(const Trace& level) {
    Trace slope(level.size());
    for (std::size_t i = 1; i + 1 < level.size(); ++i) {
        slope[i] = (level[i + 1] - level[i - 1]) / 2;
    }
    return slope;
}

Trace OverLeads(const Beat& beat, const Trace BeatLead::*trace) {
    Trace sum(static_cast<std::size_t>(beat.length));
    int leads = 0;
    for (const BeatLead& lead : beat.leads) {
        if (!lead.present) {
            continue;
        }
        ++leads;
        for (std::size_t i = 0; i < sum.size(); ++i) {
            sum[i] += (lead.*trace)[i] * (lead.*trace)[i];
        }
    }
    for (double& value : sum) {
        value = std::sqrt(value / std::max(leads, 1));
    }
    return sum;
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

double Median(std::vector<double> values) {
    return Quantile(std::move(values), 0.5);
}

double Quantile(std::vector<double> values, double part) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const double position = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(position);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    const double rest = position - static_cast<double>(below);
    return values[below] + (values[above] - values[below]) * rest;
}

}  // namespace kx::analysis
