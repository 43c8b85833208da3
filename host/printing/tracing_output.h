// Where the page of the whole tracing goes: into a file, through a printer's driver, or past it as PCL 5.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host/file_formats.h"
#include "host/printing/page_image.h"
#include "host/printing/tracing_page.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {

// The page of a test from that time of its recording on; the test outlives it. Throws std::runtime_error for
// a test without a recording.
TracingPage DescribeTracing(const kx::TestRecord& test, double startMs = 0);

// One bit a dot at kPrintDpi, turned upright, for the printable area of A4: what PrintPage and SavePage take.
std::unique_ptr<PageImage> DrawTracingUpright(const TracingPage& page);

// A .pdf, or a .png of 300 dots an inch, of the size of the sheet; kPcl as SavePage writes it. The file is
// replaced as a whole; false, and it is as it was, when it could not be written.
bool SaveTracing(const TracingPage& page, PageFormat format, const std::filesystem::path& file,
                 const std::wstring& title);

// Through the printer's driver, A4 across, as a document of its own. False when the printer or its driver
// refuses; `reason` is then the system's.
bool PrintTracing(const TracingPage& page, const std::wstring& printer, const std::wstring& document,
                  std::wstring& reason);

}  // namespace kxhost
