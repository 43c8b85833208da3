// Numbers as the dialogs show and read them.
#include "lib/number_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

template <class... Arguments>
std::string Text(void (*format)(char*, std::size_t, Arguments...), Arguments... arguments) {
    char buffer[352];
    format(buffer, sizeof buffer, arguments...);
    return buffer;
}

TEST(NumberText, Integers) {
    EXPECT_EQ(Text(kx::FormatNumber, std::int32_t{-12}), "-12");
    EXPECT_EQ(Text(kx::FormatNumber, kLeast), "-2147483648");
    EXPECT_EQ(Text(kx::FormatUnsigned, std::uint32_t{4294967295}), "4294967295");
    EXPECT_EQ(Text(kx::FormatHex, std::uint32_t{0xBEEF}), "BEEF");
    EXPECT_EQ(Text(kx::FormatTenths, std::uint32_t{127}), "12.7");
    EXPECT_EQ(Text(kx::FormatTenths, std::uint32_t{9}), "0.9");
}

TEST(NumberText, FixedPoint) {
    const struct {
        double value;
        int decimals;
        const char* text;
    } rows[] = {
        {1.25, 1, "1.2"}, {7, 0, "  7"}, {-0.5, 2, "-0.50"}, {2, -3, "  2"}, {0.5, 99, "0.500000000000000"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Text(kx::FormatFixed, row.value, row.decimals), row.text)
            << row.value << ", " << row.decimals;
    }
}

TEST(NumberText, ScaledNumbers) {
    const struct {
        std::int32_t multiplier;
        std::int32_t divisor;
        int decimals;
        std::int32_t value;
        const char* text;
    } rows[] = {
        {1, 1000, 2, 1234, "1.23"},
        {1, 1000, 2, 1235, "1.24"},  // halves away from zero
        {1, 1000, 3, 7, "0.007"},
        {1, 1000, 1, 1950, "2.0"},  // the carry reaches the whole part
        {254, 10000, 0, 6900, "175"},
        {254, 10000, 1, 6900, "175.3"},
        {1, 1000, 2, -1234, "-1.23"},
        {-1, 1000, 2, -1234, "1.23"},
        {1, 1000, 2, -4, "0.00"},
        {1, 0, 2, 5, "..."},
        {1, 0, 0, 5, "..."},
        {kMost, 1, 0, 2, "..."},
        {1, 1, 3, 3000000, "3000000.000"},  // the scaled value would not fit 32 bits
        {1, 1, 9, kMost, "2147483647.000000000"},
        {kMost, kLeast, 9, kMost, "-2147483646.000000000"},
        {1, 10, 40, 1, "0.100000000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Text(kx::FormatScaled, row.multiplier, row.divisor, row.decimals, row.value), row.text)
            << row.value << " * " << row.multiplier << " / " << row.divisor << ", " << row.decimals;
    }
}

TEST(NumberText, Durations) {
    const struct {
        std::uint32_t milliseconds;
        const char* text;
    } rows[] = {{3723000, "1:02:03"}, {83000, "1:23"},    {0, "0:00"},
                {999, "0:00"},        {3599999, "59:59"}, {3600000, "1:00:00"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Text(kx::FormatDuration, row.milliseconds), row.text) << row.milliseconds;
    }
}

TEST(NumberText, IsCutToItsBuffer) {
    char buffer[4] = {'x', 'x', 'x', 'x'};
    kx::FormatNumber(buffer, 3, -1234);
    EXPECT_EQ(std::string(buffer), "-1");
    EXPECT_EQ(buffer[3], 'x');
}

TEST(NumberText, ReadsNumbers) {
    const struct {
        const char* text;
        std::int32_t number;
        std::uint32_t hex;
    } rows[] = {
        {"", 0, 0},
        {"12", 12, 0x12},
        {"  -34 ms", -34, 0},
        {"+5", 5, 0},
        {"1.9", 1, 1},
        {"BEEF", 0, 0xBEEF},
        {"bEEF", 0, 0},
        {"1G", 1, 1},
        {"9999999999", kMost, 0x99999999},
        {"-", 0, 0},
        {"-9999999999", kLeast, 0},
        {"-2147483648", kLeast, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kx::ParseNumber(row.text), row.number) << '"' << row.text << '"';
        EXPECT_EQ(kx::ParseHex(row.text), row.hex) << '"' << row.text << '"';
    }
}

}  // namespace
