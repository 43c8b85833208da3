#include "lib/packbits.h"

#include <random>

namespace kx::test {
namespace {

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

Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Bytes Ascending(std::size_t count) {
    Bytes row(count);
    for (std::size_t i = 0; i < count; ++i) {
        row[i] = static_cast<std::uint8_t>(i % 251 + 1);
    }
    return row;
}

TEST(PackBits, MakesTheStatedPackets) {
    const struct {
        const char* what;
        Bytes row, packets;
    } cases[] = {{"nothing", {}, {}},
                 {"more zeros than a packet holds", Bytes(1000), {}},
                 {"a run", {0xAA, 0xAA, 0xAA, 0xAA}, {0xFD, 0xAA}},
                 {"a pair", {7, 7}, {0xFF, 7}},
                 {"a run of three leaves the literals", {1, 2, 2, 2, 5}, {0, 1, 0xFE, 2, 0, 5}},
                 {"a pair stays among the literals", {1, 2, 2, 3}, {3, 1, 2, 2, 3}},
                 {"three at the end leave them", {1, 2, 2, 2}, {0, 1, 0xFE, 2}},
                 {"a long run", Bytes(200, 0xFF), {0x81, 0xFF, 0xB9, 0xFF}},
                 {"a full run and one byte", Bytes(129, 9), {0x81, 9, 0, 9}},
                 {"zeros at the end of literals", {7, 0, 0}, {0, 7}},
                 {"one zero at the end, behind a run", {7, 7, 7, 0}, {0xFE, 7}},
                 {"127 zeros at the end", Bytes{7} + Bytes(127), {0, 7}},
                 {"a full packet of zeros at the end", Bytes{7, 7, 7} + Bytes(128), {0xFE, 7, 0x81, 0}},
                 {"and one more", Bytes{7, 7, 7} + Bytes(129), {0xFE, 7, 0x81, 0}},
                 {"128 literals", Ascending(128), Bytes{127} + Ascending(128)},
                 {"128 literals, the last a zero", Ascending(127) + Bytes(1), Bytes{127} + Ascending(127) + Bytes(1)},
                 {"129 literals", Ascending(129), Bytes{127} + Ascending(128) + Bytes{0, 129}}};
    for (const auto& c : cases) {
        EXPECT_EQ(Encode(c.row), c.packets) << c.what;
    }
}

// Decoding gives the row back once it is filled up with zeros, and no row becomes longer than the worst case.
void ExpectRoundTrip(const Bytes& row) {
    const Bytes packed = Encode(row);
    Bytes decoded = Decode(packed);
    ASSERT_LE(decoded.size(), row.size());
    decoded.resize(row.size());
    ASSERT_EQ(decoded, row);
    ASSERT_LE(packed.size(), PackBitsWorstCase(row.size()));
}

TEST(PackBits, DecodesToTheRowWhateverItHolds) {
    std::mt19937 random(20130724);
    const auto below = [&](unsigned n) { return random() % n; };
    for (int round = 0; round < 4000; ++round) {
        Bytes row(below(round % 50 == 0 ? 5000 : 400));
        const unsigned symbols = 1 + below(round % 3 == 0 ? 256 : 3);
        const unsigned runs = 1 + below(140);
        for (std::size_t i = 0; i < row.size();) {
            const auto byte = static_cast<std::uint8_t>(below(symbols));
            for (unsigned n = round % 2 == 0 ? 1 : 1 + below(runs); n > 0 && i < row.size(); --n) {
                row[i++] = byte;
            }
        }
        ASSERT_NO_FATAL_FAILURE(ExpectRoundTrip(row)) << "round " << round;
    }
    // Every row of up to nine bytes of an alphabet of three: whatever the four states can meet at a row's end.
    for (std::size_t length = 1, rows = 3; length <= 9; ++length, rows *= 3) {
        for (std::size_t code = 0; code < rows; ++code) {
            Bytes row(length);
            std::size_t rest = code;
            for (std::uint8_t& byte : row) {
                byte = static_cast<std::uint8_t>(rest % 3), rest /= 3;
            }
            ASSERT_NO_FATAL_FAILURE(ExpectRoundTrip(row)) << length << ": " << code;
        }
    }
}

}  // namespace
}  // namespace kx::test
