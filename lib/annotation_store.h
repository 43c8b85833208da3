// The beats and markers of one recording, in order of time, with what was measured of each beat in each lead.
// Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>

#include "include/kxdialogs.h"
#include "lib/reporter.h"

namespace kx {

// Labels and sub-labels that the store itself knows; the analysis and the recorders define the others.
inline constexpr std::uint8_t kLabelNormalBeat = 1;
inline constexpr std::uint8_t kLabelSegment = 15;        // a segment marker
inline constexpr std::uint8_t kLabelInvalidInLead = 15;  // and a beat that a lead does not show
inline constexpr std::uint8_t kLabelNone = 47;           // of an entry that does not exist
inline constexpr std::int8_t kSubLabelNone = -1;         // of a new entry, and of one that does not exist
inline constexpr std::int8_t kSubLabelInMedian = 0;      // of a beat that the median beat was made of
inline constexpr std::int8_t kSegmentStart = -3;
inline constexpr std::int8_t kSegmentEnd = -2;

inline constexpr std::uint32_t kFirstChannelSlot =
    17;  // slots 17 to 19: the leads of a three-channel recording
inline constexpr std::uint32_t kChannelSlots = 3;
inline constexpr std::uint32_t kNewSampleRate = 240;
inline constexpr std::uint32_t kNewResolutionNv = 1220;

// An entry, zero with sub-label -1 when new.
struct Annotation : KxAnnotation {
    constexpr Annotation() : KxAnnotation{0, 0, kSubLabelNone, 0} {}
    constexpr Annotation(std::uint8_t beatLabel, std::uint32_t t) : KxAnnotation{t, beatLabel, 0, 0} {}
    // A normal beat of a class of its own.
    static constexpr Annotation Classified(std::int8_t beatClass, std::uint32_t t) {
        Annotation beat(kLabelNormalBeat, t);
        beat.subLabel = beatClass;
        return beat;
    }
};

using LeadBeat = KxLeadBeat;

// A KxAnnotationStore with its operations and its memory; not for a store of a host's, which has none of the
// two fields behind it. An index or a slot that does not exist is answered with a stated value and changes
// nothing; an array for which memory was short is absent. Every operation that changes an entry or a lead
// beat sets the modified mark, setters also where there was nothing to set. The workstation fills a store and
// the record carries it; removing, widths, segments and values in a lead are for the suite's other programs.
class AnnotationStore : public KxAnnotationStore {
  public:
    // The three-channel form: entries and the lead beats of slots 17, 18 and 19.
    explicit AnnotationStore(std::uint32_t newCapacity);
    // The twelve-lead form: entries and the lead beats of slots 0 to 11, or entries alone.
    AnnotationStore(std::uint32_t newCapacity, bool entriesOnly);
    // Leaves the other without entries and capacity.
    AnnotationStore(AnnotationStore&& other) noexcept;
    AnnotationStore& operator=(AnnotationStore&&) = delete;
    ~AnnotationStore();

    // ---- size and state
    std::uint32_t Capacity() const { return capacity; }
    std::uint32_t Count() const { return count; }
    std::uint32_t CountOfLabel(std::uint8_t label) const;
    bool IsModified() const { return modified != 0; }
    void ClearModified() { modified = 0; }
    void Clear();  // no entries; the capacity stays
    std::uint32_t SampleRate() const { return sampleRate; }
    std::uint32_t ResolutionNv() const { return resolutionNv; }
    // Samples per second of the lead beats' offsets, nanovolts per unit of their amplitudes.
    void SetSampling(std::uint32_t samplesPerSecond, std::uint32_t nanovoltsPerUnit);

    // ---- entries
    std::uint32_t Time(std::uint32_t i) const;  // ms; 0
    std::uint8_t Label(std::uint32_t i) const;  // kLabelNone
    // kLabelInvalidInLead when the lead's beats are stored and this one's leadValue is 0, else Label(i).
    std::uint8_t LabelInLead(std::uint32_t i, std::uint32_t slot) const;
    std::int8_t SubLabel(std::uint32_t i) const;     // -1
    std::uint16_t HeartRate(std::uint32_t i) const;  // 0
    void SetTime(std::uint32_t i, std::uint32_t t);
    // With the mark every stored lead gets leadValue 1 at i.
    void SetLabel(std::uint32_t i, std::uint8_t label, bool markAllLeadsValid = false);
    void SetSubLabel(std::uint32_t i, std::int8_t subLabel);
    void SetHeartRate(std::uint32_t i, std::uint16_t value);
    // Also puts leadValue into slots 17 to 19 where it is not 0.
    void SetSubLabelAndLeadValue(std::uint32_t i, std::int8_t subLabel, std::int16_t leadValue);

    // ---- beats in their leads. One getter and one setter serve every field of a LeadBeat, as stored:
    // Value(17, i, &LeadBeat::onsetOffset). A beat that is not there reads as 0.
    template <class Field>
    Field Value(std::uint32_t slot, std::uint32_t i, Field LeadBeat::*field) const {
        const LeadBeat* beat = BeatIn(slot, i);
        return beat != nullptr ? beat->*field : Field{0};
    }
    template <class Field>
    void SetValue(std::uint32_t slot, std::uint32_t i, Field LeadBeat::*field,
                  std::type_identity_t<Field> value) {
        modified = 1;
        if (LeadBeat* beat = BeatIn(slot, i)) {
            beat->*field = value;
        }
    }
    // Microvolts, rounded. -1 where the result does not fit 32 bits (Win32 MulDiv).
    std::int32_t AmplitudeMicrovolts(std::uint32_t slot, std::uint32_t i,
                                     std::int16_t LeadBeat::*amplitude) const;
    // Milliseconds, rounded; 0 when the sample rate is 0.
    template <class Field>
    std::int32_t OffsetMs(std::uint32_t slot, std::uint32_t i, Field LeadBeat::*offset) const {
        return SamplesToMs(Value(slot, i, offset));
    }

    // The width of a beat, 0 to 255, kept by halves. Of slots 17 to 19: the first one stored is read, all
    // that are stored are written.
    std::uint32_t Width(std::uint32_t i) const;
    void SetWidth(std::uint32_t i, std::int32_t width);
    // In one lead; entries labelled 12, 20 or 21 keep the width that they have.
    std::uint32_t LeadWidth(std::uint32_t slot, std::uint32_t i) const;
    void SetLeadWidth(std::uint32_t slot, std::uint32_t i, std::int32_t width);

    // Bits 0, 1 and 2: slots 17, 18 and 19 show the beat.
    std::uint32_t LeadMask(std::uint32_t i) const;
    // The largest leadValue over the 20 slots and the first slot that holds it; a lead that is not stored has
    // 0.
    std::int16_t StrongestLead(std::uint32_t i, std::uint32_t* slot) const;
    // From the earliest onset to the latest end in slots 17 to 19, ms; 0 when there is none.
    std::int32_t QrsDurationMs(std::uint32_t i) const;

    // ---- adding. A new entry comes with zeroed lead beats; false, and nothing changed, when there is no
    // room.
    bool Append(const KxAnnotation& entry);
    bool Append(std::uint8_t label, std::uint32_t t) { return Append(Annotation(label, t)); }
    // A beat of a class, leadValue `value` in the slots 17 to 19 whose bit 0 to 2 is set.
    bool AppendBeat(std::int8_t beatClass, std::int16_t value, std::uint32_t t, std::uint32_t leadMask);
    // Likewise in the listed slots of all 20; a slot that is not stored is passed over.
    bool AppendBeat(std::int8_t beatClass, std::int16_t value, std::uint32_t t, std::uint32_t leadCount,
                    const std::uint32_t* leads);
    // In order of time, before every entry of the same time or later. A full store first grows by 10. Returns
    // the index, nothing when it could not grow. Only slots 17 to 19 grow and move with their entries: the
    // twelve-lead form is filled by Append, and beyond its first capacity its beats are absent.
    std::optional<std::uint32_t> Insert(std::uint8_t label, std::uint32_t t);
    // Two segment markers, or only the last entry's time moved when it is a segment marker: the segment is
    // still open. Mark appends them, Insert puts them in order of time and wants one place left over.
    bool MarkSegment(std::uint32_t start, std::uint32_t end);
    bool InsertSegment(std::uint32_t start, std::uint32_t end);

    // ---- removing. Later entries move down with their beats in slots 17 to 19.
    bool Remove(std::uint8_t label, std::uint32_t t);  // the first entry of both; false: none
    void RemoveLabel(std::uint8_t label);
    void RemoveAt(std::uint32_t i);
    // The entries that stand at from to to at the call, both included.
    void RemoveRange(std::uint32_t from, std::uint32_t to);

    // ---- rates
    // The heart rate at a normal beat from up to three intervals to each side, as far as beats are normal;
    // unchanged when there is no interval or no time in it. At most 65535.
    void UpdateHeartRate(std::uint32_t i);

    // ---- the annotation block, lib/annotation_block.cpp
    std::size_t SerializedSize() const;
    // A new block of SerializedSize() bytes, which also stand in its first word; null when the store is empty
    // or memory is short.
    std::unique_ptr<std::uint8_t[]> Serialize() const;
    // Entries, or entries and the lead beats of slots 17 to 19, up to the capacity. Of a block only `size`
    // bytes are read; one that is shorter than its count asks for is refused before anything changes. Entries
    // read without their lead beats keep those that stood at their index, and have zeroed ones where none
    // stood.
    bool ReadEntries(const void* block, std::size_t size, Reporter& log);
    bool Read(const void* block, std::size_t size, Reporter& log);
    // Makes the store anew from a block: empty unless the block has entries of the known version. False: it
    // has none, or memory is short, or the block is refused as above.
    bool Rebuild(const void* block, std::size_t size, bool twelveLead);

    // The arrays of slots 17 to 19, each null when it is not stored.
    std::span<LeadBeat*, kChannelSlots> ChannelBeats() {
        return std::span<LeadBeat*, kChannelSlots>(leadBeats + kFirstChannelSlot, kChannelSlots);
    }
    std::span<LeadBeat* const, kChannelSlots> ChannelBeats() const {
        return std::span<LeadBeat* const, kChannelSlots>(leadBeats + kFirstChannelSlot, kChannelSlots);
    }

  private:
    AnnotationStore();
    void Allocate(std::uint32_t newCapacity, std::uint32_t firstSlot, std::uint32_t slots);
    void Discard();
    bool Grow();
    bool Reallocate(std::uint32_t room);
    void ZeroBeats(std::uint32_t i);
    std::uint32_t PositionFor(std::uint32_t t) const;
    std::optional<std::uint32_t> InsertEntry(const KxAnnotation& entry);
    bool ExtendOpenSegment(std::uint32_t end);
    void MoveDown(std::uint32_t to, std::uint32_t from);
    std::int32_t SamplesToMs(std::int32_t samples) const;

    bool HasEntry(std::uint32_t i) const { return i < count && entries != nullptr; }
    const LeadBeat* BeatIn(std::uint32_t slot, std::uint32_t i) const;
    LeadBeat* BeatIn(std::uint32_t slot, std::uint32_t i) {
        return const_cast<LeadBeat*>(static_cast<const AnnotationStore*>(this)->BeatIn(slot, i));
    }

    // The entries that the arrays which grow have room for, at least capacity, and the ones that all others
    // have.
    std::uint32_t room_ = 0;
    std::uint32_t fixedRoom_ = 0;
};

}  // namespace kx
