#include "lib/spooler.h"

#include "tests/rig/memory_file.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

TEST(PclPage, WritesTheBytesOfEveryCommand) {
    using Page = PclPage;
    static constexpr std::uint8_t kRow[] = {1, 2, 2, 2, 5, 0, 0};
    const struct {
        const char* what;
        bool (*command)(PclPage&);
        std::string bytes;
    } cases[] = {{"reset", [](Page& p) { return p.Reset(); }, "\x1B\x45\0"s},
                 {"form feed", [](Page& p) { return p.FormFeed(); }, "\x0C\0"s},
                 {"portrait", [](Page& p) { return p.Portrait(); }, "\x1B&l0O\0"s},
                 {"landscape", [](Page& p) { return p.Landscape(); }, "\x1B&l1O\0"s},
                 {"end", [](Page& p) { return p.EndRaster(); }, "\x1B*rC\0"s},
                 {"begin", [](Page& p) { return p.BeginRaster(375, 450, 300); }, "\x1B*p300x300Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M"s},
                 {"as far out as a number goes", [](Page& p) { return p.BeginRaster(INT32_MIN, INT32_MAX, 600); },
                  "\x1B*p-2147483723x2147483497Y\x1B*t600R\x1B*r0F\x1B*r1A\x1B*b2M"s},
                 {"blank row", [](Page& p) { return p.RasterRow(kRow + 5, 2); }, "\x1B*b0W"s},
                 {"row", [](Page& p) { return p.RasterRow(kRow, 5); }, "\x1B*b6W\x00\x01\xFE\x02\x00\x05"s}};
    for (const auto& c : cases) {
        MemoryFile file;
        PclPage page(file, 75, 150);
        EXPECT_TRUE(c.command(page)) << c.what;
        EXPECT_EQ(file.bytes, c.bytes) << c.what;
        MemoryFile full;
        full.room = c.bytes.size() - 1;
        PclPage refused(full, 75, 150);
        EXPECT_FALSE(c.command(refused)) << c.what << ", refused";
    }
}

TEST(PclPage, PrintsTheClearBitsOfRowsOfAnyLengthAndNoneBehindThem) {
    const struct {
        std::int32_t width;
        std::string row, inverted;
    } rows[] = {{16, "\x0F\xFF"s, "\xF0\x00"s}, {9, "\x00\x00"s, "\xFF\x80"s}, {8, "\x00\x00"s, "\xFF\x00"s},
                {7, "\x00\x00"s, "\xFE\x00"s},  {8, "\x55"s, "\xAA"s},         {1, "\x7F\xFF\x00\x00"s, "\x80\x00\x00\x00"s}};
    for (const auto& row : rows) {
        std::string bits = row.row;
        InvertClearBits(reinterpret_cast<std::uint8_t*>(bits.data()), row.width, bits.size());
        EXPECT_EQ(bits, row.inverted) << row.width;
    }
    MemoryFile file;
    PclPage page(file, 0, 0);
    std::string bits = "\xFF\xFF\xFF\xC0"s, longRow(65536, '\xFE'), shortRow(1, '\xFC');
    const auto print = [&page](std::string& row, std::int32_t width, std::int32_t height) {
        return page.RasterOfClearBits(reinterpret_cast<std::uint8_t*>(row.data()), width, height,
                                      row.size() / static_cast<std::size_t>(height));
    };
    EXPECT_TRUE(print(bits, 10, 2));
    EXPECT_EQ(std::exchange(file.bytes, ""), "\x1B*b0W\x1B*b0W") << "bits behind ten pixels are printed";
    EXPECT_TRUE(print(longRow, 8 * 65536, 1) && print(shortRow, 8, 1));
    std::string expected = "\x1B*b1024W";
    for (int i = 0; i < 512; ++i) {
        expected += "\x81\x01";
    }
    EXPECT_EQ(file.bytes, expected + "\x1B*b2W\x00\x03"s);
    file.room = file.bytes.size() + 3;
    EXPECT_FALSE(print(shortRow, 8, 1));
}

}  // namespace
}  // namespace kx::test
