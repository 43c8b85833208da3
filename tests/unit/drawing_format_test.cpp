// What drawing needs without a device: picture files and the transform from logical units.
#include "lib/bmp_format.h"
#include "lib/windows/drawing_transform.h"

namespace kx::test {
namespace {

using Bytes = std::vector<std::byte>;

void Put(Bytes& file, std::size_t at, std::size_t size, std::uint32_t value) {
    for (std::size_t i = 0; i < size; ++i) {
        file.at(at + i) = static_cast<std::byte>(value >> (8 * i));
    }
}

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
    const Bytes mono = File(16, 3, 1), colour = File(3, 2, 24);
    const struct {
        const char* name;
        Bytes file;
        std::function<void(Bytes&)> spoil;
        BmpFault fault;
    } rows[] = {
        {"monochrome", mono, [](Bytes&) {}, BmpFault::kNone},
        {"monochrome of one byte a row", File(8, 2, 1), [](Bytes&) {}, BmpFault::kNone},
        {"24 bits", colour, [](Bytes&) {}, BmpFault::kNone},
        {"24 bits without an image size", colour, [](Bytes& f) { Put(f, 34, 4, 0); }, BmpFault::kNone},
        {"24 bits from the top down", colour, [](Bytes& f) { Put(f, 22, 4, 0xFFFFFFFE); }, BmpFault::kNone},
        {"empty", {}, [](Bytes&) {}, BmpFault::kTooShort},
        {"57 bytes", mono, [](Bytes& f) { f.resize(57); }, BmpFault::kTooShort},
        {"signature before the sizes", mono, [](Bytes& f) { Put(f, 0, 1, 0), Put(f, 10, 4, 0xFFFFFFFF); }, BmpFault::kNotBmp},
        {"last byte missing", mono, [](Bytes& f) { f.pop_back(); }, BmpFault::kPixelsMissing},
        {"offset and size wrap around", mono, [](Bytes& f) { Put(f, 10, 4, 0xFFFFFFFF), Put(f, 34, 4, 63); }, BmpFault::kPixelsMissing},
        {"compression", mono, [](Bytes& f) { Put(f, 30, 4, 1); }, BmpFault::kCompressed},
        {"8 bits", File(16, 3, 8), [](Bytes&) {}, BmpFault::kUnsupportedDepth},
        {"two planes", mono, [](Bytes& f) { Put(f, 26, 2, 2); }, BmpFault::kUnsupportedDepth},
        {"width 12", File(12, 3, 1), [](Bytes&) {}, BmpFault::kWidthNotInBytes},
        {"image size too small", mono, [](Bytes& f) { Put(f, 34, 4, 11); }, BmpFault::kInvalid},
        {"monochrome from the top down", mono, [](Bytes& f) { Put(f, 22, 4, 0xFFFFFFFD); }, BmpFault::kInvalid},
        {"no width", mono, [](Bytes& f) { Put(f, 18, 4, 0); }, BmpFault::kInvalid},
        {"negative width", File(16, 3, 24), [](Bytes& f) { Put(f, 18, 4, 0xFFFFFFF0); }, BmpFault::kInvalid},
        {"no height", mono, [](Bytes& f) { Put(f, 22, 4, 0); }, BmpFault::kInvalid},
        {"older header", mono, [](Bytes& f) { Put(f, 14, 4, 12); }, BmpFault::kInvalid},
        {"a row too many", colour, [](Bytes& f) { Put(f, 22, 4, 3), Put(f, 34, 4, 0); }, BmpFault::kInvalid},
        {"largest sizes", colour, [](Bytes& f) { Put(f, 18, 4, 0x7FFFFFFF), Put(f, 22, 4, 0x80000000), Put(f, 34, 4, 0); },
         BmpFault::kInvalid},
        {"monochrome, largest sizes", mono, [](Bytes& f) { Put(f, 18, 4, 0x7FFFFFF8), Put(f, 22, 4, 0x7FFFFFFF); }, BmpFault::kInvalid}};
    for (const auto& row : rows) {
        Bytes file = row.file;
        row.spoil(file);
        BmpPicture picture;
        EXPECT_EQ(ParseBmp(file, picture), row.fault) << row.name;
    }
}

TEST(BmpFormat, MonochromeRowsAreTurnedOverAndFillWords) {
    const struct {
        std::uint32_t width, height;
        std::vector<int> expected;
    } rows[] = {{16, 2, {5, 6, 1, 2}}, {8, 3, {9, 0, 5, 0, 1, 0}}, {24, 2, {5, 6, 7, 0, 1, 2, 3, 0}}, {40, 1, {1, 2, 3, 4, 5, 0}}};
    for (const auto& row : rows) {
        const Bytes file = File(row.width, row.height, 1);
        BmpPicture picture;
        ASSERT_EQ(ParseBmp(file, picture), BmpFault::kNone) << row.width;
        std::vector<int> bytes;
        for (const std::byte value : MonochromeRows(picture)) {
            bytes.push_back(std::to_integer<int>(value));
        }
        EXPECT_EQ(bytes, row.expected) << "width " << row.width;
    }
}

TEST(BmpFormat, TheHeadIsThatOfATwoColourPicture) {
    BmpHead head;
    MakeBmpHead(17, 5, 1, 4, head);
    constexpr unsigned char kExpected[] = {
        'B', 'M', 82, 0, 0,    0,    0,    0, 0,    0,    62, 0, 0,    0,           // file: size, reserved, pixel offset
        40,  0,   0,  0, 17,   0,    0,    0, 5,    0,    0,  0, 1,    0,    1, 0,  // info: size, width, height, planes, bits
        0,   0,   0,  0, 20,   0,    0,    0, 0x12, 0x0B, 0,  0, 0x12, 0x0B, 0, 0,
        2,   0,   0,  0, 2,    0,    0,    0,  // compression, size, resolution, colours
        0,   0,   0,  0, 0xFF, 0xFF, 0xFF, 0,
    };
    ASSERT_EQ(sizeof kExpected, head.size());
    for (std::size_t i = 0; i < head.size(); ++i) {
        EXPECT_EQ(std::to_integer<int>(head[i]), kExpected[i]) << "byte " << i;
    }
}

TEST(DrawingTransform, MapsAPointByItsOriginsAndItsScale) {
    const struct {
        const char* name;
        DrawingTransform transform;  // origins x: logical, device; y: logical, device; then the scales x, y
        std::int32_t x, y, deviceX, deviceY;
    } rows[] = {{"as it is", {}, 100, -7, 100, -7},
                {"hundredths of an inch in 254 per 100", {0, 0, 0, 0, 100, 254, 100, 254}, 100, 50, 254, 127},
                {"origins", {10, 1000, -20, 2000}, 15, 5, 1005, 2025},
                {"origin before the scale", {10, 3, 0, 0, 2, 6, 1, 1}, 14, 9, 15, 9},
                {"halves away from zero", {0, 0, 0, 0, 2, 1, 2, 1}, 5, -5, 3, -3},
                {"down to the nearest", {0, 0, 0, 0, 3, 1, 3, 1}, 4, -4, 1, -1},
                {"upwards axis", {0, 0, 0, 400, 100, 100, 100, -100}, 0, 30, 0, 370},
                {"no divisor", {0, 9, 0, 9, 0, 100, 0, 100}, 50, 50, 8, 8},
                {"too large", {0, 5, 0, 0, 1, 1000, 100, 100}, INT32_MAX, INT32_MIN + 1, 4, INT32_MIN + 1}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.transform.DeviceX(row.x), row.deviceX) << row.name;
        EXPECT_EQ(row.transform.DeviceY(row.y), row.deviceY) << row.name;
    }
    const DrawingTransform both = {70, 80, 90, 100, 100, 254, 50, 200};  // a width has no origin, an extent goes back
    EXPECT_EQ(both.ScaleX(100), 254);
    EXPECT_EQ(both.ScaleY(-3), -12);
    EXPECT_EQ(both.LogicalWidth(254), 100);
    EXPECT_EQ(both.LogicalHeight(10), 3);
}

TEST(DrawingTransform, NoCoordinateIsTooLarge) {
    constexpr std::int32_t kExtremes[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX};
    for (int i = 0; i < 6 * 6 * 6; ++i) {
        const std::int32_t a = kExtremes[i % 6], b = kExtremes[i / 6 % 6], c = kExtremes[i / 36];
        const DrawingTransform transform = {a, b, b, a, c, a, b, c};
        // Nothing to expect but that it ends: the sanitizers look at the arithmetic.
        (void)transform.DeviceX(c);
        (void)transform.DeviceY(c);
        (void)transform.LogicalHeight(a);
    }
}

}  // namespace
}  // namespace kx::test
