#include "host/recording/scp/scp_beats.h"

#include <algorithm>

#include "host/recording/byte_reader.h"

namespace kx::recording {

namespace {

// A part of the rhythm that is stored whole, or decimated.
struct Stretch {
    std::size_t count;
    bool isProtected;
};

std::vector<Stretch> StretchesOf(const SampleRange& range, const std::vector<SampleRange>& protectedAreas) {
    std::vector<Stretch> stretches;
    std::uint64_t next = range.first;
    const std::uint64_t end = std::uint64_t{range.last} + 1;
    for (const SampleRange& area : protectedAreas) {
        const std::uint64_t first = std::clamp<std::uint64_t>(area.first, next, end);
        const std::uint64_t behind = std::clamp<std::uint64_t>(std::uint64_t{area.last} + 1, first, end);
        stretches.push_back({static_cast<std::size_t>(first - next), false});
        stretches.push_back({static_cast<std::size_t>(behind - first), true});
        next = behind;
    }
    stretches.push_back({static_cast<std::size_t>(end - next), false});
    return stretches;
}

// The value at `at` samples from the start of a stretch of means, each of which stands for the middle of its
// samples.
float BetweenMeans(const float* means, std::size_t count, std::size_t at, unsigned factor) {
    const double place = std::clamp((static_cast<double>(at) - (factor - 1) / 2.0) / factor, 0.0,
                                    static_cast<double>(count - 1));
    const auto before = static_cast<std::size_t>(place);
    const double behind{means[std::min(before + 1, count - 1)]};
    const double part = place - static_cast<double>(before);
    return static_cast<float>(means[before] + (behind - means[before]) * part);
}

}  // namespace

ScpBeats ReadScpBeats(std::span<const std::uint8_t> section, bool needed) {
    constexpr std::size_t kSubtraction = 14, kArea = 8;
    ByteReader reader(section, "section 4");
    ScpBeats beats;
    beats.referenceMs = reader.U16();
    beats.fiducial = reader.U16();
    const std::size_t count = reader.U16();
    if (!needed && reader.Left() < count * kSubtraction) {
        return beats;
    }
    for (std::size_t i = 0; i < count; ++i) {
        ScpBeats::Subtraction& beat = beats.subtractions.emplace_back();
        beat.type = reader.U16();
        beat.range.first = reader.U32();
        beat.fiducial = reader.U32();
        beat.range.last = reader.U32();
    }
    if (reader.Left() < count * kArea) {
        return beats;  // without protected areas
    }
    for (std::size_t i = 0; i < count; ++i) {
        SampleRange area;
        area.first = reader.U32();
        area.last = reader.U32();
        if (area.first >= 1 && area.last >= area.first) {
            beats.protectedAreas.push_back(area);
        }
    }
    std::sort(beats.protectedAreas.begin(), beats.protectedAreas.end(),
              [](const SampleRange& a, const SampleRange& b) { return a.first < b.first; });
    return beats;
}

void AddReferenceBeat(const ScpBeats& beats, const std::vector<float>& reference, const SampleRange& range,
                      std::vector<float>& samples) {
    std::size_t added = 0;
    for (const ScpBeats::Subtraction& beat : beats.subtractions) {
        // Index in the reference of the rhythm's sample 0.
        const std::int64_t shift = std::int64_t{beats.fiducial} - 1 - beat.fiducial;
        const auto first = std::max<std::int64_t>({beat.range.first, range.first, -shift});
        const auto end =
            std::min<std::int64_t>({std::int64_t{beat.range.last} + 1, std::int64_t{range.last} + 1,
                                    static_cast<std::int64_t>(reference.size()) - shift});
        if (beat.type != 0 || first >= end) {
            continue;
        }
        added += static_cast<std::size_t>(end - first);
        if (added > 2 * samples.size()) {
            Refuse("the beats of section 4 lie over one another");
        }
        for (std::int64_t sample = first; sample < end; ++sample) {
            samples[static_cast<std::size_t>(sample - range.first)] +=
                reference[static_cast<std::size_t>(sample + shift)];
        }
    }
}

std::size_t DecimatedCount(const SampleRange& range, const std::vector<SampleRange>& protectedAreas,
                           unsigned factor) {
    std::size_t count = 0;
    for (const Stretch& stretch : StretchesOf(range, protectedAreas)) {
        count += stretch.isProtected ? stretch.count : stretch.count / factor + stretch.count % factor;
    }
    return count;
}

std::vector<float> Interpolated(const std::vector<float>& stored, const SampleRange& range,
                                const std::vector<SampleRange>& protectedAreas, unsigned factor) {
    std::vector<float> samples;
    const float* next = stored.data();
    for (const Stretch& stretch : StretchesOf(range, protectedAreas)) {
        const std::size_t means = stretch.isProtected ? 0 : stretch.count / factor;
        for (std::size_t at = 0; at < means * factor; ++at) {
            samples.push_back(BetweenMeans(next, means, at, factor));
        }
        next += means;
        const std::size_t whole = stretch.count - means * factor;
        samples.insert(samples.end(), next, next + whole);
        next += whole;
    }
    return samples;
}

}  // namespace kx::recording
