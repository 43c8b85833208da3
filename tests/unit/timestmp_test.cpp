// The time stamp: its arithmetic against the calendar of the standard library, its texts, and reading what was typed.
#include "lib/timestmp.h"

#include <chrono>
#include <random>
#include <stdexcept>

#include "tests/rig/recorded_reports.h"
#include "tests/unit/picture_locale.h"

namespace kx {

bool operator==(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void PrintTo(const DateTime& time, std::ostream* stream) {
    *stream << time.Year() << '-' << time.Month() << '-' << time.Day() << ' ' << time.Hour() << ':' << time.Minute() << ':' << time.Second()
            << '.' << time.Milliseconds();
}

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::chrono::sys_days Days(const DateTime& time) {
    using namespace std::chrono;
    return year(time.Year()) / time.Month() / time.Day();
}

DateTime Date(std::chrono::sys_days days) {
    const std::chrono::year_month_day date(days);
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

TEST(DateTime, EveryDayIsThatOfTheCalendar) {
    const DateTime epoch(1800, 1, 1);
    const DateTime last(2200, 12, 31);
    DateTime stepped = epoch;
    for (auto days = Days(epoch); days <= Days(last); days += std::chrono::days(1)) {
        const DateTime date = Date(days);
        ASSERT_EQ(stepped, date);
        ASSERT_EQ(date.DaysBetween(epoch), (days - Days(epoch)).count()) << testing::PrintToString(date);
        ASSERT_EQ(date.WeekOfYear(), ((days - Days({date.Year(), 1, 1})).count() + 11) / 7) << testing::PrintToString(date);
        DateTime back = date;
        back.AddDays((Days(epoch) - days).count());
        ASSERT_EQ(back, epoch) << testing::PrintToString(date);
        const bool lastOfMonth = Date(days + std::chrono::days(1)).Day() == 1;
        ASSERT_EQ(DateTime::DaysInMonth(date.Month(), date.Year()) == date.Day(), lastOfMonth) << testing::PrintToString(date);
        stepped.AddDays(1);
    }
    EXPECT_EQ(DateTime::DaysInMonth(0, 2013) + DateTime::DaysInMonth(13, 2013), 0);
    EXPECT_EQ(DateTime(1799, 5, 1).DaysBetween(DateTime(1700, 5, 1)), 0) << "years before 1800 do not count";
}

TEST(DateTime, TimesAddUpToTheirDifference) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        const auto any = [&] {
            DateTime time(1801 + below(400), 1 + below(12), 1 + below(28), below(24), below(60), below(60), below(100));
            return time;
        };
        const DateTime a = any(), b = any();
        const std::int64_t ms = (Days(b) - Days(a)).count() * std::int64_t{86400000} +
                                ((b.Hour() - a.Hour()) * 60 + b.Minute() - a.Minute()) * 60000 + (b.Second() - a.Second()) * 1000 +
                                b.Milliseconds() - a.Milliseconds();
        ASSERT_EQ(b.MillisecondsSince(a), ms) << testing::PrintToString(a) << " to " << testing::PrintToString(b);
        ASSERT_EQ(b.Compare(a) > 0, ms > 0) << testing::PrintToString(a) << " to " << testing::PrintToString(b);
        ASSERT_EQ(b.Compare(a) == 0, ms == 0);
        DateTime reached = a;
        reached.AddMilliseconds(ms + (ms < 0 ? -below(10) : below(10)));  // less than the resolution
        ASSERT_EQ(reached, b) << testing::PrintToString(a) << " + " << ms;
        const int months = below(4000) - 2000;
        reached.AddMonths(months);
        ASSERT_EQ(reached.Year() * 12 + reached.Month(), b.Year() * 12 + b.Month() + months) << testing::PrintToString(b) << ' ' << months;
        ASSERT_TRUE(reached.Month() >= 1 && reached.Month() <= 12 && reached.Day() == b.Day());
    }
    const DateTime noon(2013, 11, 5, 12);
    EXPECT_EQ(noon.Compare(noon), 0);
    EXPECT_EQ(DateTime(2113, 11, 5, 12).Compare(noon), 36524) << "in days where they differ";
}

TEST(DateTime, FieldsOutOfRangeGiveSomeTime) {
    DateTime a(2013, 0, 3), b(2013, 0, 1), none = DateTime::None(), absurd(32767, 12, 31);
    EXPECT_EQ(a.DaysBetween(b), 2);
    EXPECT_EQ(a.Month() + b.Month(), 2) << "a month below 1 becomes 1 in the operands";
    EXPECT_EQ(DateTime(2013, 1, 5).DaysBetween(static_cast<const DateTime&>(DateTime(2013, 0, 5))), 0);
    none.AddDays(1);
    EXPECT_EQ(none, DateTime(0, 1, 1));
    absurd.AddDays(std::int64_t{1} << 62);
    absurd.AddMonths(-2147483647);
    EXPECT_TRUE(absurd.Month() >= 1 && absurd.Month() <= 12);
    DateTime date(2013, 11, 30, 23, 59, 58, 99);
    const std::uint8_t inMemory[] = {0xDD, 0x07, 30, 11, 59, 23, 99, 58};
    EXPECT_EQ(std::memcmp(&date, inMemory, sizeof inMemory), 0);
    date.SetDate({1970, 2, 1});
    EXPECT_EQ(date, DateTime(1970, 1, 2));
    EXPECT_FALSE(DateTime(1800, 12, 31).IsValid());
    EXPECT_TRUE(DateTime(1801, 1, 1).IsValid());
}

TEST(DateTime, WritesDurations) {
    const struct {
        std::uint32_t ms;
        const char *minSec, *hourMin, *always;
    } rows[] = {{0, "0:00", "0", "0:00"},
                {3599999, "59:59", "59", "0:59"},
                {3600000, "1:00:00", "1:00", "1:00"},
                {90061000, "25:01:01", "25:01", "25:01"},
                {4294967295u, "1193:02:47", "1193:02", "1193:02"}};
    for (const auto& row : rows) {
        char text[32];
        EXPECT_TRUE(DurationMinSec(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.minSec) << row.ms;
        EXPECT_TRUE(DurationHourMin(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.hourMin) << row.ms;
        EXPECT_TRUE(DurationHourMinAlways(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.always) << row.ms;
    }
    char exact[5] = "keep";
    EXPECT_FALSE(DurationMinSec(3599000, exact, 5));
    EXPECT_STREQ(exact, "keep");
    EXPECT_TRUE(DurationMinSec(599000, exact, 5));
    EXPECT_FALSE(DurationMinSec(0, nullptr, 5));
}

using TextOperation = bool (DateTime::*)(char*, std::size_t, const LocaleFormats&) const;

TEST(DateTime, WritesTextsInTheUsersFormats) {
    const DateTime time(2013, 3, 7, 14, 5, 9, 0);
    const struct {
        TextOperation text;
        const char *italian, *american;
    } rows[] = {{&DateTime::ShortDate, "07/03/2013", "3/7/2013"},
                {&DateTime::LongDate, "7 marzo 2013", "March 7, 2013"},
                {&DateTime::ShortTime, "14:05", "2:05 PM"},
                {&DateTime::LongTime, "14:05:09", "2:05:09 PM"},
                {&DateTime::ShortTimeNoMarker, "14:05", "2:05"},
                {&DateTime::DayName, "Thu", "Thu"},
                {&DateTime::DateAndTime, "07/03/2013, 14:05", "3/7/2013, 2:05 PM"},
                {&DateTime::DateAndTimeNoMarker, "07/03/2013, 14:05", "3/7/2013, 2:05"},
                {&DateTime::DateAndLongTime, "07/03/2013, 14:05:09", "3/7/2013, 2:05:09 PM"},
                {&DateTime::LongDateAndTime, "7 marzo 2013, 14:05:09", "March 7, 2013, 2:05:09 PM"}};
    char text[64] = "before";
    for (const auto& row : rows) {
        EXPECT_TRUE((time.*row.text)(text, sizeof text, Italian()));
        EXPECT_STREQ(text, row.italian);
        EXPECT_TRUE((time.*row.text)(text, sizeof text, American()));
        EXPECT_STREQ(text, row.american);
    }
    PictureLocale joined = American();
    joined.time = "h:mmtt";  // of this one the system would not take the marker off
    EXPECT_TRUE(time.ShortTimeNoMarker(text, sizeof text, joined));
    EXPECT_STREQ(text, "2:05");
}

TEST(DateTime, JoinsOnlyWhatFitsAndCanBeFormatted) {
    const DateTime time(2013, 9, 7, 14, 5, 9);
    PictureLocale locale = Italian();
    char text[64] = "before";
    EXPECT_FALSE(time.DateAndTime(text, 17, locale));  // 10 + 5 + 3 are needed
    EXPECT_STREQ(text, "before");
    EXPECT_TRUE(time.DateAndTime(text, 18, locale));
    EXPECT_STREQ(text, "07/09/2013, 14:05");
    EXPECT_FALSE(time.LongDateAndTime(text, 20, locale));
    EXPECT_STREQ(text, "?");
    EXPECT_FALSE(time.ShortDate(text, 0, locale));
    locale.shortDate = "dd MMMM yyyy";  // "07 settembre 2013" does not fit the 16 characters of a part
    EXPECT_TRUE(time.DateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, ", 14:05");
    EXPECT_FALSE(time.DateAndLongTime(text, sizeof text, locale));
    EXPECT_FALSE(DateTime::None().ShortDate(text, sizeof text, locale));
    EXPECT_STREQ(text, "");
}

TEST(DateTime, WritesTheTimeAfterWithItsDay) {
    const struct {
        DateTime from;
        std::int64_t ms;
        const char *text, *shortText;
    } rows[] = {
        {{2013, 3, 7, 23, 0}, 0, "23:00:00 (1)", "23:00 (1)"},         {{2013, 3, 7, 23, 0}, 4800000, "00:20:00 (2)", "00:20 (2)"},
        {{2013, 2, 28, 12, 0}, 86400000, "12:00:00 (2)", "12:00 (2)"}, {{2013, 12, 31, 12, 0}, 5 * 86400000, "12:00:00 (6)", "12:00 (6)"},
        {{2013, 0, 200, 23, 0}, 0, "23:00:00 (100)", "23:00 (100)"},  // a day that no month has
    };
    char text[32] = "before";
    for (const auto& row : rows) {
        EXPECT_TRUE(row.from.TimeAfter(row.ms, text, sizeof text, Italian()));
        EXPECT_STREQ(text, row.text);
        EXPECT_TRUE(row.from.ShortTimeAfter(row.ms, text, sizeof text, Italian()));
        EXPECT_STREQ(text, row.shortText);
    }
    EXPECT_FALSE(rows[0].from.TimeAfter(0, text, 12, Italian()));
    EXPECT_STREQ(text, "");
}

PictureLocale By(PictureLocale locale, const char* shortDate) {
    locale.shortDate = shortDate;
    return locale;
}

constexpr char kBadCharacter[] = "oem ..\\..\\lib\\timestmp 697 Invalid format character";

TEST(DateTime, ReadsDates) {
    const PictureLocale italian = Italian(), american = American();
    const struct {
        PictureLocale locale;
        const char* text;
        DateTime expected;  // None: refused
        std::vector<std::string> reports = {};
    } rows[] = {{italian, "07/03/2013", {2013, 3, 7}},
                {italian, "7-3-2013", DateTime::None(), {kBadCharacter}},
                {italian, "07/03/2013 and more", {2013, 3, 7}},
                {italian, "07/03", DateTime::None()},
                {italian, "07/13/2013", DateTime::None()},
                {italian, "31/12/2013", {2013, 12, 31}},
                {italian, "32/01/2013", DateTime::None()},
                {italian, "", DateTime::None()},
                {italian, "07/03/99999999999999999999", DateTime::None()},
                {american, "12/31/1999", {1999, 12, 31}},
                {By(american, "dd.MM.yyyy"), "07/03/2013", DateTime::None(), {kBadCharacter}},
                {By(american, "d/M/yy"), "5/11/99", {1999, 11, 5}},
                {By(american, "d/M/y"), "5/11/9", {1909, 11, 5}},
                {By(american, "y/M/d"), "9/11/5", {1909, 11, 5}},
                {By(american, "y/M/d"), "10/11/5", {1910, 11, 5}},
                {By(american, "dd-MMM-yyyy"), "05-nov-2013", {2013, 11, 5}},
                {By(italian, "dd-MMM-yyyy"), "05-DIC-2013", {2013, 12, 5}},
                {By(american, "dd-MMM-yyyy"), "05-no", DateTime::None()},
                {By(French(), "dd MMM yyyy"), "05 mai 2013", {2013, 5, 5}},
                {By(French(), "dd MMM yyyy"), "05 jui 2013", DateTime::None()},
                {By(French(), "d MMMM yyyy"), "7 F\xC9VRIER 2013", {2013, 2, 7}},
                {By(French(), "d MMMM yyyy"), "7 f\xD7vrier 2013", DateTime::None(), {kBadCharacter}},
                {By(american, "MMMM d, yyyy"), "Wednesday 7, 2013", DateTime::None(), {kBadCharacter}},
                {By(american, "MMMMM d, yyyy"), "May 7, 2013", DateTime::None(), {"oem ..\\..\\lib\\timestmp 655 Unexpected M format"}},
                {By(american, "dddd, M/d/yyyy"), ", 3/7/2013", {2013, 3, 7}},
                {By(american, "yyyyyM/d"), "3/7", DateTime::None()},
                {By(american, "yyyyMMdd"), "20130307", DateTime::None()}};
    for (const auto& row : rows) {
        RecordedReports reports;
        DateTime time(1999, 1, 1, 1, 1, 1, 1);
        EXPECT_EQ(time.SetShortDate(row.text, reports, row.locale), row.expected.IsValid()) << row.text << " by " << row.locale.shortDate;
        EXPECT_EQ(time, row.expected) << row.text << " by " << row.locale.shortDate;
        EXPECT_EQ(reports.Take(), row.reports) << row.text << " by " << row.locale.shortDate;
    }
}

TEST(DateTime, ReadsTimes) {
    const struct {
        const char *format, *text;
        const char* expected = "23:58:57";  // unchanged
    } rows[] = {{"HH:mm:ss", "14:05:09", "14:05:09"},
                {"HH:mm:ss", "14:05", "14:05:00"},
                {"HH:mm:ss", "23:59:59", "23:59:59"},
                {"HH:mm:ss", "14:05:09x"},
                {"HH:mm:ss", "24:00:00"},
                {"HH:mm:ss", "14:60:00"},
                {"HH:mm:ss", "14:00:60"},
                {"HH:mm:ss", ""},
                {"HH.mm.ss", "14.05.09", "14:05:09"},
                {"H:m:s", "4:5:9", "04:05:09"},
                {"H:m:s", "0:0:0", "00:00:00"},
                {"h:mm:ss tt", "2:05:09 PM", "14:05:09"},
                {"h:mm:ss tt", "2:05:09 pm", "14:05:09"},
                {"h:mm:ss tt", "2:05:09 AM", "02:05:09"},
                {"h:mm:ss tt", "12:00:00 PM", "12:00:00"},
                {"h:mm:ss tt", "12:00:00 AM", "12:00:00"},
                {"h:mm:ss tt", "2:05 PM", "14:05:00"},
                {"h:mm:ss tt", "13:05:09 PM"},
                {"h:mm:sst", "2:05:09p", "14:05:09"},
                {"HH:mm:ss", "02:05:09 PM", "14:05:09"},
                {"HH:mm:ss", "02:05:09 AM", "02:05:09"},
                {"HH:mm:ss", "02:05:09 pm"}};
    for (const auto& row : rows) {
        PictureLocale locale = American();
        locale.time = row.format;
        RecordedReports reports;
        DateTime time(2013, 3, 7, 23, 58, 57, 56);
        EXPECT_TRUE(time.SetShortTime(row.text, reports, locale)) << row.text;
        char text[32];
        ASSERT_TRUE(time.LongTime(text, sizeof text, Italian())) << row.text << " by " << row.format;
        EXPECT_STREQ(text, row.expected) << row.text << " by " << row.format;
        EXPECT_TRUE(time.hundredths == 56 && time.DaysBetween(DateTime(2013, 3, 7)) == 0) << row.text;
        EXPECT_THAT(reports.Take(), IsEmpty()) << row.text;
    }
}

struct ThrowingLocale final : LocaleFormats {
    bool DateText(const KxDateTime&, DateStyle, char*, std::size_t) const override { return false; }
    bool TimeText(const KxDateTime&, TimeStyle, char*, std::size_t) const override { return false; }
    bool ShortDateFormat(char*, std::size_t) const override { throw std::runtime_error("date"); }
    bool TimeFormat(char*, std::size_t) const override { throw std::runtime_error("time"); }
    bool MonthName(int, MonthNameStyle, char*, std::size_t) const override { return false; }
};

TEST(DateTime, ReportsALocaleThatCannotBeRead) {
    PictureLocale none = Italian();
    none.broken = true;
    RecordedReports reports;
    DateTime time(2013, 3, 7);
    EXPECT_FALSE(time.SetShortTime("10:00", reports, none));
    EXPECT_FALSE(time.SetShortTime("10:00", reports, ThrowingLocale()));
    EXPECT_FALSE(time.SetShortTime(nullptr, reports, none));
    EXPECT_EQ(time, DateTime(2013, 3, 7));
    EXPECT_FALSE(time.SetShortDate("07/03/2013", reports, none));
    EXPECT_EQ(time, DateTime::None());
    EXPECT_FALSE(time.SetShortDate("07/03/2013", reports, ThrowingLocale()));
    EXPECT_FALSE(time.SetShortDate(nullptr, reports, none));
    EXPECT_THAT(reports.Take(), ElementsAre("oem ..\\..\\lib\\timestmp 743 GetTimeLocaleFormat", "exception DateTime::SetShortTime",
                                            "oem ..\\..\\lib\\timestmp 612 GetDateLocaleFormat", "exception DateTime::SetShortDate"));
}

}  // namespace
}  // namespace test
}  // namespace kx
