// Compression of raster rows: TIFF PackBits, which PCL knows as compression method 2 (TIFF Revision 6.0,
// section 9, Adobe 1992; PCL 5 Printer Language Technical Reference Manual, chapter 15, Hewlett-Packard
// 1992).
#pragma once

#include <cstddef>
#include <cstdint>

namespace kx {

// The most bytes that a row of rowBytes bytes can become.
constexpr std::size_t PackBitsWorstCase(std::size_t rowBytes) {
    return rowBytes + rowBytes / 128 + 1;
}

// Compresses one row of rowBytes bytes into `packed`, which has room for PackBitsWorstCase(rowBytes) bytes
// and does not overlap the row. Returns how many bytes were written.
//
// Packets are a header byte and data: 0 to 127 is followed by one literal byte more than it says, -1 to -127
// by one byte that stands for as many copies and one more. A literal packet is left for a run of three. Zeros
// that stand in the last packet at the row's end are dropped, since a printer fills the rest of a row with
// them: a row of zeros alone gives 0 bytes, and decoding gives the row back once it is filled up with zeros.
std::size_t PackBitsEncode(const std::uint8_t* row, std::size_t rowBytes, std::uint8_t* packed);

}  // namespace kx
