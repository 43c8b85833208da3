#include "lib/pick_list.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using Choices = std::vector<std::pair<int, std::string>>;

Choices Read(std::string_view list) {
    Choices choices;
    kx::PickList reader(list);
    kx::PickListItem item;
    while (reader.Next(item)) {
        choices.emplace_back(item.Code(), item.text);
    }
    return choices;
}

TEST(PickList, ReadsPairsOfCodeAndText) {
    const struct {
        const char* list;
        Choices choices;
    } rows[] = {
        {"0^...^1^Uomo^2^Donna", {{0, "..."}, {1, "Uomo"}, {2, "Donna"}}},
        {"0^No BRF^50^50 Hz^60^60 Hz", {{0, "No BRF"}, {50, "50 Hz"}, {60, "60 Hz"}}},
        {"", {}},
        {"7", {}},
        {"7^", {{7, ""}}},
        {"^", {{0, ""}}},
        {"1^Uomo^2", {{1, "Uomo"}}},
        {"1^^2^Donna", {{1, ""}, {2, "Donna"}}},
        {"x^a^-12^b^ 5^c^6mm^d", {{0, "a"}, {-12, "b"}, {5, "c"}, {6, "d"}}},
        {"99999999999^a^-99999999999^b",
         {{std::numeric_limits<int>::max(), "a"}, {std::numeric_limits<int>::min(), "b"}}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Read(row.list), row.choices) << row.list;
    }
}

TEST(PickList, FindsTextByDigitOfCode) {
    const struct {
        const char* list;
        int code;
        const char* text;  // "?": left as it was
    } rows[] = {
        {"0^...^1^Uomo^2^Donna", 2, "Donna"},
        {"0^...^1^Uomo^2^Donna", 3, "?"},
        {"12^twelve^2^two", 1, "twelve"},  // only the first character counts
        {"A^letter^1^digit", 17, "letter"},
        {"^none^1^digit", 0, "none"},
        {"1^Uomo^1^again", 1, "Uomo"},
        {"2", 2, "?"},
        {"", 0, "?"},
    };
    for (const auto& row : rows) {
        std::string_view text = "?";
        const bool found = kx::FindByDigitCode(row.list, row.code, text);
        EXPECT_EQ(text, row.text) << row.list << " code " << row.code;
        EXPECT_EQ(found, text != "?") << row.list << " code " << row.code;
    }
}

TEST(ListPieces, GivesPiecesByPlace) {
    const char* states = "Original^Overread^Confirmed";
    EXPECT_EQ(kx::ListPiece(states, 0), "Original");
    EXPECT_EQ(kx::ListPiece(states, 2), "Confirmed");
    EXPECT_EQ(kx::ListPiece(states, 3), "");
    EXPECT_EQ(kx::ListPiece("", 0), "");
    EXPECT_EQ(kx::ListPiece("a^^c^", 1), "");
    EXPECT_EQ(kx::ListPiece("a^^c^", 2), "c");

    kx::ListPieces pieces("a^");
    std::string_view piece;
    EXPECT_TRUE(pieces.Next(piece));
    EXPECT_TRUE(pieces.Next(piece));
    EXPECT_EQ(piece, "");
    EXPECT_FALSE(pieces.Next(piece));
}

}  // namespace
