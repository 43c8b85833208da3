// The format of BMP files, as far as the library reads and writes it: uncompressed, 1 or 24 bits per pixel.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kx {

enum class BmpFault : std::uint8_t {
    kNone,
    kTooShort,       // no room for the headers and the first colour
    kNotBmp,         // another signature
    kPixelsMissing,  // the file ends before its pixels do
    kCompressed,
    kWidthNotInBytes,  // a monochrome row does not fill whole bytes
    kInvalid,          // sizes that contradict each other
    kUnsupportedDepth,
};

// The picture in a BMP file; its pixels are a part of the file's bytes.
struct BmpPicture {
    std::int32_t width = 0;   // 1 or more
    std::int32_t height = 0;  // 1 or more; of 24 bits per pixel also below 0: rows from the top down
    std::uint16_t bitsPerPixel = 0;
    std::uint32_t imageSize = 0;  // as the file says it, which may be 0 at 24 bits per pixel
    // Rows padded to 32 bits, from the bottom up unless height says otherwise; every row is there.
    std::span<const std::byte> pixels;
};

// Reads the headers of a whole file. Safe for any bytes; picture is valid only with kNone.
BmpFault ParseBmp(std::span<const std::byte> file, BmpPicture& picture);

// The rows of a monochrome picture from the top down, each padded to 16 bits, as the system makes a bitmap of
// them.
std::vector<std::byte> MonochromeRows(const BmpPicture& picture);

// The bytes of a row, padded to 32 bits.
constexpr std::int64_t BmpRowSize(std::int64_t width, std::int64_t bitsPerPixel) {
    return (bitsPerPixel * width + 31) / 32 * 4;
}

// File header, info header and a colour table of black and white.
inline constexpr std::size_t kBmpHeadSize = 14 + 40 + 2 * 4;
using BmpHead = std::array<std::byte, kBmpHeadSize>;

// Writes the head of a bottom-up file with `height` rows of rowSize bytes.
inline constexpr std::uint32_t kDotsPerMetre72Dpi = 2834;
void MakeBmpHead(std::int32_t width, std::int32_t height, std::uint16_t bitsPerPixel, std::uint32_t rowSize,
                 BmpHead& head, std::uint32_t dotsPerMetre = kDotsPerMetre72Dpi);

}  // namespace kx
