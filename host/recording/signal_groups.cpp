#include "host/recording/signal_groups.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "host/recording/read_failure.h"

namespace kx::recording {

namespace {

using LeadSet = std::array<bool, kLeadCount>;

LeadSet LeadsOf(const SignalGroup& group) {
    LeadSet leads{};
    for (const Channel& channel : group.channels) {
        leads[channel.lead.lead] = true;
    }
    return leads;
}

bool IsWhole(const LeadSet& leads) {
    const auto limb = std::count(leads.begin(), leads.begin() + kLeadV1, true);
    return limb >= 2 && std::all_of(leads.begin() + kLeadV1, leads.end(), [](bool there) { return there; });
}

std::string ListLeads(const LeadSet& leads, bool there) {
    std::string list;
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        if (leads[lead] == there) {
            list += (list.empty() ? "" : ", ") + std::string(kLeadNames[lead]);
        }
    }
    return list;
}

std::size_t LengthOf(const SignalGroup& group) {
    return group.channels.empty() ? 0 : group.channels.front().microvolts.size();
}

double SecondsOf(const SignalGroup& group) {
    return group.sampleRate > 0 ? double(LengthOf(group)) / group.sampleRate : 0;
}

// The longest group of the kind that holds all leads; null when none does.
SignalGroup* LongestWhole(std::vector<SignalGroup>& groups, SignalKind kind) {
    SignalGroup* longest = nullptr;
    for (SignalGroup& group : groups) {
        if (group.kind == kind && IsWhole(LeadsOf(group)) &&
            (longest == nullptr || SecondsOf(group) > SecondsOf(*longest))) {
            longest = &group;
        }
    }
    return longest;
}

bool SampledTogether(const SignalGroup& a, const SignalGroup& b) {
    return a.kind == b.kind && a.sampleRate == b.sampleRate && LengthOf(a) == LengthOf(b) &&
           std::fabs(a.startMs - b.startMs) * a.sampleRate < 500;  // less than half a sample
}

// Joins every group to the first that it was sampled with.
std::vector<SignalGroup> Joined(std::vector<SignalGroup> groups) {
    std::vector<SignalGroup> joined;
    for (SignalGroup& group : groups) {
        const auto same = std::find_if(joined.begin(), joined.end(), [&](const SignalGroup& other) {
            return SampledTogether(other, group);
        });
        if (same == joined.end()) {
            joined.push_back(std::move(group));
        } else {
            std::move(group.channels.begin(), group.channels.end(), std::back_inserter(same->channels));
        }
    }
    return joined;
}

bool SameSamples(const Channel& a, const Channel& b) {
    return a.lead == b.lead && a.microvolts == b.microvolts;
}

// Throws when a lead occurs twice with different samples.
void CheckTwins(const SignalGroup& group) {
    for (std::size_t i = 0; i < group.channels.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            const Channel &channel = group.channels[i], &other = group.channels[k];
            if (other.lead.lead == channel.lead.lead && !SameSamples(other, channel)) {
                Refuse(std::string("lead ") + kLeadNames[channel.lead.lead] + " is there twice");
            }
        }
    }
}

[[noreturn]] void RefuseIncomplete(const std::vector<SignalGroup>& groups) {
    LeadSet all{};
    for (const SignalGroup& group : groups) {
        CheckTwins(group);
        const LeadSet leads = LeadsOf(group);
        std::transform(all.begin(), all.end(), leads.begin(), all.begin(),
                       [](bool a, bool b) { return a || b; });
    }
    if (IsWhole(all)) {
        Refuse(
            "the leads were not recorded from the same instant to the same instant, so that no beat can be "
            "seen in all of them");
    }
    if (std::none_of(all.begin(), all.end(), [](bool there) { return there; })) {
        Refuse("it holds none of the twelve leads");
    }
    const bool limb = std::count(all.begin(), all.begin() + kLeadV1, true) >= 2;
    LeadSet needed = all;
    // With two limb leads the others can be derived; with less all of them are named.
    std::fill(needed.begin(), needed.begin() + (limb ? static_cast<int>(kLeadV1) : 0), true);
    const std::string missing = ListLeads(needed, false);
    Refuse((missing.find(',') == std::string::npos ? "lead " + missing + " is missing"
                                                   : "the leads " + missing + " are missing") +
           " (it holds " + ListLeads(all, true) + ")");
}

void TakeChannel(Channel& channel, Recording& recording, LeadSet& taken) {
    const std::size_t lead = channel.lead.lead;
    const std::string name = kLeadNames[lead];
    if (!BridgeGaps(channel.microvolts, channel.gaps)) {
        Refuse("lead " + name + " holds no value");
    }
    if (channel.lead.inverted) {
        std::transform(channel.microvolts.begin(), channel.microvolts.end(), channel.microvolts.begin(),
                       [](float value) { return -value; });
    }
    AddGaps(recording.gaps, channel.gaps);
    recording.leads[lead] = std::move(channel.microvolts);
    recording.resolutionUv[lead] = channel.resolutionUv;
    taken[lead] = true;
}

void CheckLength(const SignalGroup& group) {
    const std::size_t count = LengthOf(group);
    if (!(group.sampleRate >= kLowestSampleRate)) {
        Refuse("its sampling rate is too low for an ECG");
    }
    if (count == 0) {
        Refuse("it holds no samples");
    }
    if (count > kMostSamples) {
        Refuse("the recording is longer than " + std::to_string(kMostSamples) + " samples a lead");
    }
    if (SecondsOf(group) > kLongestSeconds) {
        Refuse("the recording is longer than half an hour");
    }
}

void TakeGroup(SignalGroup& group, Recording& recording) {
    CheckLength(group);
    CheckTwins(group);
    for (const Channel& channel : group.channels) {
        if (channel.microvolts.size() != LengthOf(group)) {
            Refuse("the leads are not of the same length");
        }
    }
    LeadSet taken{};
    for (Channel& channel : group.channels) {
        if (!taken[channel.lead.lead]) {
            TakeChannel(channel, recording, taken);
        }
    }
    std::transform(taken.begin(), taken.end(), recording.derived.begin(), [](bool there) { return !there; });
    recording.sampleRate = group.sampleRate;
    DeriveLeads(recording);
    if (recording.acquisitionTime.year == 0) {
        recording.acquisitionTime = group.startTime;
    }
    if (!recording.gaps.empty()) {
        recording.remarks.emplace_back("some samples are missing and were bridged");
    }
}

}  // namespace

void TakeSignals(std::vector<SignalGroup> groups, Recording& recording) {
    constexpr SignalKind kKinds[] = {SignalKind::kRecorded, SignalKind::kDerived,
                                     SignalKind::kRepresentativeBeat};
    const auto count = std::count_if(groups.begin(), groups.end(), [](const SignalGroup& group) {
        return group.kind == SignalKind::kRecorded && IsWhole(LeadsOf(group));
    });
    if (count > 1) {
        recording.remarks.push_back("of " + std::to_string(count) + " recordings the longest is shown");
    }
    SignalGroup* whole = nullptr;
    for (const SignalKind kind : kKinds) {
        // A recording of several groups is better than a single beat in one.
        if (whole == nullptr && kind != SignalKind::kRepresentativeBeat) {
            whole = LongestWhole(groups, kind);
        }
    }
    if (whole == nullptr) {
        groups = Joined(std::move(groups));
        for (const SignalKind kind : kKinds) {
            whole = whole == nullptr ? LongestWhole(groups, kind) : whole;
        }
    }
    if (whole == nullptr) {
        RefuseIncomplete(groups);
    }
    if (whole->kind == SignalKind::kRepresentativeBeat) {
        recording.remarks.emplace_back(
            "only a representative beat is there, no rhythm: the heart rate is not known");
    }
    TakeGroup(*whole, recording);
}

}  // namespace kx::recording
