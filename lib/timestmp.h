// The calendar time stamp of every record: arithmetic, texts by the user's formats, and reading what the user
// typed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "include/kxdialogs.h"
#include "lib/locale_formats.h"
#include "lib/reporter.h"

// The system's own names.
struct _SYSTEMTIME;  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
struct _FILETIME;    // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace kx {

// A date of this year or before is none.
inline constexpr int kLastUnknownYear = 1800;

// A KxDateTime with its operations; it adds no data, so a record's field is copied to and from one as it is.
// Valid when its year is greater than 1800; arithmetic on fields out of range gives some time, never a fault.
struct DateTime : KxDateTime {
    // The local time now.
    DateTime();
    DateTime(const KxDateTime& time) : KxDateTime(time) {}  // a record's field is a DateTime
    constexpr DateTime(int years, int months, int days, int hours = 0, int minutes = 0, int seconds = 0,
                       int hundredthsOfSecond = 0)
        : KxDateTime{static_cast<std::int16_t>(years),  static_cast<std::uint8_t>(days),
                     static_cast<std::uint8_t>(months), static_cast<std::uint8_t>(minutes),
                     static_cast<std::uint8_t>(hours),  static_cast<std::uint8_t>(hundredthsOfSecond),
                     static_cast<std::uint8_t>(seconds)} {}
    // All fields 0: no time.
    static constexpr DateTime None() { return {0, 0, 0}; }

    // Windows only. ToSystemTime leaves the day of the week 0.
    void SetFromSystemTime(const _SYSTEMTIME& time);
    void ToSystemTime(_SYSTEMTIME& time) const;

    void Set(const KxDateTime& other) { static_cast<KxDateTime&>(*this) = other; }
    KxDate Date() const { return {year, day, month}; }

    int Year() const { return year; }
    int Month() const { return month; }
    int Day() const { return day; }
    int Hour() const { return hour; }
    int Minute() const { return minute; }
    int Second() const { return second; }
    int Milliseconds() const { return hundredths * 10; }
    bool IsValid() const { return year > kLastUnknownYear; }

    // Days from the other date to this one; years before 1800 do not count. A month below 1 becomes 1, in the
    // operands themselves where both may be changed.
    std::int32_t DaysBetween(DateTime& other);
    std::int32_t DaysBetween(const DateTime& other) const;
    // Below, equal to or above 0 as this time is before, at or after the other. Not a duration.
    std::int32_t Compare(const DateTime& other) const;
    std::int64_t MillisecondsSince(const DateTime& other) const;

    // ms and counts may be negative; tens of ms are the resolution.
    void AddMilliseconds(std::int64_t ms);
    void AddDays(std::int64_t count);
    // month: 1 to 12; 0 days for any other.
    static int DaysInMonth(int month, int year);
    static bool IsLeapYear(int year);

    // Texts in the user's formats: each clears the buffer first and returns whether the system produced one.
    bool ShortDate(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool LongDate(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool ShortTime(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool LongTime(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool ShortTimeNoMarker(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;

    // "date, time". The buffer must hold both parts and 3 characters more; else false, and nothing is
    // written (LongDateAndTime then writes "?"). A part that cannot be formatted is empty here and in
    // DateAndTimeNoMarker, and fails the two with a long one.
    bool DateAndTime(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;

    // The time of day `ms` after this one and, in parentheses, the day it falls on, this day being 1:
    // "00:20:00 (2)". False, with an empty buffer, when it does not fit.
    bool TimeAfter(std::int64_t ms, char* buffer, std::size_t size,
                   const LocaleFormats& locale = UserLocale()) const;

    // ---- what the suite's other programs do, and no pane of this library

    void SetFromFileTime(const _FILETIME& time);
    // Takes the date and zeroes the time of day.
    void SetDate(const KxDate& date);
    void AddMonths(std::int32_t count);
    // 1 from 1 January on, (days since then + 11) / 7.
    int WeekOfYear() const;

    // Texts, as those above of their kind.
    bool DayName(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool DateAndTimeNoMarker(char* buffer, std::size_t size,
                             const LocaleFormats& locale = UserLocale()) const;
    bool DateAndLongTime(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool LongDateAndTime(char* buffer, std::size_t size, const LocaleFormats& locale = UserLocale()) const;
    bool ShortTimeAfter(std::int64_t ms, char* buffer, std::size_t size,
                        const LocaleFormats& locale = UserLocale()) const;

    // Reads a date as the locale's short date format has it; two-digit years are of the 1900s. On failure the
    // whole time stamp is zero; what the format or the text is at fault for is reported.
    bool SetShortDate(const char* text, Reporter& log, const LocaleFormats& locale = UserLocale());
    // Reads a time of day as the locale's time format has it. Only a text that was read to its end and names
    // an existing time changes hour, minute and second; date and hundredths stay. False only when there is no
    // text or no format.
    bool SetShortTime(const char* text, Reporter& log, const LocaleFormats& locale = UserLocale());
};

static_assert(sizeof(DateTime) == 8 && alignof(DateTime) == alignof(KxDateTime));
static_assert(std::is_standard_layout_v<DateTime> && std::is_trivially_copyable_v<DateTime>);

// Durations as text. False, and nothing written, without a buffer or when the text and its terminator do not
// fit.
// "4:05" minutes and seconds below an hour, else "1:04:05".
bool DurationMinSec(std::uint32_t ms, char* buffer, std::size_t size);
// "1:05" hours and minutes from an hour on, else the minutes alone.
bool DurationHourMin(std::uint32_t ms, char* buffer, std::size_t size);
// "0:05" hours and minutes.
bool DurationHourMinAlways(std::uint32_t ms, char* buffer, std::size_t size);

}  // namespace kx
