// The places of the QRS complexes in an SCP-ECG file and what its compression does with them: section 4 (EN
// 1064, 5.7 and annex C).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kx::recording {

// Samples first to last of the rhythm, counted from 1.
struct SampleRange {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
};

struct ScpBeats {
    struct Subtraction {
        unsigned type = 0;  // 0: the reference beat of section 5 was subtracted
        SampleRange range;
        std::uint32_t fiducial = 0;  // the sample that the reference beat's fiducial point lay on
    };

    unsigned referenceMs = 0;  // length of the reference beat; 0: not stated
    unsigned fiducial = 0;     // its fiducial point, samples counted from 1
    std::vector<Subtraction> subtractions;
    std::vector<SampleRange> protectedAreas;  // that no samples were left out of, in order and apart
};

// Throws ReadFailure when the section is cut; of the places only when they are `needed`.
ScpBeats ReadScpBeats(std::span<const std::uint8_t> section, bool needed);

// Adds the reference beat to the samples of `range` wherever it was subtracted.
void AddReferenceBeat(const ScpBeats& beats, const std::vector<float>& reference, const SampleRange& range,
                      std::vector<float>& samples);

// Bimodal compression: outside the protected areas every `factor` samples (2 or more) are stored as one,
// their mean; those that are left over at the end of a stretch are stored as they are. The number of samples
// stored for `range`.
std::size_t DecimatedCount(const SampleRange& range, const std::vector<SampleRange>& protectedAreas,
                           unsigned factor);

// All samples of `range` from those stored, which are DecimatedCount: straight lines between the means.
std::vector<float> Interpolated(const std::vector<float>& stored, const SampleRange& range,
                                const std::vector<SampleRange>& protectedAreas, unsigned factor);

}  // namespace kx::recording
