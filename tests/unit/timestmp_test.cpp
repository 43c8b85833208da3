// The time stamp: its arithmetic against the calendar of the standard library, its texts, and reading what was typed.
#include "lib/timestmp.h"

#include <bit>
#include <chrono>
#include <random>

#include "tests/rig/recorded_reports.h"
#include "tests/unit/picture_locale.h"

namespace kx {

bool operator==(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// h:mm:ss tt
PictureLocale American() {
    return {"M/d/yyyy", "MMMM d, yyyy", "h:mm:ss tt",
            "January February March April May June July August September October November December",
            "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec"};
}

std::chrono::sys_days Days(const DateTime& time) {
    using namespace std::chrono;
    return year(time.Year()) / time.Month() / time.Day();
}

TEST(DateTime, EveryDayIsThatOfTheCalendar) {
    const DateTime epoch(1800, 1, 1), last(2200, 12, 31);
    DateTime date = epoch;
    for (auto days = Days(epoch); days <= Days(last); days += std::chrono::days(1)) {
        const auto count = (days - Days(epoch)).count();
        ASSERT_EQ(Days(date), days);
        ASSERT_EQ(date.DaysBetween(epoch), count);
        ASSERT_EQ(date.WeekOfYear(), ((days - Days({date.Year(), 1, 1})).count() + 11) / 7) << count;
        if (count % 97 == 0) {
            DateTime back = date;
            back.AddDays(-count);
            ASSERT_EQ(back, epoch) << count;
        }
        const DateTime today = date;
        date.AddDays(1);
        ASSERT_EQ(DateTime::DaysInMonth(today.Month(), today.Year()) == today.Day(), date.Day() == 1) << count;
    }
    EXPECT_EQ(DateTime::DaysInMonth(0, 2013) + DateTime::DaysInMonth(13, 2013), 0);
    EXPECT_EQ(DateTime(1799, 5, 1).DaysBetween(DateTime(1700, 5, 1)), 0) << "years before 1800 do not count";
}

TEST(DateTime, TimesAddUpToTheirDifference) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        const auto any = [&] {
            return DateTime(1801 + below(400), 1 + below(12), 1 + below(28), below(24), below(60), below(60), below(100));
        };
        const DateTime a = any(), b = any();
        const std::int64_t ms = (Days(b) - Days(a)).count() * std::int64_t{86400000} +
                                ((b.Hour() - a.Hour()) * 60 + b.Minute() - a.Minute()) * 60000 + (b.Second() - a.Second()) * 1000 +
                                b.Milliseconds() - a.Milliseconds();
        ASSERT_EQ(b.MillisecondsSince(a), ms) << "round " << i;
        ASSERT_TRUE((b.Compare(a) > 0) == (ms > 0) && (b.Compare(a) == 0) == (ms == 0)) << "round " << i;
        DateTime reached = a;
        reached.AddMilliseconds(ms + (ms < 0 ? -below(10) : below(10)));  // less than the resolution
        ASSERT_EQ(reached, b) << "round " << i;
        const int months = below(4000) - 2000;
        reached.AddMonths(months);
        ASSERT_EQ(reached.Year() * 12 + reached.Month(), b.Year() * 12 + b.Month() + months) << "round " << i;
        ASSERT_TRUE(reached.Month() >= 1 && reached.Month() <= 12 && reached.Day() == b.Day());
        DateTime wild = std::bit_cast<KxDateTime>(std::uint64_t{random()});  // any stamp moves to a time that exists
        wild.AddMilliseconds(static_cast<std::int64_t>(random()));
        ASSERT_TRUE(wild.month >= 1 && wild.month <= 12 && wild.day >= 1 && wild.day <= 31) << "round " << i;
        ASSERT_TRUE(wild.hour <= 23 && wild.minute <= 59 && wild.second <= 59) << "round " << i;
        wild.AddMonths(static_cast<std::int32_t>(random()));
        ASSERT_TRUE(wild.month >= 1 && wild.month <= 12) << "round " << i;
    }
    EXPECT_EQ(DateTime(2113, 11, 5, 12).Compare(DateTime(2013, 11, 5, 12)), 36524) << "in days where they differ";
}

TEST(DateTime, WritesDurations) {
    const auto durations = [](std::uint32_t ms) {
        char minSec[32], hourMin[32], always[32];
        EXPECT_TRUE(DurationMinSec(ms, minSec, 32) && DurationHourMin(ms, hourMin, 32) && DurationHourMinAlways(ms, always, 32));
        return std::string(minSec) + " " + hourMin + " " + always;
    };
    EXPECT_EQ(durations(3599999), "59:59 59 0:59");
    EXPECT_EQ(durations(3600000), "1:00:00 1:00 1:00");
    EXPECT_EQ(durations(4294967295u), "1193:02:47 1193:02 1193:02");
    char exact[5] = "keep";
    EXPECT_FALSE(DurationMinSec(3599000, exact, 5) || DurationMinSec(0, nullptr, 5));
    EXPECT_STREQ(exact, "keep");
    EXPECT_TRUE(DurationMinSec(599000, exact, 5));
}

TEST(DateTime, JoinsTextsInTheUsersFormats) {
    const DateTime time(2013, 3, 7, 14, 5, 9, 0);
    PictureLocale locale = American();
    char text[64] = "before";
    EXPECT_TRUE(time.LongDateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, "March 7, 2013, 2:05:09 PM");
    EXPECT_TRUE(time.DateAndTimeNoMarker(text, sizeof text, locale));
    EXPECT_STREQ(text, "3/7/2013, 2:05");
    locale = Italian();
    EXPECT_FALSE(time.DateAndTime(text, 17, locale));  // 10 + 5 + 3 are needed
    EXPECT_TRUE(time.DateAndTime(text, 18, locale));
    EXPECT_STREQ(text, "07/03/2013, 14:05");
    locale.shortDate = "dd MMMM yyyy MMMM";  // does not fit the 16 characters of a part
    EXPECT_TRUE(time.DateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, ", 14:05");
    EXPECT_FALSE(time.DateAndLongTime(text, sizeof text, locale) || DateTime::None().ShortDate(text, sizeof text, locale));
    EXPECT_STREQ(text, "");
}

TEST(DateTime, WritesTheTimeAfterWithItsDay) {
    const auto after = [](const DateTime& from, std::int64_t ms) {
        char text[32], shortText[32];
        EXPECT_TRUE(from.TimeAfter(ms, text, 32, Italian()) && from.ShortTimeAfter(ms, shortText, 32, Italian()));
        return std::string(text) + ", " + shortText;
    };
    EXPECT_EQ(after({2013, 3, 7, 23, 0}, 4800000), "00:20:00 (2), 00:20 (2)");
    EXPECT_EQ(after({2013, 12, 31, 12, 0}, 5 * 86400000), "12:00:00 (6), 12:00 (6)");
    EXPECT_EQ(after({2013, 0, 200, 23, 0}, 0), "23:00:00 (100), 23:00 (100)") << "a day that no month has";
    char text[12] = "before";
    EXPECT_TRUE(!DateTime(2013, 3, 7, 23).TimeAfter(0, text, 12, Italian()) && text == std::string());
}

constexpr char kBadCharacter[] = "oem ..\\..\\lib\\timestmp 697 Invalid format character";

TEST(DateTime, ReadsDates) {
    const struct {
        PictureLocale (*locale)();
        const char *shortDate, *text;
        DateTime expected;  // None: refused
        std::vector<std::string> reports = {};
    } rows[] = {{Italian, "dd/MM/yyyy", "07/03/2013 and more", {2013, 3, 7}},
                {Italian, "dd/MM/yyyy", "7-3-2013", DateTime::None(), {kBadCharacter}},
                {Italian, "dd/MM/yyyy", "07/13/2013", DateTime::None()},
                {Italian, "dd/MM/yyyy", "31/12/2013", {2013, 12, 31}},
                {American, "y/M/d", "9/11/5", {1909, 11, 5}},
                {American, "y/M/d", "10/11/5", {1910, 11, 5}},
                {Italian, "dd-MMM-yyyy", "05-DIC-2013", {2013, 12, 5}},
                {American, "MMMM d, yyyy", "march 7, 2013", {2013, 3, 7}},
                {American, "MMMM d, yyyy", "Wednesday 7, 2013", DateTime::None(), {kBadCharacter}},
                {American, "MMMMM d, yyyy", "May 7, 2013", DateTime::None(), {"oem ..\\..\\lib\\timestmp 655 Unexpected M format"}},
                {American, "dddd, M/d/yyyy", ", 3/7/2013", {2013, 3, 7}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " by " + row.shortDate);
        PictureLocale locale = row.locale();
        locale.shortDate = row.shortDate;
        RecordedReports reports;
        DateTime time(1999, 1, 1, 1, 1, 1, 1);
        EXPECT_EQ(time.SetShortDate(row.text, reports, locale), row.expected.IsValid());
        EXPECT_EQ(time, row.expected);
        EXPECT_EQ(reports.Take(), row.reports);
    }
}

TEST(DateTime, ReadsTimes) {
    const struct {
        const char *format, *text;
        DateTime expected = {2013, 3, 7, 23, 58, 57, 56};  // unchanged
    } rows[] = {{"HH:mm:ss", "23:59", {2013, 3, 7, 23, 59, 0, 56}},
                {"HH:mm:ss", "14:05:09x"},
                {"HH:mm:ss", "24:00:00"},
                {"H.m.s", "0.5.59", {2013, 3, 7, 0, 5, 59, 56}},
                {"h:mm:ss tt", "2:05:09 pm", {2013, 3, 7, 14, 5, 9, 56}},
                {"h:mm:ss tt", "12:00:00 AM", {2013, 3, 7, 12, 0, 0, 56}},
                {"h:mm:ss tt", "13:05:09 PM"},
                {"h:mm:sst", "2:05:09p", {2013, 3, 7, 14, 5, 9, 56}},
                {"HH:mm:ss", "02:05:09 AM", {2013, 3, 7, 2, 5, 9, 56}},
                {"HH:mm:ss", "02:05:09 pm"}};
    for (const auto& row : rows) {
        PictureLocale locale = American();
        locale.time = row.format;
        RecordedReports reports;
        DateTime time(2013, 3, 7, 23, 58, 57, 56);
        EXPECT_TRUE(time.SetShortTime(row.text, reports, locale)) << row.text;
        EXPECT_EQ(time, row.expected) << row.text << " by " << row.format;
        EXPECT_THAT(reports.Take(), IsEmpty()) << row.text;
    }
}

}  // namespace
}  // namespace test
}  // namespace kx
