// The page that "Stampa" prints: one lead of the median beat with its measurements.
#pragma once

#include <memory>

#include "host/printing/page_image.h"
#include "host/printing/print_page_content.h"

namespace kxhost {

// Draws the page for the printable area of the paper, at kPrintDpi. Throws std::runtime_error when memory is
// short.
//
// The millimetre paper has a dot at every millimetre and a line at every five: the A4 page of the built-in
// recording's V5 then takes 29 % of its 936,736 bytes after PackBits, with lines at every millimetre 39 %,
// and in black and white the trace stands out from dots alone.
std::unique_ptr<PageImage> DrawPage(const PrintedPage& page, Paper paper);

}  // namespace kxhost
