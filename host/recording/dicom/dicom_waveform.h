// The signals of a DICOM waveform object (PS3.3, C.10.9).
#pragma once

#include <vector>

#include "host/recording/dicom/data_set.h"
#include "host/recording/signal_groups.h"

namespace kx::recording {

// Each multiplex group that holds one of the twelve leads. A voltage is (sample x sensitivity x correction
// factor + baseline) in the channel's unit. Samples of 8, 16 or 32 bits, signed or not. Throws ReadFailure
// when a channel says no sensitivity or unit, the samples are of another kind or fewer than stated, or a
// channel is late by half a sample or more.
std::vector<SignalGroup> ReadDicomWaveforms(const DicomDataSet& object);

// What filters the channels of a group have passed, by the first channel.
Filters ReadDicomFilters(const DicomDataSet& group);

}  // namespace kx::recording
