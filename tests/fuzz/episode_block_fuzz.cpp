// Any bytes as a serialized episode, and as a serialized history: what is taken can be used in every way and
// writes itself again.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "lib/dbclient/history.h"
#include "lib/dbclient/test_record.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void UseEverything(kx::EpisodeRecord& episode) {
    const std::uint32_t count = episode.SamplesPerLead();
    const std::vector<std::int16_t> zeros(std::min(count, 100u));
    for (std::uint32_t code = 0; code < 26; ++code) {
        const std::int16_t* lead = episode.Samples(code);
        Require(lead == nullptr ||
                episode.Sample(code, count - 1) == (code == 16 ? -lead[count - 1] : lead[count - 1]));
        Require(episode.Sample(code, count) == 0);
        episode.SampleMicrovolts(code, count / 2);
        episode.ShiftLead(code, 12345);
        episode.SetLeadSamples(code, zeros.data(), static_cast<std::uint32_t>(zeros.size()));
    }
    episode.DeriveLimbLeads();
    for (int lead = 0; lead < KX_MEASURED_LEADS; ++lead) {
        for (const std::int32_t ms : {-1, 0, 94, 95, 0x7FFFFFFF}) {
            episode.Measurements().LeadStLevel(lead, ms);
        }
    }
    episode.Measurements().HeartRate();
    episode.AddSecond();
    char text[2048];
    episode.Interpretation().Text(text, sizeof text);
    episode.Interpretation().Code(text, sizeof text);
}

void UseAsEpisode(const std::uint8_t* data, std::size_t size) {
    kx::TestRecord test;
    kx::EpisodeRecord* episode = test.AddEpisode(data, size);
    Require(episode != nullptr && (episode->samples != nullptr) == (episode->SerializedSize() != 0));
    if (episode->samples != nullptr) {
        Require(episode->SerializedSize() <= size);
        const std::vector<std::uint8_t> block = episode->Serialize();
        // All but the total size, which may have announced more, and the sample pointer.
        Require(block.size() == episode->SerializedSize() && std::memcmp(&block[4], data + 4, 252) == 0 &&
                std::memcmp(&block[260], data + 260, block.size() - 260) == 0);
        Require(test.AddEpisode(block.data(), block.size())->Serialize() == block);
    }
    UseEverything(*episode);
    test.LongestEpisodeBetween(0, 1000000);
    episode->ClearSamples();
}

// A changed sample alone would always fail at the checksum: the same bytes with the checksum that they have.
void UseWithItsChecksum(const std::uint8_t* data, std::size_t size) {
    if (size < KX_EPISODE_FIXED_SIZE) {
        return;
    }
    std::vector<std::uint8_t> block(data, data + size);
    KxEpisodeRecord fixed;
    std::memcpy(&fixed, block.data(), KX_EPISODE_FIXED_SIZE);
    const std::uint64_t bytes = std::min<std::uint64_t>(
        2 * std::min<std::uint64_t>(std::uint64_t{fixed.storedLeads} * fixed.samplesPerLead, size),
        size - KX_EPISODE_FIXED_SIZE);
    fixed.checksum = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        fixed.checksum = static_cast<std::uint16_t>(fixed.checksum + block[KX_EPISODE_FIXED_SIZE + i]);
    }
    std::memcpy(block.data(), &fixed, KX_EPISODE_FIXED_SIZE);
    UseAsEpisode(block.data(), block.size());
}

void UseAsHistory(const std::uint8_t* data, std::size_t size) {
    kx::History history;
    if (history.Deserialize(data, size)) {
        const std::vector<std::uint8_t> block = history.Serialize();
        kx::History again;
        Require(block.size() <= size && again.Deserialize(block.data(), block.size()));
        Require(again.Serialize() == block);
    }
    for (const KxHistoryEntry& entry : history.Entries()) {
        kx::EntryTime(entry);
    }
    history.Add(2, KxDateTime{}, "user");
    Require(history.Entries().size() <= kx::kHistoryCapacity);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    UseAsEpisode(data, size);
    UseWithItsChecksum(data, size);
    UseAsHistory(data, size);
    return 0;
}
