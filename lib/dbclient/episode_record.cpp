#include "lib/dbclient/episode_record.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "lib/muldiv.h"

namespace kx {

namespace {

// A sample as the record stores it: 16 bits, wrapping.
std::int16_t AsSample(std::int32_t value) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
}

}  // namespace

const std::int16_t* EpisodeRecord::Samples(std::uint32_t leadCode) const {
    const std::uint32_t code = leadCode == KX_LEAD_MINUS_AVR ? std::uint32_t{KX_LEAD_AVR} : leadCode;
    const auto area = SampleArea();
    if (area.empty() || code >= KX_LEAD_EMPTY) {
        return nullptr;
    }
    // Records made here keep each lead in the slot of its code.
    const KxLeadSlot* slot = &leadTable[code];
    if (slot->leadCode != code) {
        slot = std::find_if(std::begin(leadTable), std::end(leadTable),
                            [code](const KxLeadSlot& other) { return other.leadCode == code; });
        if (slot == std::end(leadTable)) {
            return nullptr;
        }
    }
    return std::uint64_t{slot->sampleOffset} + samplesPerLead <= area.size() ? samples + slot->sampleOffset
                                                                             : nullptr;
}

std::int16_t* EpisodeRecord::Samples(std::uint32_t leadCode) {
    return const_cast<std::int16_t*>(static_cast<const EpisodeRecord*>(this)->Samples(leadCode));
}

std::int32_t EpisodeRecord::Sample(std::uint32_t leadCode, std::uint32_t index) const {
    const std::int16_t* lead = Samples(leadCode);
    if (lead == nullptr || index >= samplesPerLead) {
        return 0;
    }
    return leadCode == KX_LEAD_MINUS_AVR ? -lead[index] : lead[index];
}

std::int32_t EpisodeRecord::SampleMicrovolts(std::uint32_t leadCode, std::uint32_t index) const {
    constexpr auto kMost = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
    return MulDivRound(Sample(leadCode, index), static_cast<std::int32_t>(std::min(resolutionNv, kMost)),
                       1000);
}

bool EpisodeRecord::SetLeadSamples(std::uint32_t leadCode, const std::int16_t* samplesToCopy,
                                   std::uint32_t count) {
    std::int16_t* lead = Samples(leadCode);
    if (lead == nullptr || leadCode == KX_LEAD_MINUS_AVR || count > samplesPerLead ||
        (samplesToCopy == nullptr && count > 0)) {
        return false;
    }
    std::copy_n(samplesToCopy, count, lead);
    std::fill(lead + count, lead + samplesPerLead, std::int16_t{0});
    return true;
}

void EpisodeRecord::ShiftLead(std::uint32_t leadCode, std::int32_t offset) {
    if (std::int16_t* lead = Samples(leadCode)) {
        const auto shift = static_cast<std::uint32_t>(offset);
        std::transform(lead, lead + samplesPerLead, lead, [shift](std::int16_t sample) {
            return AsSample(static_cast<std::int32_t>(static_cast<std::uint32_t>(sample) - shift));
        });
    }
}

bool EpisodeRecord::DeriveLimbLeads() {
    std::int16_t* lead[6];
    for (std::uint32_t code = KX_LEAD_I; code <= KX_LEAD_AVF; ++code) {
        lead[code] = Samples(code);
        if (lead[code] == nullptr) {
            return false;
        }
    }
    for (std::uint32_t i = 0; i < samplesPerLead; ++i) {
        const std::int32_t one = lead[KX_LEAD_I][i];
        const std::int32_t two = lead[KX_LEAD_II][i];
        lead[KX_LEAD_III][i] = AsSample(two - one);
        lead[KX_LEAD_AVR][i] = AsSample(-(one + two) / 2);
        lead[KX_LEAD_AVL][i] = AsSample(one - two / 2);
        lead[KX_LEAD_AVF][i] = AsSample(two - one / 2);
    }
    return true;
}

void EpisodeRecord::ClearSamples() {
    const auto area = SampleArea();
    std::fill(area.begin(), area.end(), std::int16_t{0});
    Measurements().Clear();
}

void EpisodeRecord::AddSecond() {
    if (state == 0) {
        durationSeconds = 1;
    } else if (durationSeconds < kLongestEpisodeSeconds) {
        ++durationSeconds;
    }
}

void EpisodeRecord::SetEndTimeMs(std::uint32_t ms) {
    endTimeMs = ms;
    measurements.episodeTime = ms;
}

void EpisodeRecord::SetGlobalFiducials(std::uint16_t pOn, std::uint16_t pOff, std::uint16_t qrsOn,
                                       std::uint16_t qrsOff, std::uint16_t tOff) {
    for (KxLeadMeasurements& lead : measurements.leads) {
        lead.pOn = pOn;
        lead.pOff = pOff;
        lead.qrsOn = qrsOn;
        lead.qrsOff = qrsOff;
        lead.tOff = tOff;
    }
}

void EpisodeRecord::SetQrsOn(std::uint16_t ms) {
    for (KxLeadMeasurements& lead : measurements.leads) {
        lead.qrsOn = ms;
    }
}

}  // namespace kx
