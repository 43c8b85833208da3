#include "host/recording/lead_names.h"

#include <string>

#include "host/recording/recording.h"
#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

// Letters and digits before a bracket, in lower case.
std::string Bare(std::string_view name) {
    std::string bare;
    for (const char c : Lower(name.substr(0, name.find_first_of("([")))) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            bare += c;
        }
    }
    return bare;
}

bool TakeWord(std::string& text, std::string_view word) {
    if (text.size() <= word.size() || !text.starts_with(word)) {
        return false;
    }
    text.erase(0, word.size());
    return true;
}

struct Alias {
    std::string_view name;
    std::size_t lead;
};

// Other names than kLeadNames: the limb leads of Latin countries, the chest electrodes of IEC 60601-2-25.
constexpr Alias kAliases[] = {{"di", 0}, {"dii", 1}, {"diii", 2}, {"d1", 0}, {"d2", 1},  {"d3", 2},
                              {"c1", 6}, {"c2", 7},  {"c3", 8},   {"c4", 9}, {"c5", 10}, {"c6", 11}};

std::optional<std::size_t> LeadOfBareName(std::string_view bare) {
    for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
        if (bare == Lower(kLeadNames[lead])) {
            return lead;
        }
    }
    for (const Alias& alias : kAliases) {
        if (bare == alias.name) {
            return alias.lead;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<NamedLead> LeadOfName(std::string_view name) {
    name = Trim(name);
    bool inverted = !name.empty() && name.front() == '-';
    std::string bare = Bare(name);
    for (const std::string_view word : {"mdc", "ecg", "elec", "potl", "lead"}) {
        TakeWord(bare, word);
    }
    if (bare == "avrneg") {
        inverted = true;
        bare = "avr";
    }
    const auto lead = LeadOfBareName(bare);
    if (!lead || (inverted && *lead != kLeadAVR)) {
        return std::nullopt;
    }
    return NamedLead{*lead, inverted};
}

std::optional<NamedLead> LeadOfNumber(unsigned number) {
    constexpr unsigned kFirstChest = 3, kLastChest = 8, kThird = 61, kAvf = 64, kMinusAvr = 65;
    if (number == 1 || number == 2) {
        return NamedLead{number - 1};
    }
    if (number >= kFirstChest && number <= kLastChest) {
        return NamedLead{kLeadV1 + number - kFirstChest};
    }
    if (number >= kThird && number <= kAvf) {
        return NamedLead{kLeadIII + number - kThird};
    }
    if (number == kMinusAvr) {
        return NamedLead{kLeadAVR, true};
    }
    return std::nullopt;
}

}  // namespace kx::recording
