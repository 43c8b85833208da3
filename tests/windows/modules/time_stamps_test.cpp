// The time stamps over the system's own formatting. The user's formats are set for the length of a test and put back, so this
// program must not run beside others.
#include <gtest/gtest.h>
#include <windows.h>

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
        EXPECT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, type, format)) << format;
    }
    ~ChangedFormat() { SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, before_); }
    ChangedFormat(const ChangedFormat&) = delete;
    ChangedFormat& operator=(const ChangedFormat&) = delete;

  private:
    LCTYPE type_;
    char before_[256] = "";
};

std::string Text(const DateTime& time, bool (DateTime::*operation)(char*, std::size_t, const LocaleFormats&) const) {
    char buffer[80] = "before";
    const bool produced = (time.*operation)(buffer, sizeof buffer, UserLocale());
    return produced ? buffer : "(none)";
}

TEST(DateTimeOnWindows, FormatsByTheUsersLocaleAndReadsThatBack) {
    const DateTime first(2013, 11, 5, 14, 5, 9);
    const struct {
        const char *date, *time;
        const char *shortDate, *longTime, *dateAndTime;
    } rows[] = {
        {"dd/MM/yyyy", "HH:mm:ss", "05/11/2013", "14:05:09", "05/11/2013, 14:05"},
        {"M/d/yyyy", "h:mm:ss tt", "11/5/2013", "2:05:09 PM", "11/5/2013, 2:05 PM"},
        {"dd.MM.yyyy", "HH:mm:ss", "05.11.2013", "14:05:09", "05.11.2013, 14:05"},
        {"dd-MMM-yyyy", "HH.mm.ss", "05-Nov-2013", "14.05.09", "05-Nov-2013, 14.05"},
    };
    for (const auto& row : rows) {
        const ChangedFormat date(LOCALE_SSHORTDATE, row.date), clock(LOCALE_STIMEFORMAT, row.time);
        EXPECT_EQ(Text(first, &DateTime::ShortDate), row.shortDate);
        EXPECT_EQ(Text(first, &DateTime::LongTime), row.longTime);
        EXPECT_EQ(Text(first, &DateTime::DateAndTime), row.dateAndTime);
        for (const DateTime& time : {first, DateTime(1999, 12, 31, 1, 0, 0), DateTime(1824, 2, 29, 23, 59, 59)}) {
            RecordedReports reports;
            DateTime read = DateTime::None();
            EXPECT_TRUE(read.SetShortDate(Text(time, &DateTime::ShortDate).c_str(), reports));
            EXPECT_TRUE(read.SetShortTime(Text(time, &DateTime::LongTime).c_str(), reports));
            EXPECT_EQ(read.MillisecondsSince(time), 0) << Text(time, &DateTime::LongTime) << " by " << row.date;
            EXPECT_THAT(reports.Take(), testing::IsEmpty());
        }
    }
    const ChangedFormat date(LOCALE_SLONGDATE, "d MMMM yyyy");
    EXPECT_EQ(Text(first, &DateTime::LongDate), "5 November 2013");
    EXPECT_EQ(Text(DateTime(2013, 2, 30), &DateTime::ShortDate), "(none)");
    EXPECT_EQ(Text(DateTime(2013, 1, 1, 25), &DateTime::ShortTime), "(none)");
}

}  // namespace
}  // namespace kx::test
