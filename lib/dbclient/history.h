// Who changed a test, when and how.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/timestmp.h"

namespace kx {

inline constexpr std::uint32_t kHistoryCapacity = 16;
// KxHistoryEntry.action: the interpretation was reviewed in a word processor or an EMR program.
inline constexpr std::uint32_t kActionReviewedOutside = 2;

// A KxHistory with its operations; no data added. One made here owns its buffer, which is null when there was
// no memory: every operation then does nothing. On a host's history the operations work in place and never
// free anything. A count beyond the capacity is read as full.
struct History : KxHistory {
    History() noexcept;
    ~History();
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    static History& Of(KxHistory& history) { return static_cast<History&>(history); }
    static const History& Of(const KxHistory& history) { return static_cast<const History&>(history); }

    std::span<const KxHistoryEntry> Entries() const;
    bool HasAction(std::uint32_t action) const;

    // Appends an entry with the time to its milliseconds and at most 31 characters of the user's name.
    // Nothing, and false, when the history is full, has no buffer, or no user is given.
    bool Add(std::uint32_t action, const KxDateTime& time, const char* user);

    // u32 total size (entries x 44 + 4), u32 count, the entries. Empty without a buffer or memory.
    std::vector<std::uint8_t> Serialize() const;
    // Takes a serialized history of which `size` bytes may be read. Refused, and nothing changed, when the
    // total size does not fit its count, more than 16 entries are announced or bytes are missing.
    bool Deserialize(const void* block, std::size_t size);
};

static_assert(sizeof(History) == sizeof(KxHistory));

// The time of an entry; its milliseconds, rounded to hundredths, are taken modulo 256.
DateTime EntryTime(const KxHistoryEntry& entry);

}  // namespace kx
