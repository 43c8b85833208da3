// The annotation store's memory, and how entries come in and go.
#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "lib/annotation_store.h"

namespace kx {

namespace {

constexpr std::uint32_t kGrowth = 10;

// Null when memory is short.
template <class T>
std::unique_ptr<T[]> NewArray(std::uint32_t count) {
    if (count > std::numeric_limits<std::size_t>::max() / 2 / sizeof(T)) {
        return nullptr;
    }
    return std::unique_ptr<T[]>(new (std::nothrow) T[count]);
}

template <class T>
std::unique_ptr<T[]> NewZeroedArray(std::uint32_t count) {
    std::unique_ptr<T[]> array = NewArray<T>(count);
    if (array != nullptr) {
        std::fill_n(array.get(), count, T{});
    }
    return array;
}

Annotation SegmentMarker(std::int8_t which, std::uint32_t t) {
    Annotation marker(kLabelSegment, t);
    marker.subLabel = which;
    return marker;
}

}  // namespace

// ---- memory

AnnotationStore::AnnotationStore(std::uint32_t capacity) {
    Allocate(capacity, kFirstChannelSlot, kChannelSlots);
}

AnnotationStore::AnnotationStore(std::uint32_t capacity, bool entriesOnly) {
    Allocate(capacity, 0, entriesOnly ? 0 : KX_STANDARD_LEADS);
}

void AnnotationStore::Allocate(std::uint32_t capacity, std::uint32_t firstSlot, std::uint32_t slots) {
    capacity_ = room_ = fixedRoom_ = capacity;
    count_ = 0;
    entries_ = NewZeroedArray<KxAnnotation>(capacity);
    for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
        leadBeats_[slot] = slot - firstSlot < slots ? NewZeroedArray<LeadBeat>(capacity) : nullptr;
    }
}

// ---- adding

void AnnotationStore::ZeroBeats(std::uint32_t i) {
    for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
        if (LeadBeat* beat = BeatIn(slot, i)) {
            *beat = LeadBeat{};
        }
    }
}

bool AnnotationStore::Append(const KxAnnotation& entry) {
    if (count_ >= capacity_ || entries_ == nullptr) {
        return false;
    }
    entries_[count_] = entry;
    ++count_;
    ZeroBeats(count_ - 1);
    modified_ = 1;
    return true;
}

bool AnnotationStore::AppendBeat(std::int8_t beatClass, std::int16_t value, std::uint32_t t,
                                 std::uint32_t leadMask) {
    std::array<std::uint32_t, kChannelSlots> leads{};
    std::uint32_t leadCount = 0;
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        if ((leadMask >> channel & 1) != 0) {
            leads[leadCount++] = kFirstChannelSlot + channel;
        }
    }
    return AppendBeat(beatClass, value, t, leadCount, leads.data());
}

bool AnnotationStore::AppendBeat(std::int8_t beatClass, std::int16_t value, std::uint32_t t,
                                 std::uint32_t leadCount, const std::uint32_t* leads) {
    if (!Append(Annotation::Classified(beatClass, t))) {
        return false;
    }
    for (std::uint32_t k = 0; leads != nullptr && k < leadCount; ++k) {
        SetValue(leads[k], count_ - 1, &LeadBeat::leadValue, value);
    }
    return true;
}

bool AnnotationStore::Grow() {
    if (capacity_ > std::numeric_limits<std::uint32_t>::max() - kGrowth) {
        return false;
    }
    const std::uint32_t capacity = capacity_ + kGrowth;
    // The stated capacity grows by 10, the room behind it by half, so that a recording inserted beat by beat
    // is not copied every ten beats. Where memory is too short for that, 10 have to do.
    if (capacity > room_) {
        const std::uint32_t generous =
            capacity + std::min(capacity / 2, std::numeric_limits<std::uint32_t>::max() - capacity);
        if (!Reallocate(generous) && !Reallocate(capacity)) {
            return false;
        }
    }
    capacity_ = capacity;
    return true;
}

// New arrays of entries and of slots 17 to 19, their ends not yet written, or nothing changed.
bool AnnotationStore::Reallocate(std::uint32_t room) {
    Entries entries = NewArray<KxAnnotation>(room);
    if (entries == nullptr) {
        return false;
    }
    std::array<LeadBeats, kChannelSlots> beats;
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        const LeadBeats& old = leadBeats_[kFirstChannelSlot + channel];
        if (old == nullptr) {
            continue;
        }
        beats[channel] = NewArray<LeadBeat>(room);
        if (beats[channel] == nullptr) {
            return false;
        }
        std::copy_n(old.get(), count_, beats[channel].get());
    }
    std::copy_n(entries_.get(), count_, entries.get());
    entries_ = std::move(entries);
    std::move(beats.begin(), beats.end(), leadBeats_.begin() + kFirstChannelSlot);
    room_ = room;
    return true;
}

// Where an entry of time t belongs: before the first one that is not earlier. The search starts where t would
// lie if the beats were evenly spaced.
std::uint32_t AnnotationStore::PositionFor(std::uint32_t t) const {
    if (count_ == 0) {
        return 0;
    }
    const std::uint32_t last = entries_[count_ - 1].timeMs;
    if (last < t) {
        return count_;
    }
    const std::uint64_t guess = last != 0 ? (std::uint64_t{count_} * t + last / 2) / last : count_;
    std::uint32_t i = static_cast<std::uint32_t>(std::min<std::uint64_t>(guess, count_ - 1));
    if (entries_[i].timeMs >= t) {
        while (i > 0 && entries_[i - 1].timeMs >= t) {
            --i;
        }
    } else {
        while (i < count_ && entries_[i].timeMs < t) {
            ++i;
        }
    }
    return i;
}

std::optional<std::uint32_t> AnnotationStore::InsertEntry(const KxAnnotation& entry) {
    if ((count_ > 0 && entries_ == nullptr) || (count_ >= capacity_ && !Grow()) || entries_ == nullptr) {
        return std::nullopt;
    }
    const std::uint32_t position = PositionFor(entry.timeMs);
    const auto makeRoom = [this, position](auto* array) {
        std::copy_backward(array + position, array + count_, array + count_ + 1);
    };
    makeRoom(entries_.get());
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        if (leadBeats_[slot] != nullptr) {
            makeRoom(leadBeats_[slot].get());
            leadBeats_[slot][position] = LeadBeat{};
        }
    }
    entries_[position] = entry;
    ++count_;
    modified_ = 1;
    return position;
}

std::optional<std::uint32_t> AnnotationStore::Insert(std::uint8_t label, std::uint32_t t) {
    return InsertEntry(Annotation(label, t));
}

bool AnnotationStore::ExtendOpenSegment(std::uint32_t end) {
    if (count_ == 0 || Label(count_ - 1) != kLabelSegment) {
        return false;
    }
    SetTime(count_ - 1, end);
    return true;
}

bool AnnotationStore::MarkSegment(std::uint32_t start, std::uint32_t end) {
    if (ExtendOpenSegment(end)) {
        return true;
    }
    if (capacity_ - count_ < 2) {
        return false;
    }
    return Append(SegmentMarker(kSegmentStart, start)) && Append(SegmentMarker(kSegmentEnd, end));
}

bool AnnotationStore::InsertSegment(std::uint32_t start, std::uint32_t end) {
    if (ExtendOpenSegment(end)) {
        return true;
    }
    if (capacity_ - count_ <= 2) {
        return false;
    }
    // The end first: an entry goes before its equals, and so a segment of no length still begins before it
    // ends.
    return InsertEntry(SegmentMarker(kSegmentEnd, end)) && InsertEntry(SegmentMarker(kSegmentStart, start));
}

// ---- removing

// Entries from `from` on move to `to`, which is not above it; the ones between are gone.
void AnnotationStore::MoveDown(std::uint32_t to, std::uint32_t from) {
    const auto close = [this, to, from](auto* array) { std::copy(array + from, array + count_, array + to); };
    close(entries_.get());
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        if (leadBeats_[slot] != nullptr) {
            close(leadBeats_[slot].get());
        }
    }
    count_ -= from - to;
    modified_ = 1;
}

bool AnnotationStore::Remove(std::uint8_t label, std::uint32_t t) {
    for (std::uint32_t i = 0; HasEntry(i); ++i) {
        if (entries_[i].timeMs == t && entries_[i].label == label) {
            MoveDown(i, i + 1);
            return true;
        }
    }
    return false;
}

void AnnotationStore::RemoveLabel(std::uint8_t label) {
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; HasEntry(i); ++i) {
        if (entries_[i].label == label) {
            continue;
        }
        entries_[kept] = entries_[i];
        for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
            if (leadBeats_[slot] != nullptr) {
                leadBeats_[slot][kept] = leadBeats_[slot][i];
            }
        }
        ++kept;
    }
    if (kept < count_) {
        count_ = kept;
        modified_ = 1;
    }
}

void AnnotationStore::RemoveAt(std::uint32_t i) {
    RemoveRange(i, i);
}

void AnnotationStore::RemoveRange(std::uint32_t from, std::uint32_t to) {
    if (HasEntry(from) && from <= to) {
        MoveDown(from, std::min(to, count_ - 1) + 1);
    }
}

}  // namespace kx
