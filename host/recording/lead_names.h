// Which of the twelve leads a source means.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kx::recording {

struct NamedLead {
    std::size_t lead = 0;   // 0 to 11
    bool inverted = false;  // -aVR: the samples have the other sign

    bool operator==(const NamedLead&) const = default;
};

// A lead's name in any letter case, alone ("aVR", "DII", "C1", "-aVR"), with a word before it ("Lead V1",
// "ECG II") or a note in brackets behind, or as a symbol of ISO/IEEE 11073 ("MDC_ECG_LEAD_V1",
// "MDC_ECG_ELEC_POTL_AVR"). Nothing for any other signal.
std::optional<NamedLead> LeadOfName(std::string_view name);

// The numbers that SCP-ECG (EN 1064, lead identification) and part 2 of ISO/IEEE 11073-10101 share: 1 I, 2
// II, 3 to 8 V1 to V6, 61 to 64 III, aVR, aVL and aVF, 65 -aVR. Nothing for any other signal.
std::optional<NamedLead> LeadOfNumber(unsigned number);

}  // namespace kx::recording
