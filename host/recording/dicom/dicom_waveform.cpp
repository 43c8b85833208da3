#include "host/recording/dicom/dicom_waveform.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/recording/byte_reader.h"
#include "host/recording/dicom/dicom_tags.h"
#include "host/recording/text_scanner.h"
#include "host/recording/voltage_units.h"

namespace kx::recording {

namespace {

using Samples = std::vector<std::int64_t>;

// How the samples of a group are stored.
struct SampleLayout {
    std::size_t channels = 0;
    std::size_t count = 0;  // per channel
    std::size_t bytes = 0;  // of a sample
    bool isSigned = true;
};

// "5.6.3-9-61" of the scheme SCPECG, "2:61" of MDC: the last number is the lead's.
std::optional<NamedLead> LeadOfCode(std::string_view code, std::string_view scheme) {
    constexpr std::string_view kScp = "5.6.3-9-", kMdc = "2:";
    for (const std::string_view start : {kScp, kMdc}) {
        if (code.starts_with(start)) {
            const auto number = WholeNumber<unsigned>(code.substr(start.size()));
            return number ? LeadOfNumber(*number) : std::nullopt;
        }
    }
    constexpr unsigned kMdcPart2 = 2u << 16;
    const auto number = WholeNumber<unsigned>(code);
    if (number && scheme == "MDC" && *number > kMdcPart2) {
        return LeadOfNumber(*number - kMdcPart2);
    }
    return LeadOfName(code);
}

// By code first, then by its meaning, then by the channel's label.
std::optional<NamedLead> LeadOfChannel(const DicomDataSet& channel) {
    for (const DicomDataSet& source : channel.Items(kChannelSource)) {
        if (const auto lead = LeadOfCode(source.Text(kCodeValue), source.Text(kCodingScheme))) {
            return lead;
        }
        if (const auto lead = LeadOfName(source.Text(kCodeMeaning))) {
            return lead;
        }
    }
    return LeadOfName(channel.Text(kChannelLabel));
}

std::string NameOf(const NamedLead& lead) {
    return std::string("lead ") + kLeadNames[lead.lead];
}

// Microvolts in a sample unit, and of sample value 0.
struct Scale {
    double perUnit = 0, ofZero = 0;
};

Scale ScaleOf(const DicomDataSet& channel, const NamedLead& lead) {
    const auto sensitivity = channel.Decimal(kSensitivity);
    const auto& units = channel.Items(kSensitivityUnits);
    if (!sensitivity || units.empty()) {
        Refuse(NameOf(lead) + " does not say what voltage a unit is");
    }
    const std::string unit = units.front().Text(kCodeValue);
    const auto microvolts = MicrovoltsOfUnit(unit);
    if (!microvolts) {
        Refuse(NameOf(lead) + " is in " + Quoted(unit) + ", which is no voltage");
    }
    const double correction = channel.Decimal(kCorrectionFactor).value_or(1);
    const Scale scale{*sensitivity * correction * *microvolts,
                      channel.Decimal(kBaseline).value_or(0) * *microvolts};
    constexpr double kLargest = 1e6;  // a volt
    if (scale.perUnit == 0 || std::fabs(scale.perUnit) > kLargest || std::fabs(scale.ofZero) > kLargest) {
        Refuse("the sensitivity or baseline of " + NameOf(lead) + " is out of range");
    }
    return scale;
}

void CheckSkew(const DicomDataSet& channel, const NamedLead& lead, double sampleRate) {
    const double samples =
        channel.Decimal(kSampleSkew).value_or(channel.Decimal(kTimeSkew).value_or(0) * sampleRate);
    if (std::fabs(samples) >= 0.5) {
        Refuse(NameOf(lead) + " was not sampled at the same time as the others");
    }
}

SampleLayout LayoutOf(const DicomDataSet& group) {
    SampleLayout layout;
    layout.channels = group.Number(kChannelCount).value_or(0);
    layout.count = group.Number(kSampleCount).value_or(0);
    const std::string kind = group.Text(kSampleInterpretation);
    constexpr std::string_view kKinds[] = {"SB", "UB", "SS", "US", "SL", "UL"};
    if (std::find(std::begin(kKinds), std::end(kKinds), kind) == std::end(kKinds)) {
        Refuse("its samples are of the kind " + Quoted(kind) + ", which is not read");
    }
    layout.isSigned = kind[0] == 'S';
    layout.bytes = kind[1] == 'B' ? 1 : kind[1] == 'S' ? 2 : 4;
    const std::size_t bits =
        group.Number(kBitsAllocated).value_or(static_cast<std::uint32_t>(layout.bytes * 8));
    if (bits != layout.bytes * 8) {
        Refuse("its samples are said to be of the kind " + kind + " and of " + std::to_string(bits) +
               " bits");
    }
    if (layout.channels == 0 || layout.count == 0 || layout.count > kMostSamples) {
        Refuse("a waveform says " + std::to_string(layout.channels) + " channels of " +
               std::to_string(layout.count) + " samples");
    }
    return layout;
}

std::int64_t SampleAt(std::span<const std::uint8_t> data, std::size_t at, const SampleLayout& layout) {
    std::uint32_t value = 0;
    for (std::size_t i = layout.bytes; i > 0; --i) {
        value = value << 8 | data[at * layout.bytes + i - 1];
    }
    const std::uint32_t sign = 1u << (layout.bytes * 8 - 1);
    return layout.isSigned ? std::int64_t{value ^ sign} - sign : std::int64_t{value};
}

Samples SamplesOf(std::span<const std::uint8_t> data, std::size_t channel, const SampleLayout& layout) {
    Samples samples;
    samples.reserve(layout.count);
    for (std::size_t i = 0; i < layout.count; ++i) {
        samples.push_back(SampleAt(data, i * layout.channels + channel, layout));
    }
    return samples;
}

// The value that stands for no sample, where it lies far outside the voltages of the channel: writers state
// 0 as well, and then a sample of 0 V is still a sample.
std::optional<std::int64_t> PaddingOf(const DicomDataSet& group, const SampleLayout& layout,
                                      const Samples& samples) {
    const auto bytes = group.Bytes(kPadding);
    if (bytes.size() < layout.bytes) {
        return std::nullopt;
    }
    const std::int64_t padding = SampleAt(bytes, 0, layout);
    std::int64_t least = std::numeric_limits<std::int64_t>::max(),
                 most = std::numeric_limits<std::int64_t>::min();
    for (const std::int64_t sample : samples) {
        if (sample != padding) {
            least = std::min(least, sample);
            most = std::max(most, sample);
        }
    }
    if (least > most) {
        return padding == 0 ? std::nullopt : std::optional(padding);
    }
    const std::int64_t margin = std::max((most - least) / 10, (std::int64_t{1} << layout.bytes * 8) / 16);
    return padding < least - margin || padding > most + margin ? std::optional(padding) : std::nullopt;
}

Channel MakeChannel(const NamedLead& lead, const Scale& scale, const Samples& samples,
                    std::optional<std::int64_t> padding) {
    Channel channel{lead, std::fabs(scale.perUnit), {}, {}};
    channel.microvolts.reserve(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        channel.microvolts.push_back(
            static_cast<float>(static_cast<double>(samples[i]) * scale.perUnit + scale.ofZero));
        if (padding == samples[i]) {
            AppendToGaps(channel.gaps, i);
        }
    }
    return channel;
}

SignalKind KindOf(const DicomDataSet& group, double seconds) {
    constexpr double kLongestBeat = 2;
    const std::string label = Lower(group.Text(kGroupLabel));
    for (const std::string_view word : {"median", "average", "representative", "beat"}) {
        if (label.find(word) != std::string::npos) {
            return SignalKind::kRepresentativeBeat;
        }
    }
    if (group.Text(kOriginality) != "DERIVED") {
        return SignalKind::kRecorded;
    }
    return seconds <= kLongestBeat ? SignalKind::kRepresentativeBeat : SignalKind::kDerived;
}

SignalGroup ReadGroup(const DicomDataSet& item) {
    const auto& channels = item.Items(kChannelDefinition);
    std::vector<std::optional<NamedLead>> leads;
    std::transform(channels.begin(), channels.end(), std::back_inserter(leads), LeadOfChannel);
    SignalGroup group;
    if (std::none_of(leads.begin(), leads.end(), [](const auto& lead) { return lead.has_value(); })) {
        return group;  // of a pressure, say
    }
    const SampleLayout layout = LayoutOf(item);
    if (channels.size() != layout.channels) {
        Refuse("a waveform of " + std::to_string(layout.channels) + " channels defines " +
               std::to_string(channels.size()));
    }
    const auto data = item.Bytes(kWaveformData);
    if (data.size() / layout.bytes / layout.channels < layout.count) {
        Refuse("a waveform holds " + std::to_string(data.size() / layout.bytes / layout.channels) +
               " of the " + std::to_string(layout.count) + " samples of each channel");
    }
    group.sampleRate = item.Decimal(kSamplingFrequency).value_or(0);
    if (group.sampleRate <= 0) {
        Refuse("a waveform does not say its sampling frequency");
    }
    group.startMs = item.Decimal(kTimeOffset).value_or(0);
    group.kind = KindOf(item, static_cast<double>(layout.count) / group.sampleRate);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (leads[i]) {
            CheckSkew(channels[i], *leads[i], group.sampleRate);
            const Samples samples = SamplesOf(data, i, layout);
            group.channels.push_back(MakeChannel(*leads[i], ScaleOf(channels[i], *leads[i]), samples,
                                                 PaddingOf(item, layout, samples)));
        }
    }
    return group;
}

}  // namespace

std::vector<SignalGroup> ReadDicomWaveforms(const DicomDataSet& object) {
    std::vector<SignalGroup> groups;
    for (const DicomDataSet& item : object.Items(kWaveformSequence)) {
        SignalGroup group = ReadGroup(item);
        if (!group.channels.empty()) {
            groups.push_back(std::move(group));
        }
    }
    return groups;
}

Filters ReadDicomFilters(const DicomDataSet& group) {
    Filters filters;
    const auto& channels = group.Items(kChannelDefinition);
    const auto limit = [&](DicomTag tag) {
        const std::string value = channels.front().Text(tag);
        std::string_view text = value;
        return TakeNumber<double>(text).value_or(0);
    };
    if (!channels.empty()) {
        filters.TakeLimits(limit(kLowFrequency), limit(kHighFrequency), limit(kNotchFrequency));
    }
    return filters;
}

}  // namespace kx::recording
