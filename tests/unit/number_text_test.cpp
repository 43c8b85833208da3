// Numbers as the dialogs show and read them.
#include "lib/number_text.h"

#include <limits>

namespace kx::test {
namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

TEST(NumberText, WritesScaledNumbers) {
    const auto scaled = [](std::int32_t multiplier, std::int32_t divisor, int decimals, std::int32_t value) {
        char text[352];
        FormatScaled(text, sizeof text, multiplier, divisor, decimals, value);
        return std::string(text);
    };
    EXPECT_EQ(scaled(1, 1000, 2, 1234) + scaled(1, 1000, 2, -1235), "1.23-1.24") << "halves away from zero";
    EXPECT_EQ(scaled(1, 1000, 1, 1950), "2.0") << "the carry reaches the whole part";
    EXPECT_EQ(scaled(1, 1000, 2, -4) + scaled(254, 10000, 0, 6900) + scaled(1, 10, 40, 1), "0.001750.100000000");
    EXPECT_EQ(scaled(1, 0, 2, 5) + scaled(kMost, 1, 0, 2), "......");
    EXPECT_EQ(scaled(1, 1, 3, 3000000), "3000000.000") << "the scaled value would not fit 32 bits";
    EXPECT_EQ(scaled(kMost, kLeast, 9, kMost), "-2147483646.000000000");
}

TEST(NumberText, ReadsNumbers) {
    EXPECT_TRUE(ParseNumber("  -34 ms") == -34 && ParseNumber("+5") == 5 && ParseNumber("BEEF") == 0 && ParseNumber("") == 0);
    EXPECT_TRUE(ParseNumber("-2147483649") == kLeast && ParseNumber("2147483648") == kMost && ParseNumber("9999999999") == kMost);
    EXPECT_TRUE(ParseHex("BEEF") == 0xBEEF && ParseHex("bEEF") == 0 && ParseHex("1G") == 1 && ParseHex("9999999999") == 0x99999999);
}

}  // namespace
}  // namespace kx::test
