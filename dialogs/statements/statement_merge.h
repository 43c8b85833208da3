// What two users have made of the same statement file, put together.
#pragma once

#include "dialogs/statements/statement_library.h"

namespace kx {

// Does to `theirs` what made `mine` of `base`. Sections are told apart by their titles and entries by what
// they hold, not by their places, which shift when something above them is hidden. Nothing that either has
// written is lost: what both have changed stands there twice, and what one has changed the other does not
// hide. False: there is no place for all of it; `theirs` is then of no use.
bool MergeStatements(const StatementLibrary& base, const StatementLibrary& mine, StatementLibrary& theirs);

}  // namespace kx
