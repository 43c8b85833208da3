#include "lib/packed_version.h"

#include <gtest/gtest.h>

namespace {

TEST(PackVersion, PacksAByteForEachPartAndCarriesWhatIsMore) {
    const struct {
        std::uint32_t most, least, packed;
    } rows[] = {
        {0x00000004, 0x00000006, 0x00040006},  // 0.4.0.6, the oldest that is called
        {0x00000004, 0x00000005, 0x00040005},  // 0.4.0.5
        {0x00040000, 0x00000006, 0x04000006},  // 4.0.0.6
        {0x00000004, 0x00010000, 0x00040100},  // 0.4.1.0
        {0x00010002, 0x00030004, 0x01020304}, {0x000000FF, 0x00FF00FF, 0x00FFFFFF},
        {0x00000000, 0x00000100, 0x00000100},  // revision 256 counts as build 1
        {0x00000004, 0x00000200, 0x00040200}, {0x000000FF, 0x00FF0100, 0x01000000},  // and carries through
        {0x01000000, 0x00000000, 0x00000000},  // major 256 leaves the number
        {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFEFF}, {0x00000000, 0x00000000, 0x00000000},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kx::PackVersion(row.most, row.least), row.packed)
            << std::hex << "of " << row.most << " " << row.least;
    }
}

}  // namespace
