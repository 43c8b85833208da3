// The display names of reviewers and physicians.
#include "dialogs/interpretation/staff_names.h"

#include <span>

namespace kx::test {
namespace {

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
