// The names of the twelve standard leads, by their codes.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx {

inline constexpr const char* kLeadNames[KX_STANDARD_LEADS] = {"I",  "II", "III", "aVR", "aVL", "aVF",
                                                              "V1", "V2", "V3",  "V4",  "V5",  "V6"};

// "I" to "V6" for the lead codes 0 to 11, else "?".
constexpr const char* StandardLeadName(std::uint32_t leadCode) {
    return leadCode < KX_STANDARD_LEADS ? kLeadNames[leadCode] : "?";
}

}  // namespace kx
