// Reading of HL7 annotated ECGs (aECG, HL7 v3 PORT_MT020001).
#pragma once

#include <cstdint>
#include <span>

#include "host/recording/recording.h"

namespace kx::recording {

// The recording that an XML document holds, without its name: of the rhythm series the one that TakeSignals
// chooses, else a representative beat; leads in any order; patient, device, time, filters and interpretation
// statements as far as they are there. Elements are known by their local names, whatever prefix stands before
// them. Throws ReadFailure when the document is not well-formed, is no annotated ECG, or a series is
// contradictory.
Recording ReadAecg(std::span<const std::uint8_t> bytes);

}  // namespace kx::recording
