#include "lib/dbclient/history.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "lib/text_field.h"

namespace kx {

namespace {

constexpr std::size_t kEntrySize = sizeof(KxHistoryEntry);
constexpr std::size_t kHeaderSize = 2 * sizeof(std::uint32_t);

}  // namespace

History::History() noexcept : KxHistory{} {
    entries = new (std::nothrow) KxHistoryEntry[kHistoryCapacity]();
}

History::~History() {
    delete[] entries;
}

std::span<const KxHistoryEntry> History::Entries() const {
    if (entries == nullptr) {
        return {};
    }
    return {entries, std::min(count, kHistoryCapacity)};
}

bool History::HasAction(std::uint32_t action) const {
    const auto held = Entries();
    return std::any_of(held.begin(), held.end(),
                       [action](const KxHistoryEntry& entry) { return entry.action == action; });
}

bool History::Add(std::uint32_t action, const KxDateTime& time, const char* user) {
    if (entries == nullptr || count >= kHistoryCapacity || user == nullptr) {
        return false;
    }
    KxHistoryEntry entry{};
    entry.year = static_cast<std::uint16_t>(time.year);
    entry.month = time.month;
    entry.day = time.day;
    entry.hour = time.hour;
    entry.minute = time.minute;
    entry.millisecondsInMinute = static_cast<std::uint16_t>(time.second * 1000 + time.hundredths * 10);
    entry.action = action;
    StoreField(entry.user, user);
    entries[count++] = entry;
    return true;
}

std::vector<std::uint8_t> History::Serialize() const try {
    if (entries == nullptr) {
        return {};
    }
    const auto held = Entries();
    const std::uint32_t header[] = {
        static_cast<std::uint32_t>(held.size_bytes() + sizeof(std::uint32_t)),
        static_cast<std::uint32_t>(held.size()),
    };
    std::vector<std::uint8_t> block(kHeaderSize + held.size_bytes());
    std::memcpy(block.data(), header, kHeaderSize);
    if (!held.empty()) {
        std::memcpy(block.data() + kHeaderSize, held.data(), held.size_bytes());
    }
    return block;
} catch (const std::bad_alloc&) {
    return {};
}

bool History::Deserialize(const void* block, std::size_t size) {
    if (entries == nullptr || block == nullptr || size < kHeaderSize) {
        return false;
    }
    std::uint32_t header[2];
    std::memcpy(header, block, kHeaderSize);
    const auto [totalSize, newCount] = header;
    if (newCount > kHistoryCapacity || totalSize != newCount * kEntrySize + sizeof(std::uint32_t) ||
        size - kHeaderSize < newCount * kEntrySize) {
        return false;
    }
    std::memcpy(entries, static_cast<const std::uint8_t*>(block) + kHeaderSize, newCount * kEntrySize);
    for (std::uint32_t i = 0; i < newCount; ++i) {
        entries[i].user[sizeof entries[i].user - 1] = '\0';
    }
    count = newCount;
    return true;
}

DateTime EntryTime(const KxHistoryEntry& entry) {
    const int seconds = entry.millisecondsInMinute / 1000;
    const int hundredths = (entry.millisecondsInMinute % 1000 + 5) / 10;
    return {static_cast<std::int16_t>(entry.year),
            entry.month,
            entry.day,
            entry.hour,
            entry.minute,
            seconds,
            hundredths};
}

}  // namespace kx
