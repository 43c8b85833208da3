// The suite's common log.
#pragma once

#include <cstddef>

namespace kx::sys {

// Appends a line and CR LF to the log beside this module. Several programs may write it at the same time.
// False when it cannot be written.
bool AppendToLog(const char* line, std::size_t length);

}  // namespace kx::sys
