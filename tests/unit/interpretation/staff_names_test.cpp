// The display names of reviewers and physicians.
#include "dialogs/interpretation/staff_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using kx::DisplayName;
using kx::PhysicianRecord;
using kx::TechnicianRecord;

template <std::size_t kSize>
void Fill(char (&field)[kSize], const std::string& text) {
    std::memcpy(field, text.data(), std::min(text.size(), kSize));
}

struct Row {
    const char* first;
    const char* initial;
    const char* last;
    const char* title;
    std::size_t size;
    const char* technician;
    const char* physician;
};

TEST(StaffNames, AppendWhatFits) {
    const Row rows[] = {
        {"Anna", "M.", "Nicol\xF2", "Cardiologa", 256, "Anna M. Nicol\xF2", "Anna M. Nicol\xF2, Cardiologa"},
        {"Anna", "M.", "Rossi", "", 256, "Anna M. Rossi", "Anna M. Rossi"},
        // An empty piece has its blank.
        {"Anna", "", "Rossi", "", 256, "Anna  Rossi", "Anna  Rossi"},
        {"", "", "Rossi", "", 256, "  Rossi", "  Rossi"},
        {"Anna", "M.", "Rossi", "Dr.", 19, "Anna M. Rossi", "Anna M. Rossi, Dr."},
        {"Anna", "M.", "Rossi", "Dr.", 18, "Anna M. Rossi", "Anna M. Rossi"},
        {"Anna", "M.", "Rossi", "Dr.", 14, "Anna M. Rossi", "Anna M. Rossi"},
        // The last name does not fit; a title that would is not put behind a name without it.
        {"Anna", "M.", "Rossi", "D", 13, "Anna M.", "Anna M."},
        {"Anna", "M.", "Rossi", "", 5, "Anna", "Anna"},
        {"Anna", "M.", "Rossi", "", 4, "", ""},
        {"Anna", "M.", "Rossi", "", 1, "", ""},
        {"Anna", "M.", "Rossi", "Direttrice della Cardiologia e Riabilitazione", 256, "Anna M. Rossi",
         "Anna M. Rossi, Direttrice della Cardiologia e Riabilitazione"},
    };
    for (const Row& row : rows) {
        PhysicianRecord physician{};
        Fill(physician.firstName, row.first);
        Fill(physician.initial, row.initial);
        Fill(physician.lastName, row.last);
        Fill(physician.title, row.title);
        TechnicianRecord technician{};
        std::memcpy(&technician, &physician, sizeof technician);  // the fields of both stand alike
        // Of the heap, so that a sanitizer sees a byte too many.
        std::vector<char> name(row.size, '?');
        EXPECT_EQ(DisplayName(technician, name.data(), name.size()), std::strlen(row.technician)) << row.size;
        EXPECT_STREQ(name.data(), row.technician) << row.size;
        EXPECT_EQ(DisplayName(physician, name.data(), name.size()), std::strlen(row.physician)) << row.size;
        EXPECT_STREQ(name.data(), row.physician) << row.size;
    }
}

TEST(StaffNames, EndWithTheirFields) {
    const auto physician = std::make_unique<PhysicianRecord>();
    std::memset(physician.get(), 'x', sizeof *physician);
    char name[1024];
    EXPECT_EQ(DisplayName(*physician, name, sizeof name), 32u + 1 + 4 + 1 + 32 + 2 + 580);
    EXPECT_EQ(DisplayName(*physician, name, 512), 32u + 1 + 4 + 1 + 32) << "the title does not fit";
    const auto technician = std::make_unique<TechnicianRecord>();
    std::memset(technician.get(), 'x', sizeof *technician);
    EXPECT_EQ(DisplayName(*technician, name, sizeof name), 32u + 1 + 4 + 1 + 32);
}

TEST(StaffNames, NeedABuffer) {
    const TechnicianRecord technician{};
    char name = '?';
    EXPECT_EQ(DisplayName(technician, nullptr, 10), 0u);
    EXPECT_EQ(DisplayName(technician, &name, 0), 0u);
    EXPECT_EQ(name, '?');
}

TEST(StaffNames, KnowTheNameless) {
    PhysicianRecord physician{};
    EXPECT_TRUE(kx::IsNameless(physician));
    physician.title[0] = 'D';
    EXPECT_FALSE(kx::IsNameless(physician));
    TechnicianRecord technician{};
    EXPECT_TRUE(kx::IsNameless(technician));
    technician.initial[0] = 'M';
    EXPECT_FALSE(kx::IsNameless(technician));
}

}  // namespace
