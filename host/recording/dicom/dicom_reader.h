// Reading of DICOM waveform objects: 12-lead, general and ambulatory ECG.
#pragma once

#include <cstdint>
#include <span>

#include "host/recording/dicom/data_set.h"
#include "host/recording/recording.h"

namespace kx::recording {

// The recording that the bytes of a file hold, without its name; patient, device, time, filters and the texts
// of the annotations as far as they are there. Throws ReadFailure when the file is no waveform, cut or
// contradictory.
Recording ReadDicom(std::span<const std::uint8_t> bytes);

}  // namespace kx::recording
