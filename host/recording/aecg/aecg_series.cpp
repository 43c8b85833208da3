#include "host/recording/aecg/aecg_series.h"

#include <cmath>
#include <optional>

#include "host/recording/aecg/xml_access.h"
#include "host/recording/calendar_text.h"
#include "host/recording/read_failure.h"
#include "host/recording/text_scanner.h"
#include "host/recording/voltage_units.h"

namespace kx::recording {

namespace {

struct Quantity {
    double value = 0;
    std::string_view unit;
};

Quantity QuantityOf(const pugi::xml_node& node, const std::string& what) {
    const std::string_view text = Trim(Attribute(node, "value"));
    const auto value = WholeNumber<double>(text);
    if (!value || !(std::fabs(*value) < 1e12)) {
        Refuse(what + " is " + Quoted(text) + ", which is no number");
    }
    return {*value, Trim(Attribute(node, "unit"))};
}

double Seconds(const Quantity& time, const std::string& what) {
    struct Row {
        std::string_view unit;
        double seconds;
    };
    constexpr Row kRows[] = {{"s", 1}, {"ms", 1e-3}, {"us", 1e-6}};
    for (const Row& row : kRows) {
        if (time.unit == row.unit) {
            return time.value * row.seconds;
        }
    }
    Refuse(what + " is in " + Quoted(time.unit) + ", which is no time that is read");
}

double Microvolts(const pugi::xml_node& node, const std::string& what) {
    const Quantity voltage = QuantityOf(node, what);
    const auto unit = MicrovoltsOfUnit(voltage.unit);
    if (!unit) {
        Refuse(what + " is in " + Quoted(voltage.unit) + ", which is no voltage");
    }
    return voltage.value * *unit;
}

// A time every `increment` from `head` on; both may be absolute or relative.
void TakeTimes(const pugi::xml_node& value, SignalGroup& group) {
    const double interval =
        Seconds(QuantityOf(Child(value, "increment"), "a sampling interval"), "a sampling interval");
    if (!(interval > 0)) {
        Refuse("a sampling interval is not above zero");
    }
    // Intervals are written rounded: a rate is whole to the last digit that they can tell.
    const double rate = 1 / interval;
    group.sampleRate = std::fabs(rate - std::round(rate)) < 1e-6 * rate ? std::round(rate) : rate;
    const pugi::xml_node head = Child(value, "head");
    const std::string_view start = Attribute(head, "value");
    if (TakeDateTime(start, group.startTime)) {
        group.startMs = MillisecondsOfDay(start);
    } else if (!Attribute(head, "unit").empty()) {
        group.startMs = Seconds(QuantityOf(head, "a start"), "a start") * 1000;
    }
}

std::vector<float> Digits(const std::string& text, double origin, double scale, const std::string& lead) {
    constexpr std::string_view kSpace = " \t\r\n";
    std::vector<float> samples;
    std::string_view rest = text;
    while (true) {
        rest.remove_prefix(std::min(rest.find_first_not_of(kSpace), rest.size()));
        if (rest.empty()) {
            return samples;
        }
        const std::string_view digit = rest.substr(0, rest.find_first_of(kSpace));
        const auto value = WholeNumber<double>(digit);
        if (!value || !(std::fabs(*value) < 1e9)) {
            Refuse("sample " + std::to_string(samples.size() + 1) + " of " + lead + " is " + Quoted(digit) +
                   ", which is no number");
        }
        if (samples.size() == kMostSamples) {
            Refuse(lead + " is longer than " + std::to_string(kMostSamples) + " samples");
        }
        samples.push_back(static_cast<float>(origin + *value * scale));
        rest.remove_prefix(digit.size());
    }
}

Channel ReadChannel(const NamedLead& lead, const pugi::xml_node& value) {
    const std::string name = std::string("lead ") + kLeadNames[lead.lead];
    const pugi::xml_node digits = Child(value, "digits"), scale = Child(value, "scale"),
                         origin = Child(value, "origin");
    if (!digits || !scale) {
        Refuse(name + " has no digits with a scale");
    }
    Channel channel{lead, Microvolts(scale, "the scale of " + name), {}, {}};
    const double zero = origin ? Microvolts(origin, "the origin of " + name) : 0;
    if (channel.resolutionUv == 0) {
        Refuse("the scale of " + name + " is zero");
    }
    channel.microvolts = Digits(TextOf(digits), zero, channel.resolutionUv, name);
    channel.resolutionUv = std::fabs(channel.resolutionUv);
    return channel;
}

SignalKind KindOf(const pugi::xml_node& series) {
    const std::string code = Lower(Attribute(Child(series, "code"), "code"));
    return code.find("beat") != std::string::npos ? SignalKind::kRepresentativeBeat
           : IsNamed(series, "derivedSeries")     ? SignalKind::kDerived
                                                  : SignalKind::kRecorded;
}

// By the standard's symbol, "MDC_ECG_LEAD_V1", or a maker's own of the same ending.
std::optional<NamedLead> LeadOfSymbol(std::string_view code) {
    constexpr std::string_view kWord = "_LEAD_";
    const std::size_t word = code.rfind(kWord);
    return LeadOfName(word == std::string_view::npos ? code : code.substr(word + kWord.size()));
}

std::optional<SignalGroup> ReadSet(const pugi::xml_node& set, SignalKind kind) {
    SignalGroup group;
    group.kind = kind;
    for (const pugi::xml_node& component : set) {
        const pugi::xml_node sequence = Child(component, "sequence");
        const std::string_view code = Attribute(Child(sequence, "code"), "code");
        const pugi::xml_node value = Child(sequence, "value");
        if (code == "TIME_ABSOLUTE" || code == "TIME_RELATIVE") {
            TakeTimes(value, group);
        } else if (const auto lead = LeadOfSymbol(code)) {
            group.channels.push_back(ReadChannel(*lead, value));
        }
    }
    if (group.channels.empty()) {
        return std::nullopt;
    }
    if (group.sampleRate == 0) {
        Refuse("a set of sequences does not say its sampling interval");
    }
    return group;
}

// The value of the control variable with the code below the node.
pugi::xml_node ControlValue(const pugi::xml_node& node, std::string_view code) {
    const pugi::xml_node variable = node.find_node([code](const pugi::xml_node& other) {
        return IsNamed(other, "controlVariable") && Attribute(Child(other, "code"), "code") == code;
    });
    return Child(variable, "value");
}

// 0 when there is none.
double ControlNumber(const pugi::xml_node& node, std::string_view code) {
    std::string_view text = Attribute(ControlValue(node, code), "value");
    return TakeNumber<double>(text).value_or(0);
}

}  // namespace

std::vector<SignalGroup> ReadAecgSeries(const pugi::xml_node& series) {
    std::vector<SignalGroup> groups;
    for (const pugi::xml_node& part : series) {
        if (IsNamed(part, "component")) {
            if (auto group = ReadSet(Child(part, "sequenceSet"), KindOf(series))) {
                groups.push_back(std::move(*group));
            }
        } else if (IsNamed(part, "derivation")) {
            for (SignalGroup& group : ReadAecgSeries(Child(part, "derivedSeries"))) {
                groups.push_back(std::move(group));
            }
        }
    }
    return groups;
}

Filters ReadAecgFilters(const pugi::xml_node& series) {
    Filters filters;
    for (const pugi::xml_node& part : series) {
        const pugi::xml_node variable = Child(part, "controlVariable");
        const std::string_view code = Attribute(Child(variable, "code"), "code");
        const double cutoff = ControlNumber(variable, "MDC_ECG_CTL_VBL_ATTR_FILTER_CUTOFF_FREQ");
        const std::string text =
            Lower(TextOf(ControlValue(variable, "MDC_ECG_CTL_VBL_ATTR_FILTER_DESCRIPTION")));
        if (code == "MDC_ECG_CTL_VBL_ATTR_FILTER_HIGH_PASS") {
            filters.TakeLimits(cutoff, 0, 0);
            filters.baseline = filters.baseline || text.find("baseline") != std::string::npos;
        } else if (code == "MDC_ECG_CTL_VBL_ATTR_FILTER_LOW_PASS") {
            filters.TakeLimits(0, cutoff, 0);
            filters.artifact = filters.artifact || text.find("muscle") != std::string::npos;
        } else if (code == "MDC_ECG_CTL_VBL_ATTR_FILTER_NOTCH") {
            filters.TakeLimits(0, 0, ControlNumber(variable, "MDC_ECG_CTL_VBL_ATTR_FILTER_NOTCH_FREQ"));
        }
    }
    return filters;
}

}  // namespace kx::recording
