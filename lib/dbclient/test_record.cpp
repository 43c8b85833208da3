#include "lib/dbclient/test_record.h"

#include <algorithm>
#include <new>

namespace kx {

const EpisodeRecord* TestRecord::Episode(std::uint32_t index) const {
    return index < EpisodeCount() ? static_cast<const EpisodeRecord*>(episodes[index]) : nullptr;
}

EpisodeRecord* TestRecord::Episode(std::uint32_t index) {
    return const_cast<EpisodeRecord*>(static_cast<const TestRecord*>(this)->Episode(index));
}

EpisodeRecord* TestRecord::Append(EpisodeRecord* episode) {
    if (episode != nullptr) {
        episodes[episodeCount++] = episode;
    }
    return episode;
}

EpisodeRecord* TestRecord::AddEpisode(std::uint32_t configuration, std::uint32_t leadCount,
                                      std::uint32_t samplesPerLead, std::uint32_t sampleRate,
                                      std::uint32_t resolutionNv) {
    if (episodeCount >= kEpisodeCapacity) {
        return nullptr;
    }
    return Append(new (std::nothrow)
                      EpisodeRecord(configuration, leadCount, samplesPerLead, sampleRate, resolutionNv));
}

EpisodeRecord* TestRecord::AddEpisode(const void* block, std::size_t size) {
    if (episodeCount >= kEpisodeCapacity) {
        return nullptr;
    }
    return Append(new (std::nothrow) EpisodeRecord(block, size));
}

void TestRecord::ReleaseEpisodes() {
    for (episodeCount = EpisodeCount(); episodeCount > 0;) {
        --episodeCount;
        delete static_cast<EpisodeRecord*>(episodes[episodeCount]);
        episodes[episodeCount] = nullptr;
    }
}

const EpisodeRecord* TestRecord::LongestEpisodeBetween(std::int64_t fromMs, std::int64_t toMs) const {
    const EpisodeRecord* longest = nullptr;
    std::int64_t longestSeconds = 0;
    for (std::uint32_t i = 0; i < EpisodeCount(); ++i) {
        const EpisodeRecord* episode = Episode(i);
        if (episode == nullptr || episode->endTimeMs <= fromMs) {
            continue;
        }
        const std::int64_t end = episode->endTimeMs;
        const std::int64_t start = end - std::int64_t{1000} * episode->durationSeconds;
        const std::int64_t seconds = (std::min(end, toMs) - std::max(start, fromMs)) / 1000;
        if (longest != nullptr && seconds <= longestSeconds) {
            break;
        }
        longest = episode;
        longestSeconds = seconds;
    }
    return longest;
}

EpisodeRecord* TestRecord::LongestEpisodeBetween(std::int64_t fromMs, std::int64_t toMs) {
    return const_cast<EpisodeRecord*>(
        static_cast<const TestRecord*>(this)->LongestEpisodeBetween(fromMs, toMs));
}

bool TestRecord::AddHistoryEntry(std::uint32_t action, const KxDateTime& time, const char* user) {
    return history != nullptr && History::Of(*history).Add(action, time, user);
}

DateTime TestRecord::LastChangeTime() {
    if (lastChangeTime.year == 0 && history != nullptr) {
        const auto entries = History::Of(*history).Entries();
        if (!entries.empty()) {
            lastChangeTime = EntryTime(entries.back());
        }
    }
    return lastChangeTime;
}

}  // namespace kx
