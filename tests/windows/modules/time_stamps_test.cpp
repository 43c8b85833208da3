// The time stamps over the system's own formatting. The user's formats are set for the length of a test and put back, so this
// program must not run beside others.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "lib/timestmp.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

// One of the user's formats, changed until the end of the scope.
class ChangedFormat {
  public:
    ChangedFormat(LCTYPE type, const char* format) : type_(type) {
        GetLocaleInfoA(LOCALE_USER_DEFAULT, type, before_, sizeof before_);
        changed_ = SetLocaleInfoA(LOCALE_USER_DEFAULT, type, format) != FALSE;
    }
    ~ChangedFormat() { SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, before_); }
    ChangedFormat(const ChangedFormat&) = delete;
    ChangedFormat& operator=(const ChangedFormat&) = delete;
    bool Changed() const { return changed_; }

  private:
    LCTYPE type_;
    char before_[256] = "";
    bool changed_ = false;
};

using TextOperation = bool (DateTime::*)(char*, std::size_t, const LocaleFormats&) const;

std::string Text(const DateTime& time, TextOperation operation) {
    char buffer[80] = "before";
    const bool produced = (time.*operation)(buffer, sizeof buffer, UserLocale());
    return produced ? buffer : "(none)";
}

struct Formats {
    const char* date;
    const char* time;
};

constexpr Formats kItalian = {"dd/MM/yyyy", "HH:mm:ss"};
constexpr Formats kAmerican = {"M/d/yyyy", "h:mm:ss tt"};
constexpr Formats kGerman = {"dd.MM.yyyy", "HH:mm:ss"};
constexpr Formats kNamedMonth = {"dd-MMM-yyyy", "HH.mm.ss"};

TEST(DateTimeOnWindows, FormatsByTheUsersLocale) {
    const DateTime time(2013, 11, 5, 14, 5, 9);
    const struct {
        Formats formats;
        const char* shortDate;
        const char* longTime;
        const char* dateAndTime;
        const char* noMarker;
    } rows[] = {
        {kItalian, "05/11/2013", "14:05:09", "05/11/2013, 14:05", "14:05"},
        {kAmerican, "11/5/2013", "2:05:09 PM", "11/5/2013, 2:05 PM", "2:05"},
        {kGerman, "05.11.2013", "14:05:09", "05.11.2013, 14:05", "14:05"},
        {kNamedMonth, "05-Nov-2013", "14.05.09", "05-Nov-2013, 14.05", "14.05"},
    };
    for (const auto& row : rows) {
        const ChangedFormat date(LOCALE_SSHORTDATE, row.formats.date);
        const ChangedFormat clock(LOCALE_STIMEFORMAT, row.formats.time);
        ASSERT_TRUE(date.Changed() && clock.Changed()) << row.formats.date;
        EXPECT_EQ(Text(time, &DateTime::ShortDate), row.shortDate) << row.formats.date;
        EXPECT_EQ(Text(time, &DateTime::LongTime), row.longTime) << row.formats.time;
        EXPECT_EQ(Text(time, &DateTime::DateAndTime), row.dateAndTime) << row.formats.date;
        std::string noMarker = Text(time, &DateTime::ShortTimeNoMarker);
        noMarker.erase(noMarker.find_last_not_of(' ') + 1);
        EXPECT_EQ(noMarker, row.noMarker) << row.formats.time;
    }
}

// What the system writes the parsers read back.
TEST(DateTimeOnWindows, ReadsBackWhatItWrites) {
    const DateTime times[] = {{2013, 3, 7, 14, 5, 9}, {1999, 12, 31, 0, 0, 0}, {1824, 2, 29, 23, 59, 59}, {2004, 5, 17, 9, 30, 1}};
    for (const Formats& formats : {kItalian, kAmerican, kGerman, kNamedMonth}) {
        const ChangedFormat date(LOCALE_SSHORTDATE, formats.date);
        const ChangedFormat clock(LOCALE_STIMEFORMAT, formats.time);
        for (const DateTime& time : times) {
            RecordedReports reports;
            DateTime read = DateTime::None();
            const std::string dateText = Text(time, &DateTime::ShortDate);
            const std::string timeText = Text(time, &DateTime::LongTime);
            EXPECT_TRUE(read.SetShortDate(dateText.c_str(), reports)) << dateText;
            EXPECT_TRUE(read.SetShortTime(timeText.c_str(), reports)) << timeText;
            // Midnight in twelve hours reads 12: the text does not tell it from noon by its marker.
            const bool midnight = time.Hour() == 0 && formats.time == kAmerican.time;
            const DateTime expected = midnight ? DateTime(time.Year(), time.Month(), time.Day(), 12) : time;
            EXPECT_EQ(read.MillisecondsSince(expected), 0) << dateText << ' ' << timeText << " by " << formats.date;
            EXPECT_THAT(reports.Take(), testing::IsEmpty()) << dateText;
        }
    }
}

TEST(DateTimeOnWindows, LongTextsAndDayNames) {
    const ChangedFormat date(LOCALE_SLONGDATE, "d MMMM yyyy");
    const ChangedFormat clock(LOCALE_STIMEFORMAT, "HH:mm:ss");
    const DateTime time(2013, 3, 7, 23, 5, 9);
    EXPECT_EQ(Text(time, &DateTime::LongDate), "7 March 2013");
    EXPECT_EQ(Text(time, &DateTime::LongDateAndTime), "7 March 2013, 23:05:09");
    EXPECT_EQ(Text(time, &DateTime::DayName), "Thu");
    char text[32];
    EXPECT_TRUE(time.TimeAfter(3600000, text, sizeof text));
    EXPECT_STREQ(text, "00:05:09 (2)");
}

TEST(DateTimeOnWindows, ATimeThatDoesNotExistHasNoText) {
    for (const DateTime& time : {DateTime::None(), DateTime(2013, 13, 1), DateTime(2013, 2, 30)}) {
        EXPECT_EQ(Text(time, &DateTime::ShortDate), "(none)");
    }
    EXPECT_EQ(Text(DateTime(2013, 1, 1, 25), &DateTime::ShortTime), "(none)");
    char text[4] = "abc";
    EXPECT_FALSE(DateTime(2013, 3, 7).ShortDate(text, sizeof text));
    EXPECT_STREQ(text, "");
}

TEST(DateTimeOnWindows, ConvertsTheSystemsTimes) {
    SYSTEMTIME system{};
    system.wYear = 2013;
    system.wMonth = 11;
    system.wDay = 5;
    system.wDayOfWeek = 2;
    system.wHour = 14;
    system.wMinute = 5;
    system.wSecond = 9;
    system.wMilliseconds = 678;
    DateTime time = DateTime::None();
    time.SetFromSystemTime(system);
    EXPECT_EQ(time.Milliseconds(), 670);
    SYSTEMTIME back;
    std::memset(&back, 0xFF, sizeof back);
    time.ToSystemTime(back);
    system.wDayOfWeek = 0;
    system.wMilliseconds = 670;
    EXPECT_EQ(std::memcmp(&back, &system, sizeof back), 0);

    FILETIME file{};
    ASSERT_TRUE(SystemTimeToFileTime(&system, &file));
    DateTime fromFile = DateTime::None();
    fromFile.SetFromFileTime(file);
    EXPECT_EQ(fromFile.MillisecondsSince(time), 0);
}

TEST(DateTimeOnWindows, IsNowWhenMade) {
    SYSTEMTIME before;
    GetLocalTime(&before);
    const DateTime now;
    DateTime earliest = DateTime::None();
    earliest.SetFromSystemTime(before);
    EXPECT_GE(now.MillisecondsSince(earliest), 0);
    EXPECT_LT(now.MillisecondsSince(earliest), 10000);
}

}  // namespace
}  // namespace kx::test
