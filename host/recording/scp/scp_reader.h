// Reading of SCP-ECG files (EN 1064, ISO 11073-91064).
#pragma once

#include <cstdint>
#include <span>

#include "host/recording/recording.h"
#include "host/recording/scp/scp_file.h"

namespace kx::recording {

// The recording that the bytes of a file hold, without its name: the sections in any order; the rhythm
// (section 6) with or without Huffman coding, differences, a subtracted reference beat and bimodal
// compression; the reference beat (section 5) where there is no rhythm. Patient, device, filters and time by
// section 1, statements by section 8, as far as they are there. Throws ReadFailure when the bytes are
// damaged, cut or contradictory.
Recording ReadScp(std::span<const std::uint8_t> bytes);

}  // namespace kx::recording
