#include "lib/annotation_store.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "lib/muldiv.h"

namespace kx {

namespace {

static_assert(sizeof(Annotation) == sizeof(KxAnnotation));
static_assert(sizeof(AnnotationStore) == sizeof(KxAnnotationStore) + 2 * sizeof(std::uint32_t) ||
              sizeof(void*) != 4);

constexpr std::int32_t kWidestBeat = 255;
// Labels whose width in a lead is never overwritten.
constexpr std::uint8_t kFixedWidthLabels[] = {12, 20, 21};

constexpr std::uint8_t HalvedWidth(std::int32_t width) {
    return static_cast<std::uint8_t>(std::clamp<std::int32_t>(width, 0, kWidestBeat) / 2);
}

}  // namespace

const LeadBeat* AnnotationStore::BeatIn(std::uint32_t slot, std::uint32_t i) const {
    if (slot >= KX_BEAT_LEADS || i >= count || (slot < kFirstChannelSlot && i >= fixedRoom_)) {
        return nullptr;
    }
    return leadBeats[slot] != nullptr ? &leadBeats[slot][i] : nullptr;
}

// ---- size and state

std::uint32_t AnnotationStore::CountOfLabel(std::uint8_t label) const {
    std::uint32_t found = 0;
    for (std::uint32_t i = 0; HasEntry(i); ++i) {
        found += entries[i].label == label;
    }
    return found;
}

void AnnotationStore::Clear() {
    count = 0;
    modified = 1;
}

void AnnotationStore::SetSampling(std::uint32_t samplesPerSecond, std::uint32_t nanovoltsPerUnit) {
    sampleRate = samplesPerSecond;
    resolutionNv = nanovoltsPerUnit;
    modified = 1;
}

// ---- entries

std::uint32_t AnnotationStore::Time(std::uint32_t i) const {
    return HasEntry(i) ? entries[i].timeMs : 0;
}

std::uint8_t AnnotationStore::Label(std::uint32_t i) const {
    return HasEntry(i) ? entries[i].label : kLabelNone;
}

std::uint8_t AnnotationStore::LabelInLead(std::uint32_t i, std::uint32_t slot) const {
    const LeadBeat* beat = BeatIn(slot, i);
    return beat != nullptr && beat->leadValue == 0 ? kLabelInvalidInLead : Label(i);
}

std::int8_t AnnotationStore::SubLabel(std::uint32_t i) const {
    return HasEntry(i) ? entries[i].subLabel : kSubLabelNone;
}

std::uint16_t AnnotationStore::HeartRate(std::uint32_t i) const {
    return HasEntry(i) ? entries[i].heartRate : std::uint16_t{0};
}

void AnnotationStore::SetTime(std::uint32_t i, std::uint32_t t) {
    modified = 1;
    if (HasEntry(i)) {
        entries[i].timeMs = t;
    }
}

void AnnotationStore::SetLabel(std::uint32_t i, std::uint8_t label, bool markAllLeadsValid) {
    modified = 1;
    if (HasEntry(i)) {
        entries[i].label = label;
    }
    for (std::uint32_t slot = 0; markAllLeadsValid && slot < KX_BEAT_LEADS; ++slot) {
        SetValue(slot, i, &LeadBeat::leadValue, 1);
    }
}

void AnnotationStore::SetSubLabel(std::uint32_t i, std::int8_t subLabel) {
    modified = 1;
    if (HasEntry(i)) {
        entries[i].subLabel = subLabel;
    }
}

void AnnotationStore::SetHeartRate(std::uint32_t i, std::uint16_t value) {
    modified = 1;
    if (HasEntry(i)) {
        entries[i].heartRate = value;
    }
}

void AnnotationStore::SetSubLabelAndLeadValue(std::uint32_t i, std::int8_t subLabel, std::int16_t leadValue) {
    SetSubLabel(i, subLabel);
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        LeadBeat* beat = BeatIn(slot, i);
        if (beat != nullptr && beat->leadValue != 0) {
            beat->leadValue = leadValue;
        }
    }
}

// ---- beats in their leads

std::int32_t AnnotationStore::AmplitudeMicrovolts(std::uint32_t slot, std::uint32_t i,
                                                  std::int16_t LeadBeat::*amplitude) const {
    const auto resolution = static_cast<std::int32_t>(std::min<std::uint32_t>(resolutionNv, INT32_MAX));
    return MulDivRound(Value(slot, i, amplitude), resolution, 1000);
}

std::int32_t AnnotationStore::SamplesToMs(std::int32_t samples) const {
    const auto rate = static_cast<std::int32_t>(std::min<std::uint32_t>(sampleRate, INT32_MAX));
    return rate != 0 ? MulDivRound(samples, 1000, rate) : 0;
}

std::uint32_t AnnotationStore::Width(std::uint32_t i) const {
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        if (BeatIn(slot, i) != nullptr) {
            return LeadWidth(slot, i);
        }
    }
    return 0;
}

void AnnotationStore::SetWidth(std::uint32_t i, std::int32_t width) {
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        SetValue(slot, i, &LeadBeat::widthHalf, HalvedWidth(width));
    }
}

std::uint32_t AnnotationStore::LeadWidth(std::uint32_t slot, std::uint32_t i) const {
    return 2u * Value(slot, i, &LeadBeat::widthHalf);
}

void AnnotationStore::SetLeadWidth(std::uint32_t slot, std::uint32_t i, std::int32_t width) {
    modified = 1;
    const std::uint8_t label = Label(i);
    if (std::find(std::begin(kFixedWidthLabels), std::end(kFixedWidthLabels), label) ==
        std::end(kFixedWidthLabels)) {
        SetValue(slot, i, &LeadBeat::widthHalf, HalvedWidth(width));
    }
}

std::uint32_t AnnotationStore::LeadMask(std::uint32_t i) const {
    std::uint32_t mask = 0;
    for (std::uint32_t channel = 0; channel < kChannelSlots; ++channel) {
        mask |= (Value(kFirstChannelSlot + channel, i, &LeadBeat::leadValue) != 0 ? 1u : 0u) << channel;
    }
    return mask;
}

std::int16_t AnnotationStore::StrongestLead(std::uint32_t i, std::uint32_t* slot) const {
    std::int16_t strongest = std::numeric_limits<std::int16_t>::min();
    std::uint32_t first = 0;
    for (std::uint32_t s = KX_BEAT_LEADS; s-- > 0;) {
        const std::int16_t value = Value(s, i, &LeadBeat::leadValue);
        if (value >= strongest) {
            strongest = value;
            first = s;
        }
    }
    if (slot != nullptr) {
        *slot = first;
    }
    return strongest;
}

std::int32_t AnnotationStore::QrsDurationMs(std::uint32_t i) const {
    std::int32_t onset = std::numeric_limits<std::int32_t>::max();
    std::int32_t end = 0;
    for (std::uint32_t slot = kFirstChannelSlot; slot < kFirstChannelSlot + kChannelSlots; ++slot) {
        if (const LeadBeat* beat = BeatIn(slot, i)) {
            onset = std::min<std::int32_t>(onset, beat->onsetOffset);
            end = std::max<std::int32_t>(end, beat->endOffset);
        }
    }
    return end != 0 ? SamplesToMs(end - onset) : 0;
}

// ---- rates

void AnnotationStore::UpdateHeartRate(std::uint32_t i) {
    if (!HasEntry(i)) {
        return;
    }
    constexpr std::uint32_t kFarthestToStepFrom = 2;
    std::uint32_t lo = i;
    while (lo > 0 && i - lo <= kFarthestToStepFrom && Label(lo) == kLabelNormalBeat) {
        --lo;
    }
    std::uint32_t hi = i;
    while (hi < count && hi - i <= kFarthestToStepFrom && Label(hi) == kLabelNormalBeat) {
        ++hi;
    }
    hi = std::min(hi, count - 1);
    const std::uint32_t first = Time(lo);
    const std::uint32_t last = Time(hi);
    if (lo >= hi || last <= first) {
        return;
    }
    const std::uint32_t span = last - first;
    const std::uint32_t rate = (60000 * (hi - lo) + span / 2) / span;
    SetHeartRate(i, static_cast<std::uint16_t>(std::min<std::uint32_t>(rate, UINT16_MAX)));
}

}  // namespace kx
