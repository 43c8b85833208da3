// Numbers as the dialogs show and read them, and the lists of codes and texts.
#include "lib/number_text.h"

#include <limits>

#include "lib/pick_list.h"

namespace kx::test {
namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

template <class... Arguments>
std::string Text(void (*format)(char*, std::size_t, Arguments...), Arguments... arguments) {
    char buffer[352];
    format(buffer, sizeof buffer, arguments...);
    return buffer;
}

TEST(NumberText, WritesNumbers) {
    EXPECT_EQ(Text(FormatNumber, kLeast), "-2147483648");
    EXPECT_EQ(Text(FormatUnsigned, std::uint32_t{4294967295}), "4294967295");
    EXPECT_EQ(Text(FormatHex, std::uint32_t{0xBEEF}), "BEEF");
    EXPECT_EQ(Text(FormatTenths, std::uint32_t{127}), "12.7");
    EXPECT_EQ(Text(FormatTenths, std::uint32_t{9}), "0.9");
    EXPECT_EQ(Text(FormatFixed, 1.25, 1), "1.2");
    EXPECT_EQ(Text(FormatFixed, 2.0, -3), "  2");
    EXPECT_EQ(Text(FormatFixed, 0.5, 99), "0.500000000000000");
    char buffer[4] = {'x', 'x', 'x', 'x'};
    FormatNumber(buffer, 3, -1234);
    EXPECT_EQ(std::string(buffer) + buffer[3], "-1x") << "cut to its buffer";
}

TEST(NumberText, WritesScaledNumbers) {
    const struct {
        std::int32_t multiplier, divisor;
        int decimals;
        std::int32_t value;
        const char* text;
    } rows[] = {{1, 1000, 2, 1234, "1.23"},
                {1, 1000, 2, 1235, "1.24"},  // halves away from zero
                {1, 1000, 3, 7, "0.007"},
                {1, 1000, 1, 1950, "2.0"},  // the carry reaches the whole part
                {254, 10000, 0, 6900, "175"},
                {-1, 1000, 2, -1234, "1.23"},
                {1, 1000, 2, -1234, "-1.23"},
                {1, 1000, 2, -4, "0.00"},
                {1, 0, 2, 5, "..."},
                {kMost, 1, 0, 2, "..."},
                {1, 1, 3, 3000000, "3000000.000"},  // the scaled value would not fit 32 bits
                {1, 1, 9, kMost, "2147483647.000000000"},
                {kMost, kLeast, 9, kMost, "-2147483646.000000000"},
                {1, 10, 40, 1, "0.100000000"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Text(FormatScaled, row.multiplier, row.divisor, row.decimals, row.value), row.text)
            << row.value << " * " << row.multiplier << " / " << row.divisor << ", " << row.decimals;
    }
}

TEST(NumberText, ReadsNumbers) {
    const struct {
        const char* text;
        std::int32_t number;
        std::uint32_t hex;
    } rows[] = {{"", 0, 0},
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
                {"2147483648", kMost, 0x47483648}};
    for (const auto& row : rows) {
        EXPECT_EQ(ParseNumber(row.text), row.number) << row.text;
        EXPECT_EQ(ParseHex(row.text), row.hex) << row.text;
    }
}

TEST(PickList, ReadsPairsOfCodeAndText) {
    const struct {
        const char *list, *choices;
    } rows[] = {{"0^...^1^Uomo^2^Donna", "0=... 1=Uomo 2=Donna "},
                {"", ""},
                {"7", ""},
                {"7^", "7= "},
                {"^", "0= "},
                {"1^Uomo^2", "1=Uomo "},
                {"x^a^-12^b^ 5^c^6mm^d", "0=a -12=b 5=c 6=d "},
                {"99999999999^a^-99999999999^b", "2147483647=a -2147483648=b "}};
    for (const auto& row : rows) {
        std::string choices;
        PickList reader(row.list);
        for (PickListItem item; reader.Next(item);) {
            choices.append(std::to_string(item.Code())).append("=").append(item.text).append(" ");
        }
        EXPECT_EQ(choices, row.choices) << row.list;
    }
}

TEST(PickList, FindsTextByDigitOfCode) {
    const struct {
        const char* list;
        int code;
        const char* text;  // "?": left as it was
    } rows[] = {{"0^...^1^Uomo^2^Donna", 2, "Donna"},
                {"0^...^1^Uomo^2^Donna", 3, "?"},
                {"12^twelve^2^two", 1, "twelve"},  // only the first character counts
                {"A^letter^1^digit", 17, "letter"},
                {"^none^1^digit", 0, "none"},
                {"1^Uomo^1^again", 1, "Uomo"},
                {"2", 2, "?"},
                {"", 0, "?"}};
    for (const auto& row : rows) {
        std::string_view text = "?";
        EXPECT_EQ(FindByDigitCode(row.list, row.code, text), std::string_view(row.text) != "?") << row.list << " code " << row.code;
        EXPECT_EQ(text, row.text) << row.list << " code " << row.code;
    }
}

}  // namespace
}  // namespace kx::test
