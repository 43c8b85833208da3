// Patient, device and time of an SCP-ECG file: section 1 (EN 1064, 5.4).
#pragma once

#include <cstdint>
#include <span>

#include "host/recording/recording.h"

namespace kx::recording {

// Takes patient, device, filters and acquisition time from the section's tags, in any order. A tag that is
// absent, empty or of an absurd value leaves its field as it was. Throws ReadFailure when a tag is longer
// than the section.
void ReadScpHeader(std::span<const std::uint8_t> section, Recording& recording);

}  // namespace kx::recording
