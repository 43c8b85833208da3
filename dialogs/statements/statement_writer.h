// Writes a library as a statement file.
#pragma once

#include <string_view>

#include "dialogs/statements/statement_library.h"
#include "lib/byte_stream.h"

namespace kx {

// Writes what is not hidden, in its order, to a file that is open and empty. What StatementReader reads from
// it is the library without its hidden titles and statements, as long as no text holds a mark of the format
// (see FormatMark). A section whose title is hidden is left out with its statements.
void WriteStatements(const StatementLibrary& library, ByteSink& file);

enum class StatementPart { kTitle, kText, kCode };

// The first part of a text that would be read as something else than text once it is written: the "^" between
// a statement and its code, or a tag. Empty: the text is read back as it is.
std::string_view FormatMark(std::string_view text, StatementPart part);

}  // namespace kx
