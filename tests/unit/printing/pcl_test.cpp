#include "lib/pcl.h"

#include <gtest/gtest.h>

#include <string>

namespace kx {
namespace {

// Takes `room` bytes and refuses what does not fit any more, whole.
class Sink final : public ByteSink {
  public:
    explicit Sink(std::size_t room = 1u << 20) : room_(room) {}
    bool CreateAlways(Reporter*) override { return true; }
    bool Write(const void* bytes, std::uint32_t count) override {
        if (taken.size() + count > room_) {
            return false;
        }
        taken.append(static_cast<const char*>(bytes), count);
        return true;
    }

    std::string taken;

  private:
    std::size_t room_;
};

TEST(PclPage, WritesTheBytesOfEveryCommand) {
    using namespace std::string_literals;
    const std::uint8_t blank[3] = {};
    const std::uint8_t row[] = {1, 2, 2, 2, 5};
    const struct {
        const char* what;
        bool (*command)(PclPage&, const std::uint8_t* blank, const std::uint8_t* row);
        std::string bytes;
    } cases[] = {
        {"reset", [](PclPage& p, auto, auto) { return p.Reset(); },
         "\x1B"
         "E\0"s},
        {"form feed", [](PclPage& p, auto, auto) { return p.FormFeed(); }, "\x0C\0"s},
        {"portrait", [](PclPage& p, auto, auto) { return p.Portrait(); }, "\x1B&l0O\0"s},
        {"landscape", [](PclPage& p, auto, auto) { return p.Landscape(); }, "\x1B&l1O\0"s},
        {"end", [](PclPage& p, auto, auto) { return p.EndRaster(); }, "\x1B*rC\0"s},
        {"begin", [](PclPage& p, auto, auto) { return p.BeginRaster(375, 450, 300); },
         "\x1B*p300x300Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M"s},
        {"begin left of the printable area", [](PclPage& p, auto, auto) { return p.BeginRaster(0, 0, 75); },
         "\x1B*p-75x-150Y\x1B*t75R\x1B*r0F\x1B*r1A\x1B*b2M"s},
        {"begin as far out as a number goes",
         [](PclPage& p, auto, auto) { return p.BeginRaster(INT32_MIN, INT32_MAX, 600); },
         "\x1B*p-2147483723x2147483497Y\x1B*t600R\x1B*r0F\x1B*r1A\x1B*b2M"s},
        {"blank row", [](PclPage& p, auto b, auto) { return p.RasterRow(b, 3); }, "\x1B*b0W"s},
        {"no row at all", [](PclPage& p, auto b, auto) { return p.RasterRow(b, 0); }, "\x1B*b0W"s},
        {"row", [](PclPage& p, auto, auto r) { return p.RasterRow(r, 5); },
         "\x1B*b6W\x00\x01\xFE\x02\x00\x05"s},
    };
    for (const auto& c : cases) {
        Sink sink;
        PclPage page(sink, 75, 150);
        EXPECT_TRUE(c.command(page, blank, row)) << c.what;
        EXPECT_EQ(sink.taken, c.bytes) << c.what;

        Sink full(c.bytes.size() - 1);
        PclPage refused(full, 75, 150);
        EXPECT_FALSE(c.command(refused, blank, row)) << c.what << ", refused";
    }
}

TEST(PclPage, PrintsTheClearBitsOfRowsAndNoneBehindThem) {
    using namespace std::string_literals;
    const struct {
        std::int32_t width;
        std::string row;
        std::string inverted;
    } rows[] = {
        {16, "\x0F\xFF"s, "\xF0\x00"s},
        {9, "\x00\x00"s, "\xFF\x80"s},
        {8, "\x00\x00"s, "\xFF\x00"s},
        {7, "\x00\x00"s, "\xFE\x00"s},
        {1, "\x7F\xFF\x00\x00"s, "\x80\x00\x00\x00"s},
        {8, "\x55"s, "\xAA"s},
    };
    for (const auto& row : rows) {
        std::string bits = row.row;
        InvertClearBits(reinterpret_cast<std::uint8_t*>(bits.data()), row.width, bits.size());
        EXPECT_EQ(bits, row.inverted) << row.width;
    }
    Sink sink;
    PclPage page(sink, 0, 0);
    std::string bits = "\xFF\xFF\xFF\xC0"s;
    EXPECT_TRUE(page.RasterOfClearBits(reinterpret_cast<std::uint8_t*>(bits.data()), 10, 2, 2));
    EXPECT_EQ(sink.taken, "\x1B*b0W\x1B*b0W"s) << "the bits behind ten pixels are printed";
    Sink full(3);
    PclPage refused(full, 0, 0);
    EXPECT_FALSE(refused.RasterOfClearBits(reinterpret_cast<std::uint8_t*>(bits.data()), 10, 2, 2));
}

TEST(PclPage, KeepsRowsOfAnyLengthApart) {
    Sink sink;
    PclPage page(sink, 0, 0);
    const std::string longRow(65536, '\x01');
    const std::uint8_t shortRow[] = {3};
    EXPECT_TRUE(page.RasterRow(shortRow, 1));
    EXPECT_TRUE(page.RasterRow(reinterpret_cast<const std::uint8_t*>(longRow.data()), longRow.size()));
    EXPECT_TRUE(page.RasterRow(shortRow, 1));
    std::string expected = std::string("\x1B*b2W\x00\x03", 7) + "\x1B*b1024W";
    for (int i = 0; i < 512; ++i) {
        expected += "\x81\x01";
    }
    EXPECT_EQ(sink.taken, expected + std::string("\x1B*b2W\x00\x03", 7));
}

}  // namespace
}  // namespace kx
