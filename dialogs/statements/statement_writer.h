// Writes a library as a statement file.
#pragma once

#include "dialogs/statements/statement_library.h"
#include "lib/byte_stream.h"

namespace kx {

// Writes what is not hidden, in its order, to a file that is open and empty. What StatementReader reads from
// it is the library without its hidden titles and statements, as long as no text holds a "^" or a tag of the
// format. A section whose title is hidden is left out with its statements.
void WriteStatements(const StatementLibrary& library, ByteSink& file);

}  // namespace kx
