// The annotation store's memory, and how entries come in and go.
#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "lib/annotation_store.h"

namespace kx {

namespace {

constexpr std::uint32_t kGrowth = 10;

template <class T>
using Array = std::unique_ptr<T[]>;

// Null when memory is short.
template <class T>
Array<T> NewArray(std::uint32_t count) {
    const bool possible = count <= std::numeric_limits<std::size_t>::max() / 2 / sizeof(T);
    return Array<T>(possible ? new (std::nothrow) T[count] : nullptr);
}

template <class T>
Array<T> NewZeroedArray(std::uint32_t count) {
    Array<T> array = NewArray<T>(count);
    if (array != nullptr) {
        std::fill_n(array.get(), count, T{});
    }
    return array;
}

// An array of the store gives way to another or to none.
template <class T>
void Replace(T*& array, Array<T> by) {
    delete[] array;
    array = by.release();
}

Annotation SegmentMarker(std::int8_t which, std::uint32_t t) {
    Annotation marker(kLabelSegment, t);
    marker.subLabel = which;
    return marker;
}

}  // namespace

// ---- memory

AnnotationStore::AnnotationStore() : KxAnnotationStore{} {
    sampleRate = kNewSampleRate;
    resolutionNv = kNewResolutionNv;
}

AnnotationStore::AnnotationStore(std::uint32_t newCapacity) : AnnotationStore() {
    Allocate(newCapacity, kFirstChannelSlot, kChannelSlots);
}

AnnotationStore::AnnotationStore(std::uint32_t newCapacity, bool entriesOnly) : AnnotationStore() {
    Allocate(newCapacity, 0, entriesOnly ? 0 : KX_STANDARD_LEADS);
}

AnnotationStore::AnnotationStore(AnnotationStore&& other) noexcept
    : KxAnnotationStore(other),
      room_(std::exchange(other.room_, 0)),
      fixedRoom_(std::exchange(other.fixedRoom_, 0)) {
    static_cast<KxAnnotationStore&>(other) = {};
}

AnnotationStore::~AnnotationStore() {
    Discard();
}

void AnnotationStore::Discard() {
    count = 0;
    Replace<KxAnnotation>(entries, nullptr);
    for (LeadBeat*& beats : leadBeats) {
        Replace<LeadBeat>(beats, nullptr);
    }
}

void AnnotationStore::Allocate(std::uint32_t newCapacity, std::uint32_t firstSlot, std::uint32_t slots) {
    capacity = room_ = fixedRoom_ = newCapacity;
    Replace(entries, NewZeroedArray<KxAnnotation>(newCapacity));
    for (std::uint32_t slot = firstSlot; slot < firstSlot + slots; ++slot) {
        Replace(leadBeats[slot], NewZeroedArray<LeadBeat>(newCapacity));
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
    if (count >= capacity || entries == nullptr) {
        return false;
    }
    entries[count] = entry;
    ++count;
    ZeroBeats(count - 1);
    modified = 1;
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
        SetValue(leads[k], count - 1, &LeadBeat::leadValue, value);
    }
    return true;
}

bool AnnotationStore::Grow() {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (capacity > kMost - kGrowth) {
        return false;
    }
    const std::uint32_t grown = capacity + kGrowth;
    // The stated capacity grows by 10, the room behind it by half, so that a recording inserted beat by beat
    // is not copied every ten beats. Where memory is too short for that, 10 have to do.
    if (grown > room_ && !Reallocate(grown + std::min(grown / 2, kMost - grown)) && !Reallocate(grown)) {
        return false;
    }
    capacity = grown;
    return true;
}

// New arrays of entries and of slots 17 to 19, their ends not yet written, or nothing changed.
bool AnnotationStore::Reallocate(std::uint32_t room) {
    Array<KxAnnotation> moved = NewArray<KxAnnotation>(room);
    bool whole = moved != nullptr;
    std::array<Array<LeadBeat>, kChannelSlots> movedBeats;
    for (std::uint32_t channel = 0; whole && channel < kChannelSlots; ++channel) {
        if (const LeadBeat* beats = ChannelBeats()[channel]) {
            movedBeats[channel] = NewArray<LeadBeat>(room);
            whole = movedBeats[channel] != nullptr;
            if (whole) {
                std::copy_n(beats, count, movedBeats[channel].get());
            }
        }
    }
    if (!whole) {
        return false;
    }
    std::copy_n(entries, count, moved.get());
    Replace(entries, std::move(moved));
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        Replace(ChannelBeats()[channel], std::move(movedBeats[channel]));
    }
    room_ = room;
    return true;
}

// Where an entry of time t belongs: before the first one that is not earlier. The search starts where t would
// lie if the beats were evenly spaced.
std::uint32_t AnnotationStore::PositionFor(std::uint32_t t) const {
    if (count == 0) {
        return 0;
    }
    const std::uint32_t last = entries[count - 1].timeMs;
    if (last < t) {
        return count;
    }
    const std::uint64_t guess = last != 0 ? (std::uint64_t{count} * t + last / 2) / last : count;
    std::uint32_t i = static_cast<std::uint32_t>(std::min<std::uint64_t>(guess, count - 1));
    if (entries[i].timeMs >= t) {
        while (i > 0 && entries[i - 1].timeMs >= t) {
            --i;
        }
    } else {
        while (i < count && entries[i].timeMs < t) {
            ++i;
        }
    }
    return i;
}

std::optional<std::uint32_t> AnnotationStore::InsertEntry(const KxAnnotation& entry) {
    if ((count > 0 && entries == nullptr) || (count >= capacity && !Grow()) || entries == nullptr) {
        return std::nullopt;
    }
    const std::uint32_t position = PositionFor(entry.timeMs);
    const auto makeRoom = [this, position](auto* array) {
        std::copy_backward(array + position, array + count, array + count + 1);
    };
    makeRoom(entries);
    for (LeadBeat* beats : ChannelBeats()) {
        if (beats != nullptr) {
            makeRoom(beats);
            beats[position] = LeadBeat{};
        }
    }
    entries[position] = entry;
    ++count;
    modified = 1;
    return position;
}

std::optional<std::uint32_t> AnnotationStore::Insert(std::uint8_t label, std::uint32_t t) {
    return InsertEntry(Annotation(label, t));
}

bool AnnotationStore::ExtendOpenSegment(std::uint32_t end) {
    if (count == 0 || Label(count - 1) != kLabelSegment) {
        return false;
    }
    SetTime(count - 1, end);
    return true;
}

bool AnnotationStore::MarkSegment(std::uint32_t start, std::uint32_t end) {
    if (ExtendOpenSegment(end)) {
        return true;
    }
    if (capacity - count < 2) {
        return false;
    }
    return Append(SegmentMarker(kSegmentStart, start)) && Append(SegmentMarker(kSegmentEnd, end));
}

bool AnnotationStore::InsertSegment(std::uint32_t start, std::uint32_t end) {
    if (ExtendOpenSegment(end)) {
        return true;
    }
    if (capacity - count <= 2) {
        return false;
    }
    // The end first: an entry goes before its equals, and so a segment of no length still begins before it
    // ends.
    return InsertEntry(SegmentMarker(kSegmentEnd, end)) && InsertEntry(SegmentMarker(kSegmentStart, start));
}

// ---- removing

// Entries from `from` on move to `to`, which is not above it; the ones between are gone.
void AnnotationStore::MoveDown(std::uint32_t to, std::uint32_t from) {
    const auto close = [this, to, from](auto* array) { std::copy(array + from, array + count, array + to); };
    close(entries);
    for (LeadBeat* beats : ChannelBeats()) {
        if (beats != nullptr) {
            close(beats);
        }
    }
    count -= from - to;
    modified = 1;
}

bool AnnotationStore::Remove(std::uint8_t label, std::uint32_t t) {
    for (std::uint32_t i = 0; HasEntry(i); ++i) {
        if (entries[i].timeMs == t && entries[i].label == label) {
            MoveDown(i, i + 1);
            return true;
        }
    }
    return false;
}

void AnnotationStore::RemoveLabel(std::uint8_t label) {
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; HasEntry(i); ++i) {
        if (entries[i].label == label) {
            continue;
        }
        entries[kept] = entries[i];
        for (LeadBeat* beats : ChannelBeats()) {
            if (beats != nullptr) {
                beats[kept] = beats[i];
            }
        }
        ++kept;
    }
    if (kept < count) {
        count = kept;
        modified = 1;
    }
}

void AnnotationStore::RemoveAt(std::uint32_t i) {
    RemoveRange(i, i);
}

void AnnotationStore::RemoveRange(std::uint32_t from, std::uint32_t to) {
    if (HasEntry(from) && from <= to) {
        MoveDown(from, std::min(to, count - 1) + 1);
    }
}

}  // namespace kx
