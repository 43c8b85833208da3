#include "lib/bmp_format.h"

#include <algorithm>

namespace kx {

namespace {

// Offsets in a file: its header, then the info header.
constexpr std::size_t kSignatureAt = 0;
constexpr std::size_t kFileSizeAt = 2;
constexpr std::size_t kPixelOffsetAt = 10;
constexpr std::size_t kInfoSizeAt = 14;
constexpr std::size_t kWidthAt = 18;
constexpr std::size_t kHeightAt = 22;
constexpr std::size_t kPlanesAt = 26;
constexpr std::size_t kBitsPerPixelAt = 28;
constexpr std::size_t kCompressionAt = 30;
constexpr std::size_t kImageSizeAt = 34;
constexpr std::size_t kXPixelsPerMetreAt = 38;
constexpr std::size_t kYPixelsPerMetreAt = 42;
constexpr std::size_t kColoursUsedAt = 46;
constexpr std::size_t kColoursImportantAt = 50;
constexpr std::size_t kColourTableAt = 54;

constexpr std::size_t kShortestFile = 58;
constexpr std::uint16_t kSignature = 0x4D42;
constexpr std::uint32_t kInfoSize = 40;

std::uint32_t Read(std::span<const std::byte> bytes, std::size_t at, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::to_integer<std::uint32_t>(bytes[at + i]) << (8 * i);
    }
    return value;
}

std::uint16_t Read16(std::span<const std::byte> bytes, std::size_t at) {
    return static_cast<std::uint16_t>(Read(bytes, at, 2));
}
std::uint32_t Read32(std::span<const std::byte> bytes, std::size_t at) {
    return Read(bytes, at, 4);
}

void Write(BmpHead& head, std::size_t at, std::size_t size, std::uint32_t value) {
    for (std::size_t i = 0; i < size; ++i) {
        head[at + i] = static_cast<std::byte>(value >> (8 * i));
    }
}

BmpFault CheckSizes(std::span<const std::byte> file, std::uint32_t pixelOffset, BmpPicture& picture) {
    // A file with the shorter header of older systems has other fields where these are read.
    if (Read32(file, kInfoSizeAt) < kInfoSize || picture.width < 1 || picture.height == 0) {
        return BmpFault::kInvalid;
    }
    const bool monochrome = picture.bitsPerPixel == 1;
    if (monochrome && picture.height < 0) {
        return BmpFault::kInvalid;
    }
    const std::int64_t rowSize = BmpRowSize(picture.width, picture.bitsPerPixel);
    const std::int64_t rows = std::llabs(picture.height);
    const std::int64_t available =
        monochrome ? std::int64_t{picture.imageSize} : static_cast<std::int64_t>(file.size()) - pixelOffset;
    // Divided, because the product of the largest sizes does not fit 64 bits.
    if (rows > available / rowSize) {
        return BmpFault::kInvalid;
    }
    picture.pixels = file.subspan(pixelOffset, static_cast<std::size_t>(rowSize * rows));
    return BmpFault::kNone;
}

}  // namespace

BmpFault ParseBmp(std::span<const std::byte> file, BmpPicture& picture) {
    if (file.size() < kShortestFile) {
        return BmpFault::kTooShort;
    }
    if (Read16(file, kSignatureAt) != kSignature) {
        return BmpFault::kNotBmp;
    }
    picture.width = static_cast<std::int32_t>(Read32(file, kWidthAt));
    picture.height = static_cast<std::int32_t>(Read32(file, kHeightAt));
    picture.bitsPerPixel = Read16(file, kBitsPerPixelAt);
    picture.imageSize = Read32(file, kImageSizeAt);
    const std::uint32_t pixelOffset = Read32(file, kPixelOffsetAt);
    if (std::uint64_t{pixelOffset} + picture.imageSize > file.size()) {
        return BmpFault::kPixelsMissing;
    }
    if (Read32(file, kCompressionAt) != 0) {
        return BmpFault::kCompressed;
    }
    if (Read16(file, kPlanesAt) != 1 || (picture.bitsPerPixel != 1 && picture.bitsPerPixel != 24)) {
        return BmpFault::kUnsupportedDepth;
    }
    if (picture.bitsPerPixel == 1 && picture.width % 8 != 0) {
        return BmpFault::kWidthNotInBytes;
    }
    return CheckSizes(file, pixelOffset, picture);
}

std::vector<std::byte> MonochromeRows(const BmpPicture& picture) {
    const auto height = static_cast<std::size_t>(picture.height);
    const auto used = static_cast<std::size_t>(picture.width / 8);
    const auto sourceRow = static_cast<std::size_t>(BmpRowSize(picture.width, 1));
    // A row of width / 8 bytes, and one more where the system, which counts in words, would read it.
    const std::size_t row = used + used % 2;
    std::vector<std::byte> rows(row * height);
    for (std::size_t i = 0; i < height; ++i) {
        const auto source = picture.pixels.subspan((height - 1 - i) * sourceRow, used);
        std::copy(source.begin(), source.end(), rows.begin() + static_cast<std::ptrdiff_t>(i * row));
    }
    return rows;
}

void MakeBmpHead(std::int32_t width, std::int32_t height, std::uint16_t bitsPerPixel, std::uint32_t rowSize,
                 BmpHead& head, std::uint32_t dotsPerMetre) {
    const std::uint32_t imageSize = rowSize * static_cast<std::uint32_t>(height);
    constexpr auto kPixelOffset = static_cast<std::uint32_t>(kBmpHeadSize);
    head.fill(std::byte{0});
    Write(head, kSignatureAt, 2, kSignature);
    Write(head, kFileSizeAt, 4, kPixelOffset + imageSize);
    Write(head, kPixelOffsetAt, 4, kPixelOffset);
    Write(head, kInfoSizeAt, 4, kInfoSize);
    Write(head, kWidthAt, 4, static_cast<std::uint32_t>(width));
    Write(head, kHeightAt, 4, static_cast<std::uint32_t>(height));
    Write(head, kPlanesAt, 2, 1);
    Write(head, kBitsPerPixelAt, 2, bitsPerPixel);
    Write(head, kImageSizeAt, 4, imageSize);
    Write(head, kXPixelsPerMetreAt, 4, dotsPerMetre);
    Write(head, kYPixelsPerMetreAt, 4, dotsPerMetre);
    Write(head, kColoursUsedAt, 4, 2);
    Write(head, kColoursImportantAt, 4, 2);
    // Black is all zeros; white has no reserved byte.
    Write(head, kColourTableAt + 4, 4, 0x00FFFFFF);
}

}  // namespace kx
