#include "lib/packbits.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace kx {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The end of the buffer is the end of its memory, so that a byte too many is found.
Bytes Encode(const Bytes& row) {
    Bytes packed(PackBitsWorstCase(row.size()));
    packed.resize(PackBitsEncode(row.data(), row.size(), packed.data()));
    return packed;
}

// From the definition of the format in TIFF 6.0, section 9: header n >= 0: n + 1 literals; -127 to -1: 1 - n
// copies of the next byte; -128: nothing.
Bytes Decode(const Bytes& packed) {
    Bytes row;
    for (std::size_t i = 0; i < packed.size();) {
        const int n = static_cast<std::int8_t>(packed[i++]);
        if (n >= 0) {
            EXPECT_LE(i + static_cast<std::size_t>(n) + 1, packed.size())
                << "a literal packet beyond the end";
            for (int k = 0; k <= n && i < packed.size(); ++k) {
                row.push_back(packed[i++]);
            }
        } else if (n != -128) {
            EXPECT_LT(i, packed.size()) << "a repeat packet without its byte";
            if (i < packed.size()) {
                row.insert(row.end(), static_cast<std::size_t>(1 - n), packed[i]);
                ++i;
            }
        }
    }
    return row;
}

Bytes Copies(std::uint8_t byte, std::size_t count) {
    return Bytes(count, byte);
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
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
    } cases[] = {
        {"nothing", {}, {}},
        {"zeros alone", {0, 0, 0}, {}},
        {"more zeros than a packet holds", Copies(0, 1000), {}},
        {"one byte", {0x55}, {0x00, 0x55}},
        {"a run", Copies(0xAA, 4), {0xFD, 0xAA}},
        {"a pair", {7, 7}, {0xFF, 7}},
        {"literals", {1, 2, 3}, {2, 1, 2, 3}},
        {"a run of three leaves the literals", {1, 2, 2, 2, 5}, {0, 1, 0xFE, 2, 0, 5}},
        {"a pair stays among the literals", {1, 2, 2, 3}, {3, 1, 2, 2, 3}},
        {"a pair at the end stays among them", {1, 2, 2}, {2, 1, 2, 2}},
        {"three at the end leave them", {1, 2, 2, 2}, {0, 1, 0xFE, 2}},
        {"a pair, then literals", {4, 4, 1, 2}, {0xFF, 4, 1, 1, 2}},
        {"a long run", Copies(0xFF, 200), {0x81, 0xFF, 0xB9, 0xFF}},
        {"a full run and one byte", Copies(9, 129), {0x81, 9, 0, 9}},
        {"zeros at the end of literals", {7, 0, 0}, {0, 7}},
        {"zeros at the end, as a run", {7, 0, 0, 0, 0}, {0, 7}},
        {"one zero at the end, behind a run", {7, 7, 7, 0}, {0xFE, 7}},
        {"zeros between", {7, 0, 0, 0, 7}, {0, 7, 0xFE, 0, 0, 7}},
        {"128 literals", Ascending(128), Join({{127}, Ascending(128)})},
        {"129 literals", Ascending(129), Join({{127}, Ascending(128), {0, 129}})},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Encode(c.row), c.packets) << c.what;
    }
}

// Decoding gives the row back once zeros are appended, and no row becomes longer than the worst case.
void ExpectRoundTrip(const Bytes& row, const std::string& what) {
    const Bytes packed = Encode(row);
    Bytes decoded = Decode(packed);
    ASSERT_LE(decoded.size(), row.size()) << what;
    decoded.resize(row.size());
    ASSERT_EQ(decoded, row) << what;
    ASSERT_LE(packed.size(), PackBitsWorstCase(row.size())) << what;
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
        ExpectRoundTrip(row, "round " + std::to_string(round));
    }
    ExpectRoundTrip(Ascending(65536), "65,536 literals");
    ExpectRoundTrip(Copies(1, 65536), "65,536 copies");
}

// Every row of up to nine bytes of an alphabet of three: whatever the four states can meet at a row's end.
TEST(PackBits, DecodesEveryShortRow) {
    for (std::size_t length = 1; length <= 9; ++length) {
        std::size_t rows = 1;
        for (std::size_t i = 0; i < length; ++i) {
            rows *= 3;
        }
        for (std::size_t code = 0; code < rows; ++code) {
            Bytes row(length);
            std::size_t rest = code;
            for (std::uint8_t& byte : row) {
                byte = static_cast<std::uint8_t>(rest % 3);
                rest /= 3;
            }
            ASSERT_NO_FATAL_FAILURE(
                ExpectRoundTrip(row, std::to_string(length) + ": " + std::to_string(code)));
        }
    }
}

}  // namespace
}  // namespace kx
