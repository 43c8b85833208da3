// Picture files.
#include "lib/bmp_format.h"

namespace kx::test {
namespace {

using Bytes = std::vector<std::byte>;

// A right file whose pixel bytes count up from 1.
Bytes File(std::uint32_t width, std::uint32_t height, std::uint16_t bits) {
    const auto rowSize = static_cast<std::uint32_t>(BmpRowSize(width, bits));
    BmpHead head;
    MakeBmpHead(static_cast<std::int32_t>(width), static_cast<std::int32_t>(height), bits, rowSize, head);
    Bytes file(head.begin(), head.end());
    for (std::uint32_t i = 0; i < rowSize * height; ++i) {
        file.push_back(static_cast<std::byte>(i + 1));
    }
    return file;
}

TEST(BmpFormat, AFaultIsNamedByTheFirstThingThatIsWrong) {
    struct Field {
        std::size_t at, size;
        std::uint32_t value;
    };
    const Bytes mono = File(16, 3, 1), colour = File(3, 2, 24);
    const struct {
        const char* name;
        Bytes file;
        std::vector<Field> changed;
        BmpFault fault;
    } rows[] = {{"24 bits without an image size", colour, {{34, 4, 0}}, BmpFault::kNone},
                {"57 bytes", Bytes(57), {}, BmpFault::kTooShort},
                {"signature before the sizes", mono, {{0, 1, 0}, {10, 4, 0xFFFFFFFF}}, BmpFault::kNotBmp},
                {"last byte missing", Bytes(mono.begin(), mono.end() - 1), {}, BmpFault::kPixelsMissing},
                {"offset and size wrap around", mono, {{10, 4, 0xFFFFFFFF}, {34, 4, 63}}, BmpFault::kPixelsMissing},
                {"compression", mono, {{30, 4, 1}}, BmpFault::kCompressed},
                {"width 12", File(12, 3, 1), {}, BmpFault::kWidthNotInBytes},
                {"largest sizes", colour, {{18, 4, 0x7FFFFFFF}, {22, 4, 0x80000000}, {34, 4, 0}}, BmpFault::kInvalid}};
    for (const auto& row : rows) {
        Bytes file = row.file;
        for (const Field& field : row.changed) {
            for (std::size_t i = 0; i < field.size; ++i) {
                file[field.at + i] = static_cast<std::byte>(field.value >> (8 * i));
            }
        }
        BmpPicture picture;
        EXPECT_EQ(ParseBmp(file, picture), row.fault) << row.name;
    }
    for (std::size_t i = 0; i < 256 * mono.size(); ++i) {
        Bytes file = mono;  // any byte changed: the pixels that are promised are there
        file[i / 256] = static_cast<std::byte>(i);
        BmpPicture picture;
        EXPECT_TRUE(ParseBmp(file, picture) != BmpFault::kNone || !MonochromeRows(picture).empty()) << i;
    }
}

TEST(BmpFormat, ItsRowsAreTurnedOverAndFillWords) {
    const struct {
        std::uint32_t width, height;
        std::vector<int> expected;
    } rows[] = {{16, 2, {5, 6, 1, 2}}, {8, 3, {9, 0, 5, 0, 1, 0}}, {40, 1, {1, 2, 3, 4, 5, 0}}};
    for (const auto& row : rows) {
        const Bytes file = File(row.width, row.height, 1);
        BmpPicture picture;
        ASSERT_EQ(ParseBmp(file, picture), BmpFault::kNone) << row.width;
        const auto turned = MonochromeRows(picture);
        EXPECT_TRUE(std::ranges::equal(turned, row.expected, {}, [](std::byte b) { return std::to_integer<int>(b); })) << row.width;
    }
}

}  // namespace
}  // namespace kx::test
