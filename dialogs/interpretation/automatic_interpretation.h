// What the suite's modules say about a test by themselves.
#pragma once

#include <string>

#include "lib/dbclient/test_record.h"
#include "lib/windows/dialog.h"

namespace kx {

// The text, Windows-1252: for a resting test what the interpretation engine makes of the measurements of its
// first median beat, which also stays in the record; for a stress test what the report renderer makes of the
// script that stands beside the library. Empty for the other types, for a resting test whose host options
// (non-null) begin with the word kWithoutAutomatic, for what fails, which the pane reports, and when the
// called module has ended the pane. A module is bound for the one call.
std::string ProduceAutomaticInterpretation(const Dialog& pane, TestRecord& test, const void* hostOptions);

// First 32-bit word of the host's options.
inline constexpr std::uint32_t kWithoutAutomatic = 2;

}  // namespace kx
