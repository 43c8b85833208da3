// The signals of an SCP-ECG file: sections 2 to 6 (EN 1064, 5.5 to 5.9).
#pragma once

#include <string>
#include <vector>

#include "host/recording/scp/scp_file.h"
#include "host/recording/signal_groups.h"

namespace kx::recording {

// The rhythm of section 6 as one group for each span of samples, and the reference beat of section 5 as
// another. The rhythm is decoded from Huffman codes and differences; samples that were left out between the
// protected areas (bimodal compression) are put in by straight lines, which a remark says; where section 3
// says so, the reference beat is added again at the places of section 4. Throws ReadFailure when a section
// that is needed is missing, cut or contradictory.
std::vector<SignalGroup> ReadScpSignals(const ScpFile& file, std::vector<std::string>& remarks);

}  // namespace kx::recording
