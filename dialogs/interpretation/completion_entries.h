// Where the typing completion takes what it can complete.
#pragma once

#include <windows.h>

#include <cstdint>

#include "dialogs/statements/statement_matcher.h"
#include "lib/reporter.h"

namespace kx {

// Add the statements of a test type's file, which stands beside the module, or the names of the suite's
// physicians. What cannot be read, or is too much, is reported to log as "interp" and left out.
void AddStatementEntries(HMODULE module, std::uint32_t testType, StatementMatcher& matcher, Reporter& log);
void AddPhysicianEntries(StatementMatcher& matcher, Reporter& log);

}  // namespace kx
