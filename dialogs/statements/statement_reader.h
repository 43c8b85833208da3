// Reads a statement file into a library.
#pragma once

#include "dialogs/statements/statement_library.h"
#include "lib/html_document.h"

namespace kx {

// A statement file is a small subset of HTML: behind <BODY> (or <body>) each <H1>...</H1> is the title of a
// section, and each <P>...</P> up to the next <H1> is a statement of it, text^code. What stands before the
// first "^" is the text, what follows up to a further "^" the code; bytes are taken as they are.
//
// An element without content is a hidden title or statement and takes its place in the order, as one that
// reads "X" does. What is never closed ends the reading of its kind: a title the file, a statement its
// section. Of titles and statements only the first 511 bytes are looked at. Sections behind the 48th and
// statements behind the 64th of a section are ignored.
class StatementReader final : public HtmlDocument {
  public:
    // log may be null and must outlive the reader.
    explicit StatementReader(Reporter* log) : HtmlDocument(log) {}

    // Reports a file that cannot be read as the interpretation's own ("no read").
    bool Load(ByteSource& file) override;
    // Replaces what the library holds by the file's content. False, with that report and an empty library,
    // when the file cannot be read. The file need not outlive the call.
    bool Read(ByteSource& file, StatementLibrary& library);
};

}  // namespace kx
