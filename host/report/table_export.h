// The table of the wave amplitudes as files for other programs.
#pragma once

#include <optional>
#include <string_view>

#include "lib/byte_stream.h"
#include "lib/locale_formats.h"

namespace kx {
struct TestRecord;
}

namespace kxhost {

enum class TableFormat { kCsv, kHtml };

// By the extension of a file's name, in either case; none for any other.
std::optional<TableFormat> TableFormatOf(std::string_view file);

// Writes the table of the test's first episode, which must be there, in place of what the sink held: the
// titles, then a row per standard lead. False when the sink cannot be begun.
//
// CSV: cells separated by semicolons, which is what a spreadsheet in Italian expects, whose comma is the
// decimal one; whole numbers, so that no other program mistakes one; lines ended by CR LF. Without a byte
// order mark: every cell is ASCII, and the mark would stand in the first title wherever it is not known.
//
// HTML: the document of lib/html_document.h, titled by the patient's id, the time of the recording and the
// patient's name, as far as they fit.
bool WriteTable(const kx::TestRecord& test, TableFormat format, const kx::LocaleFormats& locale,
                kx::ByteSink& file);

}  // namespace kxhost
