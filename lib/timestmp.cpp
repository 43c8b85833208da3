#include "lib/timestmp.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

namespace kx {

namespace {

constexpr int kFirstCountedYear = 1800;
constexpr std::int64_t kDaysIn400Years = 146097;
constexpr int kDaysBeforeMonth[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

// Leap years from year 1 to the year given.
constexpr int LeapYearsUpTo(int year) {
    return year / 4 - year / 100 + year / 400;
}

std::int32_t DaysSince1800(const KxDateTime& time) {
    const int year = time.year;
    const int month = std::clamp<int>(time.month, 1, 13);
    std::int32_t days = time.day + kDaysBeforeMonth[month - 1];
    if (year > kFirstCountedYear) {
        days +=
            (year - kFirstCountedYear) * 365 + LeapYearsUpTo(year - 1) - LeapYearsUpTo(kFirstCountedYear - 1);
    }
    if (DateTime::IsLeapYear(year) && month > 2) {
        ++days;
    }
    return days;
}

void LetMonthBegin(KxDateTime& time) {
    time.month = std::max<std::uint8_t>(time.month, 1);
}

// Keeps the remainder in the field and returns what is carried; the remainder is never negative.
std::int64_t Carry(std::int64_t value, int unitsOfNext, std::uint8_t& field) {
    std::int64_t carried = value / unitsOfNext;
    std::int64_t rest = value % unitsOfNext;
    if (rest < 0) {
        rest += unitsOfNext;
        --carried;
    }
    field = static_cast<std::uint8_t>(rest);
    return carried;
}

std::int16_t AsYear(std::int64_t year) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(year, Limits::min(), Limits::max()));
}

// Steps a month of 1 to 12 by one, the year with it.
void StepMonth(int& month, std::int64_t& year, int step) {
    month += step;
    if (month < 1) {
        month = 12;
        --year;
    } else if (month > 12) {
        month = 1;
        ++year;
    }
}

// The leap years of any year, also beyond what a record holds.
int DaysInMonthOf(int month, std::int64_t year) {
    return DateTime::DaysInMonth(month, static_cast<int>((year % 400 + 400) % 400));
}

bool WriteDuration(char* buffer, std::size_t size, const char* text, int length) {
    if (buffer == nullptr || length < 0 || static_cast<std::size_t>(length) >= size) {
        return false;
    }
    std::memcpy(buffer, text, static_cast<std::size_t>(length) + 1);
    return true;
}

struct Duration {
    explicit Duration(std::uint32_t ms)
        : hours(ms / 3600000), minutes(ms / 60000 % 60), seconds(ms / 1000 % 60) {}
    unsigned hours;
    unsigned minutes;
    unsigned seconds;
};

constexpr std::size_t kDurationSize = 40;

}  // namespace

bool DateTime::IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DateTime::DaysInMonth(int month, int year) {
    if (month < 1 || month > 12) {
        return 0;
    }
    return kDaysBeforeMonth[month] - kDaysBeforeMonth[month - 1] + (month == 2 && IsLeapYear(year) ? 1 : 0);
}

void DateTime::SetDate(const KxDate& date) {
    Set(DateTime(date.year, date.month, date.day));
}

std::int32_t DateTime::DaysBetween(DateTime& other) {
    LetMonthBegin(*this);
    LetMonthBegin(other);
    return DaysSince1800(*this) - DaysSince1800(other);
}

std::int32_t DateTime::DaysBetween(const DateTime& other) const {
    return DaysSince1800(*this) - DaysSince1800(other);
}

std::int32_t DateTime::Compare(const DateTime& other) const {
    const std::int32_t days = DaysBetween(other);
    if (days != 0) {
        return days;
    }
    const int seconds = ((hour - other.hour) * 60 + minute - other.minute) * 60 + second - other.second;
    return seconds * 100 + hundredths - other.hundredths;
}

std::int64_t DateTime::MillisecondsSince(const DateTime& other) const {
    const std::int64_t hours = std::int64_t{DaysBetween(other)} * 24 + hour - other.hour;
    const std::int64_t seconds = (hours * 60 + minute - other.minute) * 60 + second - other.second;
    return (seconds * 100 + hundredths - other.hundredths) * 10;
}

void DateTime::AddMilliseconds(std::int64_t ms) {
    std::int64_t carried = Carry(hundredths + ms / 10, 100, hundredths);
    carried = Carry(second + carried, 60, second);
    carried = Carry(minute + carried, 60, minute);
    AddDays(Carry(hour + carried, 24, hour));
}

void DateTime::AddDays(std::int64_t count) {
    // Whole calendar cycles first, so that no count takes long.
    std::int64_t newYear = year + count / kDaysIn400Years * 400;
    std::int64_t newDay = day + count % kDaysIn400Years;
    int newMonth = std::clamp<int>(month, 1, 12);
    while (newDay < 1) {
        StepMonth(newMonth, newYear, -1);
        newDay += DaysInMonthOf(newMonth, newYear);
    }
    while (newDay > DaysInMonthOf(newMonth, newYear)) {
        newDay -= DaysInMonthOf(newMonth, newYear);
        StepMonth(newMonth, newYear, 1);
    }
    year = AsYear(newYear);
    month = static_cast<std::uint8_t>(newMonth);
    day = static_cast<std::uint8_t>(newDay);
}

void DateTime::AddMonths(std::int32_t count) {
    std::uint8_t monthFromZero{};
    const std::int64_t years = Carry(std::int64_t{month} - 1 + count, 12, monthFromZero);
    month = static_cast<std::uint8_t>(monthFromZero + 1);
    year = AsYear(year + years);
}

int DateTime::WeekOfYear() const {
    return (DaysBetween(DateTime(year, 1, 1)) + 11) / 7;
}

bool DurationMinSec(std::uint32_t ms, char* buffer, std::size_t size) {
    const Duration time(ms);
    char text[kDurationSize];
    const int length =
        time.hours == 0
            ? std::snprintf(text, sizeof text, "%u:%02u", time.minutes, time.seconds)
            : std::snprintf(text, sizeof text, "%u:%02u:%02u", time.hours, time.minutes, time.seconds);
    return WriteDuration(buffer, size, text, length);
}

bool DurationHourMin(std::uint32_t ms, char* buffer, std::size_t size) {
    const Duration time(ms);
    char text[kDurationSize];
    const int length = time.hours == 0
                           ? std::snprintf(text, sizeof text, "%u", time.minutes)
                           : std::snprintf(text, sizeof text, "%u:%02u", time.hours, time.minutes);
    return WriteDuration(buffer, size, text, length);
}

bool DurationHourMinAlways(std::uint32_t ms, char* buffer, std::size_t size) {
    const Duration time(ms);
    char text[kDurationSize];
    const int length = std::snprintf(text, sizeof text, "%u:%02u", time.hours, time.minutes);
    return WriteDuration(buffer, size, text, length);
}

}  // namespace kx
