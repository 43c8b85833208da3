// Typed dates and times, read by the formats of several locales.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "lib/timestmp.h"
#include "tests/unit/collected_reports.h"
#include "tests/unit/picture_locale.h"

namespace kx {
namespace {

using test::CollectedReports;
using test::PictureLocale;

bool Same(const KxDateTime& a, const KxDateTime& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

PictureLocale With(PictureLocale locale, const char* shortDate) {
    locale.shortDate = shortDate;
    return locale;
}

TEST(DateTime, ReadsDates) {
    const struct {
        PictureLocale locale;
        const char* text;
        DateTime expected;  // None: refused
        const char* report;
    } rows[] = {
        {test::Italian(), "07/03/2013", {2013, 3, 7}, ""},
        {test::Italian(), "7-3-2013", DateTime::None(), "Invalid format character"},
        {test::Italian(), "07/03/2013 and more", {2013, 3, 7}, ""},
        {test::Italian(), "07/03", DateTime::None(), ""},
        {test::Italian(), "07/13/2013", DateTime::None(), ""},
        {test::Italian(), "32/01/2013", DateTime::None(), ""},
        {test::Italian(), "", DateTime::None(), ""},
        {test::Italian(), "07/03/99999999999999999999", DateTime::None(), ""},
        {test::American(), "12/31/1999", {1999, 12, 31}, ""},
        {test::German(), "07.03.2013", {2013, 3, 7}, ""},
        {test::German(), "07/03/2013", DateTime::None(), "Invalid format character"},
        {With(test::American(), "d/M/yy"), "5/11/99", {1999, 11, 5}, ""},
        {With(test::American(), "d/M/yy"), "5/11/05", {1905, 11, 5}, ""},
        {With(test::American(), "d/M/y"), "5/11/9", {1909, 11, 5}, ""},
        {With(test::American(), "y/M/d"), "9/11/5", {1909, 11, 5}, ""},
        {With(test::American(), "dd-MMM-yyyy"), "05-nov-2013", {2013, 11, 5}, ""},
        {With(test::Italian(), "dd-MMM-yyyy"), "05-DIC-2013", {2013, 12, 5}, ""},
        {With(test::American(), "dd-MMM-yyyy"), "05-no", DateTime::None(), ""},
        {With(test::French(), "dd MMM yyyy"), "05 mai 2013", {2013, 5, 5}, ""},
        {With(test::French(), "dd MMM yyyy"), "05 jui 2013", DateTime::None(), ""},
        {With(test::German(), "d. MMMM yyyy"), "7. M\xC4RZ 2013", {2013, 3, 7}, ""},
        {With(test::American(), "MMMM d, yyyy"), "may 7, 2013", {2013, 5, 7}, ""},
        {With(test::American(), "MMMM d, yyyy"), "Wednesday 7, 2013", DateTime::None(),
         "Invalid format character"},
        {With(test::American(), "MMMMM d, yyyy"), "May 7, 2013", DateTime::None(), "Unexpected M format"},
        {With(test::American(), "dddd, M/d/yyyy"), ", 3/7/2013", {2013, 3, 7}, ""},
        {With(test::American(), "yyyyyM/d"), "3/7", DateTime::None(), ""},
        {With(test::American(), "yyyyMMdd"), "20130307", DateTime::None(), ""},
    };
    for (const auto& row : rows) {
        CollectedReports reports;
        DateTime time(1999, 1, 1, 1, 1, 1, 1);
        const bool read = time.SetShortDate(row.text, reports, row.locale);
        EXPECT_EQ(read, row.expected.IsValid()) << row.text << " by " << row.locale.shortDate;
        EXPECT_TRUE(Same(time, row.expected)) << row.text << " by " << row.locale.shortDate;
        const std::string report = row.report[0] ? std::string("..\\..\\lib\\timestmp: ") + row.report : "";
        EXPECT_EQ(reports.Only(), report) << row.text << " by " << row.locale.shortDate;
    }
}

PictureLocale WithTime(const char* format) {
    PictureLocale locale = test::American();
    locale.time = format;
    return locale;
}

TEST(DateTime, ReadsTimes) {
    const struct {
        const char* format;
        const char* text;
        const char* expected;  // "": unchanged
    } rows[] = {
        {"HH:mm:ss", "14:05:09", "14:05:09"},
        {"HH:mm:ss", "14:05", "14:05:00"},
        {"HH:mm:ss", "14:05:09x", ""},
        {"HH:mm:ss", "24:00:00", ""},
        {"HH:mm:ss", "14:60:00", ""},
        {"HH:mm:ss", "", ""},
        {"HH.mm.ss", "14.05.09", "14:05:09"},
        {"H:m:s", "4:5:9", "04:05:09"},
        {"H:m:s", "0:0:0", "00:00:00"},
        {"h:mm:ss tt", "2:05:09 PM", "14:05:09"},
        {"h:mm:ss tt", "2:05:09 pm", "14:05:09"},
        {"h:mm:ss tt", "2:05:09 AM", "02:05:09"},
        {"h:mm:ss tt", "12:00:00 PM", "12:00:00"},
        {"h:mm:ss tt", "12:00:00 AM", "12:00:00"},
        {"h:mm:ss tt", "2:05 PM", "14:05:00"},
        {"h:mm:ss tt", "13:05:09 PM", ""},
        {"h:mm:sst", "2:05:09p", "14:05:09"},
        {"HH:mm:ss", "02:05:09 PM", "14:05:09"},
        {"HH:mm:ss", "02:05:09 AM", "02:05:09"},
        {"HH:mm:ss", "02:05:09 pm", ""},
    };
    for (const auto& row : rows) {
        CollectedReports reports;
        DateTime time(2013, 3, 7, 23, 58, 57, 56);
        EXPECT_TRUE(time.SetShortTime(row.text, reports, WithTime(row.format))) << row.text;
        char text[32];
        ASSERT_TRUE(time.LongTime(text, sizeof text, test::Italian())) << row.text << " by " << row.format;
        EXPECT_STREQ(text, row.expected[0] ? row.expected : "23:58:57") << row.text << " by " << row.format;
        EXPECT_EQ(time.hundredths, 56) << row.text;
        EXPECT_EQ(time.DaysBetween(DateTime(2013, 3, 7)), 0) << row.text;
        EXPECT_EQ(reports.Only(), "") << row.text;
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
    PictureLocale none = test::Italian();
    none.broken = true;
    CollectedReports reports;
    DateTime time(2013, 3, 7);
    EXPECT_FALSE(time.SetShortTime("10:00", reports, none));
    EXPECT_FALSE(time.SetShortTime("10:00", reports, ThrowingLocale()));
    EXPECT_FALSE(time.SetShortTime(nullptr, reports, none));
    EXPECT_TRUE(Same(time, DateTime(2013, 3, 7)));
    EXPECT_FALSE(time.SetShortDate("07/03/2013", reports, none));
    EXPECT_TRUE(Same(time, DateTime::None()));
    EXPECT_FALSE(time.SetShortDate("07/03/2013", reports, ThrowingLocale()));
    EXPECT_FALSE(time.SetShortDate(nullptr, reports, none));
    EXPECT_EQ(reports.texts, (std::vector<std::string>{
                                 "..\\..\\lib\\timestmp: GetTimeLocaleFormat", "DateTime::SetShortTime",
                                 "..\\..\\lib\\timestmp: GetDateLocaleFormat", "DateTime::SetShortDate"}));
}

}  // namespace
}  // namespace kx
