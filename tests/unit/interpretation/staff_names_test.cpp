// The display names of reviewers and physicians.
#include "dialogs/interpretation/staff_names.h"

#include <span>

namespace kx::test {
namespace {

TEST(StaffNames, AppendThePiecesThatFit) {
    PhysicianRecord physician{};
    std::strcpy(physician.firstName, "Anna");
    std::strcpy(physician.initial, "M.");
    std::strcpy(physician.lastName, "Nicol\xF2");
    std::strcpy(physician.title, "D");
    TechnicianRecord technician{};
    std::memcpy(&technician, &physician, sizeof technician);  // the fields of both stand alike
    const std::string pieces[] = {"", "Anna", "Anna M.", "Anna M. Nicol\xF2", "Anna M. Nicol\xF2, D"};
    for (std::size_t size = 1; size < 24; ++size) {
        const auto fitting = [size](std::span<const std::string> some) {
            return *std::find_if(some.rbegin(), some.rend(), [size](const std::string& piece) { return piece.size() < size; });
        };
        const auto shown = [size](const auto& record) {
            std::vector<char> name(size, '?');  // of the heap, so that a sanitizer sees a byte too many
            const std::size_t length = DisplayName(record, name.data(), size);
            return std::string(name.data(), length + 1);
        };
        EXPECT_EQ(shown(technician), fitting(std::span(pieces).first(4)) + '\0') << size;
        EXPECT_EQ(shown(physician), fitting(pieces) + '\0') << size;
    }
    physician.initial[0] = physician.title[0] = '\0';
    EXPECT_EQ(DisplayName(physician, std::vector<char>(64).data(), 64), 12u) << "an empty piece has its blank, an empty title nothing";
}

TEST(StaffNames, EndWithTheirFields) {
    PhysicianRecord physician{};
    TechnicianRecord technician{};
    EXPECT_TRUE(IsNameless(physician) && IsNameless(technician));
    std::memset(&physician, 'x', sizeof physician);
    std::memset(&technician, 'x', sizeof technician);
    EXPECT_FALSE(IsNameless(physician) || IsNameless(technician));
    char name[1024];
    EXPECT_EQ(DisplayName(physician, name, sizeof name), 32u + 1 + 4 + 1 + 32 + 2 + 580);
    EXPECT_EQ(DisplayName(technician, name, sizeof name), 32u + 1 + 4 + 1 + 32);
}

}  // namespace
}  // namespace kx::test
