// Bytes as serialized blocks: what is taken can be used in every way and writes itself again.
#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

#include "lib/annotation_store.h"
#include "lib/dbclient/history.h"
#include "lib/dbclient/test_record.h"
#include "tests/fuzz/targets.h"

namespace kx::fuzz {
namespace {

bool Same(const std::uint8_t* a, const std::uint8_t* b, std::size_t size) { return std::memcmp(a, b, size) == 0; }

void UseEverything(AnnotationStore& store) {
    const std::uint32_t count = store.Count();
    for (std::uint32_t i = 0; i <= count; ++i) {
        store.UpdateHeartRate(i);
        store.SetWidth(i, store.QrsDurationMs(i));
        store.AmplitudeMicrovolts(17, i, &LeadBeat::amplitude3);
    }
    const std::uint32_t t = store.Time(count / 2);
    if (const auto index = store.Insert(3, t)) {
        Require(store.Label(*index) == 3 && store.Time(*index) == t && store.Remove(3, t) && store.Count() == count);
    }
    store.InsertSegment(t, t / 2);
    store.RemoveRange(count / 3, count / 2);
    store.RemoveLabel(store.Label(0));
    Require(store.CountOfLabel(kLabelNone) <= store.Count() && store.Count() <= store.Capacity());
}

void UseEverything(EpisodeRecord& episode) {
    const std::uint32_t count = episode.SamplesPerLead();
    const std::vector<std::int16_t> zeros(std::min(count, 100u));
    for (std::uint32_t code = 0; code < 26; ++code) {
        const std::int16_t* lead = episode.Samples(code);
        Require(lead == nullptr || episode.Sample(code, count - 1) == (code == 16 ? -lead[count - 1] : lead[count - 1]));
        Require(episode.Sample(code, count) == 0);
        episode.ShiftLead(code, 12345);
        episode.SetLeadSamples(code, zeros.data(), static_cast<std::uint32_t>(zeros.size()));
        episode.Measurements().LeadStLevel(static_cast<int>(code) % KX_MEASURED_LEADS, static_cast<std::int32_t>(code * count));
    }
    episode.DeriveLimbLeads();
    episode.AddSecond();
    char text[2048];
    episode.Interpretation().Text(text, sizeof text);
}

void UseAsEpisode(Bytes input) {
    TestRecord test;
    EpisodeRecord* episode = test.AddEpisode(input.data(), input.size());
    Require(episode != nullptr && (episode->samples != nullptr) == (episode->SerializedSize() != 0));
    if (episode->samples != nullptr) {
        const std::vector<std::uint8_t> block = episode->Serialize();
        // All but the total size, which may have announced more, and the sample pointer.
        Require(block.size() == episode->SerializedSize() && block.size() <= input.size());
        Require(Same(&block[4], &input[4], 252) && Same(&block[260], &input[260], block.size() - 260));
        Require(test.AddEpisode(block.data(), block.size())->Serialize() == block);
    }
    UseEverything(*episode);
    test.LongestEpisodeBetween(0, 1000000);
}

// The same bytes with the checksum that they have: a changed sample alone would always fail there.
std::vector<std::uint8_t> WithItsChecksum(Bytes input) {
    std::vector<std::uint8_t> block(input.begin(), input.end());
    if (block.size() >= KX_EPISODE_FIXED_SIZE) {
        KxEpisodeRecord fixed;
        std::memcpy(&fixed, block.data(), KX_EPISODE_FIXED_SIZE);
        const Bytes behind = Bytes(block).subspan(KX_EPISODE_FIXED_SIZE);
        const auto size = std::min<std::uint64_t>(std::uint64_t{2} * fixed.storedLeads * fixed.samplesPerLead, behind.size());
        const Bytes samples = behind.first(static_cast<std::size_t>(size));
        fixed.checksum = static_cast<std::uint16_t>(std::accumulate(samples.begin(), samples.end(), 0u));
        std::memcpy(block.data(), &fixed, KX_EPISODE_FIXED_SIZE);
    }
    return block;
}

void UseAsHistory(Bytes input) {
    History history, again;
    const bool whole = history.Deserialize(input.data(), input.size());
    const std::vector<std::uint8_t> block = history.Serialize();
    Require(!whole || (block.size() <= input.size() && again.Deserialize(block.data(), block.size()) && again.Serialize() == block));
    std::ranges::for_each(history.Entries(), [](const KxHistoryEntry& entry) { EntryTime(entry); });
    history.Add(2, KxDateTime{}, "user");
    Require(history.Entries().size() <= kHistoryCapacity);
}

}  // namespace

void AnnotationBlock(Bytes input) {
    SilentReporter log;
    for (const std::uint32_t capacity : {0u, 3u, 64u}) {
        AnnotationStore store(capacity);
        store.Read(input.data(), input.size(), log);
        UseEverything(store);
    }
    AnnotationStore rebuilt(1);
    if (rebuilt.Rebuild(input.data(), input.size(), false)) {
        const auto block = rebuilt.Serialize();
        // All but the size word, which readers do not need.
        Require(block != nullptr && Same(block.get() + 4, &input[4], rebuilt.SerializedSize() - 4));
    }
    rebuilt.Rebuild(input.data(), input.size(), true);
    UseEverything(rebuilt);
}

void EpisodeBlock(Bytes input) {
    UseAsEpisode(input);
    UseAsEpisode(WithItsChecksum(input));
    UseAsHistory(input);
}

}  // namespace kx::fuzz
