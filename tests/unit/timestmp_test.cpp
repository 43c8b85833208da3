#include "lib/timestmp.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/unit/picture_locale.h"

namespace kx {

bool operator==(const KxDateTime& a, const KxDateTime& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void PrintTo(const DateTime& time, std::ostream* stream) {
    *stream << time.Year() << '-' << time.Month() << '-' << time.Day() << ' ' << time.Hour() << ':'
            << time.Minute() << ':' << time.Second() << '.' << time.Milliseconds();
}

namespace {

using test::PictureLocale;

TEST(DateTime, LiesInMemoryAsRecordsHoldIt) {
    const DateTime time(2013, 11, 30, 23, 59, 58, 99);
    const std::uint8_t expected[] = {0xDD, 0x07, 30, 11, 59, 23, 99, 58};
    EXPECT_EQ(std::memcmp(&time, expected, sizeof expected), 0);
    DateTime date = time;
    date.SetDate({1970, 2, 1});
    EXPECT_EQ(date, DateTime(1970, 1, 2));
    EXPECT_EQ(time.Milliseconds(), 990);
}

TEST(DateTime, CountsDaysBetweenDates) {
    const struct {
        DateTime later;
        DateTime earlier;
        int days;
    } rows[] = {
        {{2012, 3, 1}, {2012, 2, 28}, 2},  {{2013, 1, 1}, {2012, 1, 1}, 366},
        {{1900, 3, 1}, {1900, 2, 28}, 1},  {{2024, 12, 31}, {1800, 1, 1}, 82179},
        {{2013, 2, 28}, {2013, 3, 1}, -1}, {{2013, 1, 5}, {2013, 0, 5}, 0},
        {{1799, 5, 1}, {1700, 5, 1}, 0},  // years before 1800 do not count
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.later.DaysBetween(row.earlier), row.days)
            << testing::PrintToString(row.later) << " and " << testing::PrintToString(row.earlier);
    }
}

TEST(DateTime, AMonthBelowOneBecomesOneInTheOperands) {
    DateTime a(2013, 0, 3);
    DateTime b(2013, 0, 1);
    EXPECT_EQ(a.DaysBetween(b), 2);
    EXPECT_EQ(a.Month(), 1);
    EXPECT_EQ(b.Month(), 1);
}

TEST(DateTime, ComparesAndMeasures) {
    const DateTime noon(2013, 11, 5, 12, 0, 0, 0);
    const struct {
        DateTime time;
        int order;
        std::int64_t ms;
    } rows[] = {
        {{2013, 11, 5, 12, 0, 0, 0}, 0, 0},          {{2013, 11, 5, 12, 0, 0, 1}, 1, 10},
        {{2013, 11, 5, 11, 59, 59, 99}, -1, -10},    {{2013, 11, 6, 0, 0, 0, 0}, 1, 43200000},
        {{2013, 11, 4, 23, 0, 0, 0}, -1, -46800000}, {{2113, 11, 5, 12, 0, 0, 0}, 36524, 3155673600000},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.time.Compare(noon), row.order) << testing::PrintToString(row.time);
        EXPECT_EQ(row.time.MillisecondsSince(noon), row.ms) << testing::PrintToString(row.time);
    }
}

TEST(DateTime, AddsTimes) {
    const struct {
        DateTime from;
        std::int64_t ms;
        DateTime to;
    } rows[] = {
        {{2013, 12, 31, 23}, 90000000, {2014, 1, 2, 0}},
        {{2013, 12, 31, 23, 59, 59, 99}, 10, {2014, 1, 1}},
        {{2012, 2, 28, 23, 30}, 3600000, {2012, 2, 29, 0, 30}},
        {{2013, 5, 5, 10, 20, 30, 40}, 9, {2013, 5, 5, 10, 20, 30, 40}},
        {{2014, 1, 1}, -10, {2013, 12, 31, 23, 59, 59, 99}},
        {{2000, 1, 1}, std::int64_t{146097} * 86400000, {2400, 1, 1}},
        {DateTime::None(), 86400000, {0, 1, 1}},
    };
    for (const auto& row : rows) {
        DateTime time = row.from;
        time.AddMilliseconds(row.ms);
        EXPECT_EQ(time, row.to) << testing::PrintToString(row.from) << " + " << row.ms << " ms gave "
                                << testing::PrintToString(time);
    }
}

TEST(DateTime, AddsDaysAndMonths) {
    const struct {
        DateTime from;
        int days;
        int months;
        DateTime to;
    } rows[] = {
        {{2012, 2, 28}, 1, 0, {2012, 2, 29}},  {{2013, 3, 1}, -1, 0, {2013, 2, 28}},
        {{2013, 1, 1}, -1, 0, {2012, 12, 31}}, {{2013, 1, 1}, 365, 0, {2014, 1, 1}},
        {{2013, 12, 15}, 0, 1, {2014, 1, 15}}, {{2013, 1, 15}, 0, -1, {2012, 12, 15}},
        {{2013, 6, 1}, 0, 31, {2016, 1, 1}},   {{2013, 1, 31}, 0, 1, {2013, 2, 31}},
    };
    for (const auto& row : rows) {
        DateTime time = row.from;
        time.AddDays(row.days);
        time.AddMonths(row.months);
        EXPECT_EQ(time, row.to) << testing::PrintToString(row.from) << " + " << row.days << " d "
                                << row.months << " m";
    }
    DateTime absurd(32767, 12, 31);
    absurd.AddDays(std::int64_t{1} << 62);
    absurd.AddMonths(-2147483647);
    EXPECT_GE(absurd.Month(), 1);
    EXPECT_LE(absurd.Month(), 12);
}

TEST(DateTime, KnowsMonthsAndWeeks) {
    EXPECT_EQ(DateTime::DaysInMonth(2, 2012), 29);
    EXPECT_EQ(DateTime::DaysInMonth(2, 1900), 28);
    EXPECT_EQ(DateTime::DaysInMonth(0, 2013), 0);
    EXPECT_EQ(DateTime::DaysInMonth(13, 2013), 0);
    EXPECT_EQ(DateTime(2013, 1, 1).WeekOfYear(), 1);
    EXPECT_EQ(DateTime(2013, 1, 3).WeekOfYear(), 1);
    EXPECT_EQ(DateTime(2013, 1, 4).WeekOfYear(), 2);
    EXPECT_EQ(DateTime(2012, 12, 31).WeekOfYear(), 53);
}

TEST(DateTime, WritesDurations) {
    const struct {
        std::uint32_t ms;
        const char* minSec;
        const char* hourMin;
        const char* always;
    } rows[] = {
        {0, "0:00", "0", "0:00"},
        {3599000, "59:59", "59", "0:59"},
        {3600000, "1:00:00", "1:00", "1:00"},
        {90061000, "25:01:01", "25:01", "25:01"},
        {4294967295u, "1193:02:47", "1193:02", "1193:02"},
    };
    for (const auto& row : rows) {
        char text[32];
        ASSERT_TRUE(DurationMinSec(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.minSec) << row.ms;
        ASSERT_TRUE(DurationHourMin(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.hourMin) << row.ms;
        ASSERT_TRUE(DurationHourMinAlways(row.ms, text, sizeof text));
        EXPECT_STREQ(text, row.always) << row.ms;
    }
    char exact[5] = "keep";
    EXPECT_FALSE(DurationMinSec(3599000, exact, 5));
    EXPECT_STREQ(exact, "keep");
    EXPECT_TRUE(DurationMinSec(599000, exact, 5));
    EXPECT_STREQ(exact, "9:59");
    EXPECT_FALSE(DurationMinSec(0, nullptr, 5));
    EXPECT_FALSE(DurationHourMin(0, exact, 0));
}

using TextOperation = bool (DateTime::*)(char*, std::size_t, const LocaleFormats&) const;

TEST(DateTime, WritesTextsInTheUsersFormats) {
    const DateTime time(2013, 3, 7, 14, 5, 9, 0);
    const struct {
        const char* what;
        TextOperation text;
        const char* italian;
        const char* american;
        const char* german;
    } rows[] = {
        {"ShortDate", &DateTime::ShortDate, "07/03/2013", "3/7/2013", "07.03.2013"},
        {"LongDate", &DateTime::LongDate, "7 marzo 2013", "March 7, 2013", "7. M\xE4rz 2013"},
        {"ShortTime", &DateTime::ShortTime, "14:05", "2:05 PM", "14:05"},
        {"LongTime", &DateTime::LongTime, "14:05:09", "2:05:09 PM", "14:05:09"},
        {"NoMarker", &DateTime::ShortTimeNoMarker, "14:05", "2:05", "14:05"},
        {"DayName", &DateTime::DayName, "Thu", "Thu", "Thu"},
        {"DateAndTime", &DateTime::DateAndTime, "07/03/2013, 14:05", "3/7/2013, 2:05 PM",
         "07.03.2013, 14:05"},
        {"DateAndTimeNoMarker", &DateTime::DateAndTimeNoMarker, "07/03/2013, 14:05", "3/7/2013, 2:05",
         "07.03.2013, 14:05"},
        {"DateAndLongTime", &DateTime::DateAndLongTime, "07/03/2013, 14:05:09", "3/7/2013, 2:05:09 PM",
         "07.03.2013, 14:05:09"},
        {"LongDateAndTime", &DateTime::LongDateAndTime, "7 marzo 2013, 14:05:09", "March 7, 2013, 2:05:09 PM",
         "7. M\xE4rz 2013, 14:05:09"},
    };
    for (const auto& row : rows) {
        const struct {
            PictureLocale locale;
            const char* expected;
        } locales[] = {
            {test::Italian(), row.italian}, {test::American(), row.american}, {test::German(), row.german}};
        for (const auto& [locale, expected] : locales) {
            char text[64] = "before";
            EXPECT_TRUE((time.*row.text)(text, sizeof text, locale)) << row.what;
            EXPECT_STREQ(text, expected) << row.what << " by " << locale.shortDate;
        }
    }
}

// The system's own formatting without marker is trusted no further than its text.
TEST(DateTime, CutsAMarkerThatIsLeft) {
    PictureLocale locale = test::American();
    locale.time = "h:mmtt";  // the test's locale takes a marker off behind a blank only
    char text[16];
    EXPECT_TRUE(DateTime(2013, 3, 7, 9, 30).ShortTimeNoMarker(text, sizeof text, locale));
    EXPECT_STREQ(text, "9:30");
}

TEST(DateTime, JoinsOnlyWhatFits) {
    const DateTime time(2013, 3, 7, 14, 5, 9);
    const PictureLocale locale = test::Italian();
    char text[20] = "before";
    EXPECT_FALSE(time.DateAndTime(text, 17, locale));  // 10 + 5 + 3 are needed
    EXPECT_STREQ(text, "before");
    EXPECT_TRUE(time.DateAndTime(text, 18, locale));
    EXPECT_STREQ(text, "07/03/2013, 14:05");
    EXPECT_FALSE(time.LongDateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, "?");
    EXPECT_FALSE(time.ShortDate(text, 0, locale));
}

TEST(DateTime, APartThatCannotBeFormatted) {
    PictureLocale locale = test::Italian();
    locale.shortDate = "dd MMMM yyyy";  // "07 settembre 2013" does not fit the 16 characters of a part
    const DateTime time(2013, 9, 7, 14, 5, 9);
    char text[64] = "before";
    EXPECT_TRUE(time.DateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, ", 14:05");
    EXPECT_FALSE(time.DateAndLongTime(text, sizeof text, locale));
    EXPECT_FALSE(DateTime::None().LongDateAndTime(text, sizeof text, locale));
    EXPECT_STREQ(text, "?");
    EXPECT_FALSE(DateTime::None().ShortDate(text, sizeof text, locale));
    EXPECT_STREQ(text, "");
}

TEST(DateTime, WritesTheTimeAfterWithItsDay) {
    const struct {
        DateTime from;
        std::int64_t ms;
        const char* text;
        const char* shortText;
    } rows[] = {
        {{2013, 3, 7, 23, 0}, 0, "23:00:00 (1)", "23:00 (1)"},
        {{2013, 3, 7, 23, 0}, 4800000, "00:20:00 (2)", "00:20 (2)"},
        {{2013, 2, 28, 12, 0}, 86400000, "12:00:00 (2)", "12:00 (2)"},
        {{2013, 12, 31, 12, 0}, 5 * 86400000, "12:00:00 (6)", "12:00 (6)"},
    };
    for (const auto& row : rows) {
        char text[32];
        EXPECT_TRUE(row.from.TimeAfter(row.ms, text, sizeof text, test::Italian()));
        EXPECT_STREQ(text, row.text);
        EXPECT_TRUE(row.from.ShortTimeAfter(row.ms, text, sizeof text, test::Italian()));
        EXPECT_STREQ(text, row.shortText);
    }
    char tight[12] = "before";
    EXPECT_FALSE(DateTime(2013, 3, 7, 23, 0).TimeAfter(0, tight, sizeof tight, test::Italian()));
    EXPECT_STREQ(tight, "");
    // A day that no month has is counted to the limit and no further.
    char text[32];
    EXPECT_TRUE(DateTime(2013, 0, 200, 23, 0).TimeAfter(0, text, sizeof text, test::Italian()));
}

}  // namespace
}  // namespace kx
