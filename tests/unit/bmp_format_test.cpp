#include "lib/bmp_format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace {

using kx::BmpFault;
using kx::BmpPicture;
using Bytes = std::vector<std::byte>;

void Put(Bytes& file, std::size_t at, std::size_t size, std::uint32_t value) {
    for (std::size_t i = 0; i < size; ++i) {
        file.at(at + i) = static_cast<std::byte>(value >> (8 * i));
    }
}

// A right file whose pixel bytes count up from 1.
Bytes File(std::uint32_t width, std::uint32_t height, std::uint16_t bits) {
    const auto rowSize = static_cast<std::uint32_t>(kx::BmpRowSize(width, bits));
    kx::BmpHead head;
    kx::MakeBmpHead(static_cast<std::int32_t>(width), static_cast<std::int32_t>(height), bits, rowSize, head);
    Bytes file(head.begin(), head.end());
    for (std::uint32_t i = 0; i < rowSize * height; ++i) {
        file.push_back(static_cast<std::byte>(i + 1));
    }
    return file;
}

TEST(BmpFormat, AFaultIsNamedByTheFirstThingThatIsWrong) {
    const struct {
        const char* name;
        Bytes file;
        std::function<void(Bytes&)> spoil;
        BmpFault fault;
    } rows[] = {
        {"monochrome", File(16, 3, 1), [](Bytes&) {}, BmpFault::kNone},
        {"monochrome of one byte a row", File(8, 2, 1), [](Bytes&) {}, BmpFault::kNone},
        {"24 bits", File(3, 2, 24), [](Bytes&) {}, BmpFault::kNone},
        {"24 bits without an image size", File(3, 2, 24), [](Bytes& f) { Put(f, 34, 4, 0); },
         BmpFault::kNone},
        {"24 bits from the top down", File(3, 2, 24), [](Bytes& f) { Put(f, 22, 4, 0xFFFFFFFE); },
         BmpFault::kNone},
        {"empty", {}, [](Bytes&) {}, BmpFault::kTooShort},
        {"57 bytes", File(16, 3, 1), [](Bytes& f) { f.resize(57); }, BmpFault::kTooShort},
        {"signature", File(16, 3, 1), [](Bytes& f) { Put(f, 0, 1, 'b'); }, BmpFault::kNotBmp},
        {"signature before the sizes", File(16, 3, 1),
         [](Bytes& f) { Put(f, 0, 1, 0), Put(f, 10, 4, 0xFFFFFFFF); }, BmpFault::kNotBmp},
        {"last byte missing", File(16, 3, 1), [](Bytes& f) { f.pop_back(); }, BmpFault::kPixelsMissing},
        {"offset and size wrap around", File(16, 3, 1),
         [](Bytes& f) { Put(f, 10, 4, 0xFFFFFFFF), Put(f, 34, 4, 63); }, BmpFault::kPixelsMissing},
        {"compression", File(16, 3, 1), [](Bytes& f) { Put(f, 30, 4, 1); }, BmpFault::kCompressed},
        {"8 bits", File(16, 3, 8), [](Bytes&) {}, BmpFault::kUnsupportedDepth},
        {"two planes", File(16, 3, 1), [](Bytes& f) { Put(f, 26, 2, 2); }, BmpFault::kUnsupportedDepth},
        {"width 12", File(12, 3, 1), [](Bytes&) {}, BmpFault::kWidthNotInBytes},
        {"image size too small", File(16, 3, 1), [](Bytes& f) { Put(f, 34, 4, 11); }, BmpFault::kInvalid},
        {"monochrome from the top down", File(16, 3, 1), [](Bytes& f) { Put(f, 22, 4, 0xFFFFFFFD); },
         BmpFault::kInvalid},
        {"no width", File(16, 3, 1), [](Bytes& f) { Put(f, 18, 4, 0); }, BmpFault::kInvalid},
        {"negative width", File(16, 3, 24), [](Bytes& f) { Put(f, 18, 4, 0xFFFFFFF0); }, BmpFault::kInvalid},
        {"no height", File(16, 3, 1), [](Bytes& f) { Put(f, 22, 4, 0); }, BmpFault::kInvalid},
        {"older header", File(16, 3, 1), [](Bytes& f) { Put(f, 14, 4, 12); }, BmpFault::kInvalid},
        {"24 bits, a row too many", File(3, 2, 24), [](Bytes& f) { Put(f, 22, 4, 3), Put(f, 34, 4, 0); },
         BmpFault::kInvalid},
        {"24 bits, largest sizes", File(3, 2, 24),
         [](Bytes& f) { Put(f, 18, 4, 0x7FFFFFFF), Put(f, 22, 4, 0x80000000), Put(f, 34, 4, 0); },
         BmpFault::kInvalid},
        {"monochrome, largest sizes", File(16, 3, 1),
         [](Bytes& f) { Put(f, 18, 4, 0x7FFFFFF8), Put(f, 22, 4, 0x7FFFFFFF); }, BmpFault::kInvalid},
    };
    for (const auto& row : rows) {
        Bytes file = row.file;
        row.spoil(file);
        BmpPicture picture;
        EXPECT_EQ(kx::ParseBmp(file, picture), row.fault) << row.name;
    }
}

TEST(BmpFormat, MonochromeRowsAreTurnedOverAndFillWords) {
    const struct {
        std::uint32_t width, height;
        std::vector<int> expected;
    } rows[] = {
        {16, 2, {5, 6, 1, 2}},
        {8, 3, {9, 0, 5, 0, 1, 0}},
        {24, 2, {5, 6, 7, 0, 1, 2, 3, 0}},
        {40, 1, {1, 2, 3, 4, 5, 0}},
    };
    for (const auto& row : rows) {
        const Bytes file = File(row.width, row.height, 1);
        BmpPicture picture;
        ASSERT_EQ(kx::ParseBmp(file, picture), BmpFault::kNone) << row.width;
        std::vector<int> bytes;
        for (const std::byte value : kx::MonochromeRows(picture)) {
            bytes.push_back(std::to_integer<int>(value));
        }
        EXPECT_EQ(bytes, row.expected) << "width " << row.width;
    }
}

TEST(BmpFormat, TheHeadIsThatOfATwoColourPicture) {
    kx::BmpHead head;
    kx::MakeBmpHead(17, 5, 1, 4, head);
    constexpr unsigned char kExpected[] = {
        'B', 'M', 82, 0, 0,    0,    0,    0, 0,    0,    62, 0, 0,    0,  // file: size, reserved, pixel
                                                                           // offset
        40,  0,   0,  0, 17,   0,    0,    0, 5,    0,    0,  0, 1,    0,    1,
        0,  // info: size, width, height, planes, bits
        0,   0,   0,  0, 20,   0,    0,    0, 0x12, 0x0B, 0,  0, 0x12, 0x0B, 0,
        0,                                     // compression, size, resolution
        2,   0,   0,  0, 2,    0,    0,    0,  // colours
        0,   0,   0,  0, 0xFF, 0xFF, 0xFF, 0,
    };
    ASSERT_EQ(sizeof kExpected, head.size());
    for (std::size_t i = 0; i < head.size(); ++i) {
        EXPECT_EQ(std::to_integer<int>(head[i]), kExpected[i]) << "byte " << i;
    }
}

}  // namespace
