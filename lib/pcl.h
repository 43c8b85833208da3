// The PCL 5 commands of a raster page, written to whatever takes bytes: a printer or a file.
// Source: PCL 5 Printer Language Technical Reference Manual, Hewlett-Packard 1992, chapters 4, 5 and 15.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "lib/byte_stream.h"

namespace kx {

// Where a printer's printable area begins on the paper, dots at 300 per inch.
inline constexpr std::int32_t kPrintableLeft = 75;
inline constexpr std::int32_t kPrintableTop = 150;

// Makes a row of a screen's monochrome bitmap, where a clear bit is black, one of a printer's, where a set
// bit is. Bits behind the row's `width` pixels, which fit into its rowBytes bytes, belong to none of them and
// become white.
void InvertClearBits(std::uint8_t* row, std::int32_t width, std::size_t rowBytes);

// Writes one page after another to a sink, which outlives it. Every operation tells whether all of its bytes
// were taken; after a failure the stream is what the sink made of it.
//
// Positions are dots at the resolution of the raster, from the corner of the paper; the printer counts from
// the corner of its printable area, which lies originX, originY dots inside.
class PclPage {
  public:
    PclPage(ByteSink& sink, std::int32_t originX, std::int32_t originY)
        : sink_(sink), originX_(originX), originY_(originY) {}

    // Each of these ends with a zero byte, which a printer ignores.
    bool Reset();
    bool FormFeed();
    bool Portrait();
    bool Landscape();
    bool EndRaster();

    // Puts the cursor at x, y and starts a raster of dpi dots per inch that follows the physical page and
    // whose rows are compressed as PackBits.
    bool BeginRaster(std::int32_t x, std::int32_t y, std::int32_t dpi);
    // One row of rowBytes bytes, the most significant bit leftmost, a set bit black. A row without a set bit
    // advances the raster by one blank row. False as well when there is no memory for the compressed row.
    bool RasterRow(const std::uint8_t* row, std::size_t rowBytes);
    // The rows of a monochrome bitmap, from the top down and rowBytes bytes each, of which a clear bit prints
    // black; see InvertClearBits, which changes them in place.
    bool RasterOfClearBits(std::uint8_t* bits, std::int32_t width, std::int32_t rows, std::size_t rowBytes);

  private:
    ByteSink& sink_;
    std::int32_t originX_;
    std::int32_t originY_;
    std::unique_ptr<std::uint8_t[]> packed_;  // of the longest row so far
    std::size_t packedSize_ = 0;
};

}  // namespace kx
