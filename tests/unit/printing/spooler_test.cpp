// The stream of a PCL page and the packing of its rows.
#include "lib/spooler.h"

#include "lib/packbits.h"
#include "tests/rig/memory_file.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

TEST(PclPage, WritesTheBytesOfEveryCommandOrSaysThatItCannot) {
    const auto bytesOf = [](const std::function<bool(PclPage&)>& command) {
        MemoryFile file, full;
        PclPage page(file, 75, 150), refused(full, 75, 150);
        EXPECT_TRUE(command(page));
        full.room = file.bytes.size() - 1;
        EXPECT_FALSE(command(refused)) << file.bytes;
        return file.bytes;
    };
    static constexpr std::uint8_t kRow[] = {1, 2, 2, 2, 5, 0, 0};
    EXPECT_EQ(bytesOf([](PclPage& p) { return p.Reset() && p.FormFeed(); }), "\x1B\x45\0\x0C\0"s);
    EXPECT_EQ(bytesOf([](PclPage& p) { return p.Portrait() && p.Landscape(); }), "\x1B&l0O\0\x1B&l1O\0"s);
    EXPECT_EQ(bytesOf([](PclPage& p) { return p.BeginRaster(375, 450, 300) && p.EndRaster(); }),
              "\x1B*p300x300Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M\x1B*rC\0"s);
    EXPECT_TRUE(bytesOf([](PclPage& p) {
                    return p.BeginRaster(INT32_MIN, INT32_MAX, 600);
                }).starts_with("\x1B*p-2147483723x2147483497Y\x1B*t600R"));
    EXPECT_EQ(bytesOf([](PclPage& p) { return p.RasterRow(kRow + 5, 2) && p.RasterRow(kRow, 5); }),
              "\x1B*b0W\x1B*b6W\x00\x01\xFE\x02\x00\x05"s);
}

TEST(PclPage, PrintsTheClearBitsOfRowsOfAnyLengthAndNoneBehindThem) {
    const auto inverted = [](std::int32_t width, std::string bits) {
        InvertClearBits(reinterpret_cast<std::uint8_t*>(bits.data()), width, bits.size());
        return bits;
    };
    EXPECT_TRUE(inverted(16, "\x0F\xFF"s) == "\xF0\x00"s && inverted(9, "\x00\x00"s) == "\xFF\x80"s);
    EXPECT_TRUE(inverted(8, "\x55\x00"s) == "\xAA\x00"s && inverted(1, "\x7F\xFF\x00"s) == "\x80\x00\x00"s);
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
    std::string packets;
    for (int i = 0; i < 512; ++i) {
        packets += "\x81\x01";
    }
    EXPECT_EQ(file.bytes, "\x1B*b1024W" + packets + "\x1B*b2W\x00\x03"s);
    file.room = file.bytes.size() + 3;
    EXPECT_FALSE(print(shortRow, 8, 1));
}

using Bytes = std::vector<std::uint8_t>;

// The end of the buffer is the end of its memory, so that a byte too many is found.
Bytes Encode(const Bytes& row) {
    Bytes packed(PackBitsWorstCase(row.size()));
    packed.resize(PackBitsEncode(row.data(), row.size(), packed.data()));
    return packed;
}

// From the definition of the format in TIFF 6.0, section 9: header n >= 0: n + 1 literals; -127 to -1: 1 - n copies of the next byte; -128:
// nothing.
Bytes Decode(const Bytes& packed) {
    Bytes row;
    for (std::size_t i = 0; i < packed.size();) {
        const int n = static_cast<std::int8_t>(packed[i++]);
        const auto count = static_cast<std::size_t>(n >= 0 ? n + 1 : 1);
        EXPECT_LE(i + count, packed.size()) << "a packet beyond the end";
        for (std::size_t k = 0; n != -128 && k < count && i < packed.size(); ++k, ++i) {
            row.insert(row.end(), n >= 0 ? 1 : static_cast<std::size_t>(1 - n), packed[i]);
        }
    }
    return row;
}

// Decoding gives the row back once it is filled up with zeros, and no row becomes longer than the worst case.
bool RoundTrips(const Bytes& row) {
    const Bytes packed = Encode(row);
    Bytes decoded = Decode(packed);
    const bool fits = packed.size() <= PackBitsWorstCase(row.size()) && decoded.size() <= row.size();
    decoded.resize(row.size());
    return fits && decoded == row;
}

TEST(PackBits, DecodesToTheRowWhateverItHolds) {
    EXPECT_EQ(Encode({1, 2, 2, 3, 3, 3, 5, 0, 0}), (Bytes{2, 1, 2, 2, 0xFE, 3, 0, 5}))
        << "runs of three are packed, zeros at the end left out";
    EXPECT_EQ(Encode(Bytes(200, 0xFF)), (Bytes{0x81, 0xFF, 0xB9, 0xFF}));
    // Literals and runs of every length up to beyond what a packet holds.
    for (std::size_t length = 0; length < 300; ++length) {
        for (const std::size_t run : {1u, 2u, 3u, 5u, 130u}) {
            Bytes row(length);
            std::ranges::generate(row, [i = std::size_t{0}, run]() mutable { return static_cast<std::uint8_t>(i++ / run * 7); });
            ASSERT_TRUE(RoundTrips(row)) << length << " by " << run;
        }
    }
    // Every row of nine bytes of an alphabet of three: whatever the four states can meet at a row's end.
    for (std::size_t code = 0; code < 3 * 3 * 3 * 3 * 3 * 3 * 3 * 3 * 3; ++code) {
        Bytes row(9);
        std::size_t rest = code;
        for (std::uint8_t& byte : row) {
            byte = static_cast<std::uint8_t>(rest % 3), rest /= 3;
        }
        ASSERT_TRUE(RoundTrips(row)) << code;
    }
}

}  // namespace
}  // namespace kx::test
