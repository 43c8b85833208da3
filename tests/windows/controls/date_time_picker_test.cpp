#include "lib/windows/date_time_picker.h"

#include <commctrl.h>

#include "lib/windows/common_controls.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::DateTime;
using kx::DateTimePicker;

class DateTimePickerTest : public kx::test::ControlTest {};

bool Same(const DateTime& a, const DateTime& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST_F(DateTimePickerTest, IsCreatedForTimeOrDate) {
    const DateTimePicker time(module_, &parent_, 5, 1, 2, 100, 20, true, false);
    const DateTimePicker date(module_, &parent_, 6, 1, 32, 100, 20, false, true);
    EXPECT_EQ(kx::test::ClassOf(time.Handle()), "SysDateTimePick32");
    EXPECT_EQ(kx::test::StyleOf(time.Handle()), 0x50010009u);
    EXPECT_EQ(kx::test::StyleOf(date.Handle()), 0x50010000u);
    EXPECT_EQ(GetDlgCtrlID(time.Handle()), 5);
    const DateTimePicker both(module_, &parent_, 7, 0, 0, 100, 20, true, true);
    const DateTimePicker neither(module_, &parent_, 8, 0, 0, 100, 20, false, false);
    EXPECT_EQ(both.Handle(), nullptr);
    EXPECT_EQ(neither.Handle(), nullptr);
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

TEST_F(DateTimePickerTest, ShowsNoTimeWhereThatIsAllowed) {
    ASSERT_TRUE(kx::UseCommonControls());
    NewItem(DATETIMEPICK_CLASSA, DTS_SHOWNONE, 33834);
    DateTimePicker picker(&parent_, 33834);
    ASSERT_NE(picker.Handle(), nullptr);
    EXPECT_TRUE(picker.SetDateTime(nullptr));
    DateTime shown(1901, 1, 1);
    EXPECT_FALSE(picker.GetDateTime(shown));
    EXPECT_EQ(shown.year, 1901);
    const DateTime time(2020, 5, 6);
    EXPECT_TRUE(picker.SetDateTime(&time));
    EXPECT_TRUE(picker.GetDateTime(shown));
    EXPECT_TRUE(Same(shown, time));
}

TEST_F(DateTimePickerTest, TellsItsChange) {
    const DateTimePicker picker(module_, &parent_, 5, 1, 2, 100, 20, false, true);
    NMHDR header{picker.Handle(), 5, DTN_DATETIMECHANGE};
    EXPECT_TRUE(picker.IsDateTimeChange(5, &header));
    EXPECT_FALSE(picker.IsDateTimeChange(6, &header));
    EXPECT_FALSE(picker.IsDateTimeChange(5, nullptr));
    header.code = DTN_CLOSEUP;
    EXPECT_FALSE(picker.IsDateTimeChange(5, &header));
    EXPECT_EQ(static_cast<int>(DTN_DATETIMECHANGE), -759);
}

TEST_F(DateTimePickerTest, EndsItsControl) {
    HWND window = nullptr;
    {
        const DateTimePicker picker(module_, &parent_, 5, 1, 2, 100, 20, true, false);
        window = picker.Handle();
    }
    EXPECT_FALSE(IsWindow(window));
    DateTimePicker missing(&parent_, 5);
    DateTime shown(1901, 1, 1);
    EXPECT_FALSE(missing.GetDateTime(shown));
    EXPECT_FALSE(missing.SetDateTime(&shown));
    EXPECT_FALSE(missing.SetDateTime(nullptr));
    EXPECT_EQ(shown.year, 1901);
}

}  // namespace
