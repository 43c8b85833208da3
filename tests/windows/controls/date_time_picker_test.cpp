#include "lib/windows/date_time_picker.h"

#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::DateTime;
using kx::DateTimePicker;

class DateTimePickerTest : public kx::test::ControlTest {};

bool Same(const DateTime& a, const DateTime& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST_F(DateTimePickerTest, GivesBackTheTimeItWasSetTo) {
    DateTimePicker picker(module_, &parent_, 5, 1, 2, 100, 20, false, true);
    const DateTime times[] = {DateTime(2024, 2, 29, 23, 59, 58), DateTime(1999, 12, 31),
                              DateTime(2000, 1, 1, 12, 30, 15)};
    for (const DateTime& time : times) {
        EXPECT_TRUE(picker.SetDateTime(&time));
        DateTime shown = DateTime::None();
        EXPECT_TRUE(picker.GetDateTime(shown));
        EXPECT_TRUE(Same(shown, time)) << time.year;
    }
    const DateTime noTime = DateTime::None();
    const DateTime wrong[] = {noTime, DateTime(2023, 2, 29), DateTime(2023, 13, 1), DateTime(2023, 6, 1, 24)};
    for (const DateTime& time : wrong) {
        picker.SetDateTime(&times[0]);
        EXPECT_FALSE(picker.SetDateTime(&time)) << time.year << " " << int{time.month};
        DateTime shown = DateTime::None();
        EXPECT_TRUE(picker.GetDateTime(shown));
        EXPECT_TRUE(Same(shown, times[0]));
    }
    EXPECT_FALSE(picker.SetDateTime(nullptr));  // it has no box for "none"
}

}  // namespace
