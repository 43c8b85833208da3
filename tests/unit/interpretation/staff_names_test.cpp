// The display names of reviewers and physicians.
#include "dialogs/interpretation/staff_names.h"

namespace kx::test {
namespace {

TEST(StaffNames, AppendWhatFits) {
    const struct {
        const char *first, *initial, *last, *title;
        std::size_t size;
        const char *technician, *physician;
    } rows[] = {{"Anna", "M.", "Nicol\xF2", "Cardiologa", 256, "Anna M. Nicol\xF2", "Anna M. Nicol\xF2, Cardiologa"},
                {"Anna", "M.", "Rossi", "", 256, "Anna M. Rossi", "Anna M. Rossi"},
                {"Anna", "", "Rossi", "", 256, "Anna  Rossi", "Anna  Rossi"},  // an empty piece has its blank
                {"", "", "Rossi", "", 256, "  Rossi", "  Rossi"},
                {"Anna", "M.", "Rossi", "Dr.", 19, "Anna M. Rossi", "Anna M. Rossi, Dr."},
                {"Anna", "M.", "Rossi", "Dr.", 18, "Anna M. Rossi", "Anna M. Rossi"},
                {"Anna", "M.", "Rossi", "Dr.", 14, "Anna M. Rossi", "Anna M. Rossi"},
                // The last name does not fit; a title that would is not put behind a name without it.
                {"Anna", "M.", "Rossi", "D", 13, "Anna M.", "Anna M."},
                {"Anna", "M.", "Rossi", "", 5, "Anna", "Anna"},
                {"Anna", "M.", "Rossi", "", 4, "", ""},
                {"Anna", "M.", "Rossi", "", 1, "", ""}};
    for (const auto& row : rows) {
        PhysicianRecord physician{};
        std::strcpy(physician.firstName, row.first);
        std::strcpy(physician.initial, row.initial);
        std::strcpy(physician.lastName, row.last);
        std::strcpy(physician.title, row.title);
        TechnicianRecord technician{};
        std::memcpy(&technician, &physician, sizeof technician);  // the fields of both stand alike
        std::vector<char> name(row.size, '?');                    // of the heap, so that a sanitizer sees a byte too many
        EXPECT_EQ(DisplayName(technician, name.data(), name.size()), std::strlen(row.technician)) << row.size;
        EXPECT_STREQ(name.data(), row.technician) << row.size;
        EXPECT_EQ(DisplayName(physician, name.data(), name.size()), std::strlen(row.physician)) << row.size;
        EXPECT_STREQ(name.data(), row.physician) << row.size;
        EXPECT_EQ(DisplayName(technician, nullptr, 10) + DisplayName(technician, name.data(), 0), 0u);
        EXPECT_FALSE(IsNameless(physician) || IsNameless(technician));
    }
}

TEST(StaffNames, EndWithTheirFields) {
    PhysicianRecord physician{};
    TechnicianRecord technician{};
    EXPECT_TRUE(IsNameless(physician) && IsNameless(technician));
    physician.title[0] = technician.initial[0] = 'D';
    EXPECT_FALSE(IsNameless(physician) || IsNameless(technician));
    std::memset(&physician, 'x', sizeof physician);
    std::memset(&technician, 'x', sizeof technician);
    char name[1024];
    EXPECT_EQ(DisplayName(physician, name, sizeof name), 32u + 1 + 4 + 1 + 32 + 2 + 580);
    EXPECT_EQ(DisplayName(physician, name, 512), 32u + 1 + 4 + 1 + 32) << "the title does not fit";
    EXPECT_EQ(DisplayName(technician, name, sizeof name), 32u + 1 + 4 + 1 + 32);
}

}  // namespace
}  // namespace kx::test
