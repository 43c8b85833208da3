// How a median beat is made, stored and read back.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "lib/dbclient/episode_record.h"

namespace kx {

namespace {

constexpr std::uint32_t kCreatedState = 2;
constexpr std::size_t kSampleSize = sizeof(std::int16_t);
// The fixed part stands in memory as it is stored, up to the width of the sample pointer.
static_assert(sizeof(void*) != 4 || sizeof(KxEpisodeRecord) == KX_EPISODE_FIXED_SIZE);

std::uint16_t ByteSum(const std::uint8_t* bytes, std::size_t count) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += bytes[i];
    }
    return static_cast<std::uint16_t>(sum);
}

std::uint32_t LeadsOf(std::uint32_t configuration, std::uint32_t leadCount) {
    switch (configuration) {
        case kTwelveLeadConfiguration:
            return KX_STANDARD_LEADS;
        case kFourLeadConfiguration:
            return leadCount == 3 || leadCount == 4 ? leadCount : 0;
        case kThreeLeadConfiguration:
            return leadCount < 4 ? leadCount : 0;
        default:
            return 0;
    }
}

bool IsKnown(std::uint32_t configuration) {
    return configuration == kTwelveLeadConfiguration || configuration == kFourLeadConfiguration ||
           configuration == kThreeLeadConfiguration;
}

// Whether the layout of a configuration gives a slot to a lead.
bool HoldsLead(std::uint32_t configuration, std::uint32_t leadCount, std::uint32_t slot) {
    switch (configuration) {
        case kTwelveLeadConfiguration:
            return slot < KX_STANDARD_LEADS;
        case kFourLeadConfiguration:
            return slot >= 12 && slot < 12 + leadCount;
        case kThreeLeadConfiguration:
            return slot >= 17 && slot < 17 + leadCount;
        default:
            return false;
    }
}

// The size of a whole episode in serialized form. A record may announce any number of leads and samples: what
// no size field could hold is the largest number.
std::uint64_t SizeWith(std::uint64_t sampleCount) {
    using Limits = std::numeric_limits<std::uint64_t>;
    return sampleCount >> 32 != 0 ? Limits::max() : KX_EPISODE_FIXED_SIZE + kSampleSize * sampleCount;
}

}  // namespace

EpisodeRecord::EpisodeRecord(std::uint32_t configuration, std::uint32_t leadCount,
                             std::uint32_t samplesEachLead, std::uint32_t samplesPerSecond,
                             std::uint32_t nanovoltsPerUnit) noexcept
    : KxEpisodeRecord{} {
    Measurements().Clear();
    Interpretation().Clear();
    formatVersion = KX_EPISODE_FORMAT_VERSION;
    state = kCreatedState;
    leadConfiguration = IsKnown(configuration) ? configuration : std::uint32_t{kNoLeadConfiguration};
    storedLeads = LeadsOf(configuration, leadCount);
    sampleRate = samplesPerSecond;
    resolutionNv = nanovoltsPerUnit;
    samplesPerLead = samplesEachLead;
    LayOutLeads(storedLeads);
    const std::uint64_t count = std::uint64_t{storedLeads} * samplesPerLead;
    if (samplesPerSecond == 0 || nanovoltsPerUnit == 0 || !Allocate(count)) {
        DropSamples();
    }
}

EpisodeRecord::EpisodeRecord(const void* block, std::size_t size) noexcept
    : EpisodeRecord(kNoLeadConfiguration, 0, 0, 0, 0) {
    Deserialize(block, size);
}

EpisodeRecord::~EpisodeRecord() {
    delete[] samples;
}

void EpisodeRecord::LayOutLeads(std::uint32_t leadCount) {
    std::uint32_t held = 0;
    for (std::uint32_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
        if (HoldsLead(leadConfiguration, leadCount, slot)) {
            leadTable[slot] = {slot, held * samplesPerLead};
            ++held;
        } else {
            leadTable[slot] = {KX_LEAD_EMPTY, 0};
        }
    }
}

// Cleared samples. totalSize is set with them; a size that it cannot hold is no memory.
bool EpisodeRecord::Allocate(std::uint64_t sampleCount) noexcept {
    if (sampleCount == 0 || SizeWith(sampleCount) > std::numeric_limits<std::uint32_t>::max() / 2) {
        return false;
    }
    samples = new (std::nothrow) std::int16_t[static_cast<std::size_t>(sampleCount)]();
    if (samples == nullptr) {
        return false;
    }
    totalSize = static_cast<std::uint32_t>(SizeWith(sampleCount));
    return true;
}

void EpisodeRecord::DropSamples() {
    delete[] samples;
    samples = nullptr;
    totalSize = 0;
    samplesPerLead = 0;
    durationSeconds = 0;
}

std::span<std::int16_t> EpisodeRecord::SampleArea() const {
    const std::uint64_t count = std::uint64_t{storedLeads} * samplesPerLead;
    if (samples == nullptr || AnnouncesTooMuch()) {
        return {};
    }
    return {samples, static_cast<std::size_t>(count)};
}

bool EpisodeRecord::AnnouncesTooMuch() const {
    return SizeWith(std::uint64_t{storedLeads} * samplesPerLead) > totalSize;
}

bool EpisodeRecord::Serialize(void* buffer, std::size_t size) {
    const auto area = SampleArea();
    if (area.empty() || buffer == nullptr || size < totalSize) {
        return false;
    }
    totalSize = static_cast<std::uint32_t>(SizeWith(area.size()));
    checksum = ByteSum(reinterpret_cast<const std::uint8_t*>(area.data()), area.size_bytes());
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    std::memcpy(bytes, static_cast<const KxEpisodeRecord*>(this), KX_EPISODE_FIXED_SIZE);
    std::memset(bytes + offsetof(KxEpisodeRecord, samples), 0, sizeof samples);
    std::memcpy(bytes + KX_EPISODE_FIXED_SIZE, area.data(), area.size_bytes());
    return true;
}

std::vector<std::uint8_t> EpisodeRecord::Serialize() try {
    std::vector<std::uint8_t> block(SampleArea().empty() ? 0 : totalSize);
    if (!Serialize(block.data(), block.size())) {
        return {};
    }
    block.resize(totalSize);
    return block;
} catch (const std::bad_alloc&) {
    return {};
}

bool EpisodeRecord::Deserialize(const void* block) {
    std::uint32_t announced = 0;
    if (block != nullptr) {
        std::memcpy(&announced, block, sizeof announced);
    }
    return Deserialize(block, announced);
}

bool EpisodeRecord::Deserialize(const void* block, std::size_t size) {
    if (block == nullptr || size < KX_EPISODE_FIXED_SIZE) {
        return false;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(block);
    std::uint32_t announced = 0;
    std::memcpy(&announced, bytes, sizeof announced);
    if (announced < KX_EPISODE_FIXED_SIZE) {
        return false;
    }
    delete[] samples;
    std::memcpy(static_cast<KxEpisodeRecord*>(this), bytes, KX_EPISODE_FIXED_SIZE);
    samples = nullptr;
    if (!TakeSamples(bytes, std::min<std::size_t>(size, announced))) {
        DropSamples();
        return false;
    }
    return true;
}

bool EpisodeRecord::TakeSamples(const std::uint8_t* block, std::size_t size) {
    const std::uint64_t count = std::uint64_t{storedLeads} * samplesPerLead;
    if (formatVersion != KX_EPISODE_FORMAT_VERSION || SizeWith(count) > size) {
        return false;
    }
    const std::size_t sampleBytes = static_cast<std::size_t>(count) * kSampleSize;
    if (ByteSum(block + KX_EPISODE_FIXED_SIZE, sampleBytes) != checksum || !Allocate(count)) {
        return false;
    }
    std::memcpy(samples, block + KX_EPISODE_FIXED_SIZE, sampleBytes);
    return true;
}

}  // namespace kx
