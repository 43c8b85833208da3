// Times as texts in the formats of the locale.
#include <cstdio>
#include <cstring>

#include "lib/timestmp.h"

namespace kx {

namespace {

constexpr std::size_t kPartSize = 16;
constexpr std::size_t kLongDateSize = 32;
// Between the parts, behind them, and the terminator.
constexpr std::size_t kJoinSize = 3;
constexpr int kMostDaysCounted = 100;

// The buffer cleared, and whether there is one.
bool Clear(char* buffer, std::size_t size) {
    if (buffer == nullptr || size == 0) {
        return false;
    }
    buffer[0] = '\0';
    return true;
}

// A text that the system left incomplete is none.
bool Finish(bool produced, char* buffer) {
    if (!produced) {
        buffer[0] = '\0';
    }
    return produced;
}

bool DateText(const DateTime& time, DateStyle style, char* buffer, std::size_t size,
              const LocaleFormats& locale) {
    return Clear(buffer, size) && Finish(locale.DateText(time, style, buffer, size), buffer);
}

bool TimeText(const DateTime& time, TimeStyle style, char* buffer, std::size_t size,
              const LocaleFormats& locale) {
    return Clear(buffer, size) && Finish(locale.TimeText(time, style, buffer, size), buffer);
}

bool Join(const char* date, const char* time, char* buffer, std::size_t size) {
    if (buffer == nullptr || size < std::strlen(date) + std::strlen(time) + kJoinSize) {
        return false;
    }
    std::snprintf(buffer, size, "%s, %s", date, time);
    return true;
}

// The system's formatting without marker still leaves it in some locales.
void CutMarker(char* text) {
    constexpr const char* kMarkers[] = {"AM", "PM"};
    for (const char* marker : kMarkers) {
        if (char* found = std::strstr(text, marker)) {
            *found = '\0';
        }
    }
}

bool After(const DateTime& from, TimeStyle style, std::int64_t ms, char* buffer, std::size_t size,
           const LocaleFormats& locale) {
    DateTime later = from;
    later.AddMilliseconds(ms);
    if (!TimeText(later, style, buffer, size, locale)) {
        return false;
    }
    const int lastDay = DateTime::DaysInMonth(from.Month(), from.Year());
    int count = 1;
    for (int day = from.Day(); day != later.Day() && count < kMostDaysCounted; ++count) {
        day = day >= lastDay ? 1 : day + 1;
    }
    char number[16];
    const int length = std::snprintf(number, sizeof number, " (%d)", count);
    const std::size_t used = std::strlen(buffer);
    const bool fits = used + static_cast<std::size_t>(length) < size;
    if (fits) {
        std::memcpy(buffer + used, number, static_cast<std::size_t>(length) + 1);
    }
    return Finish(fits, buffer);  // the time of another day would be a wrong time
}

}  // namespace

bool DateTime::ShortDate(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return DateText(*this, DateStyle::kShort, buffer, size, locale);
}

bool DateTime::LongDate(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return DateText(*this, DateStyle::kLong, buffer, size, locale);
}

bool DateTime::DayName(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return DateText(*this, DateStyle::kDayName, buffer, size, locale);
}

bool DateTime::ShortTime(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return TimeText(*this, TimeStyle::kShort, buffer, size, locale);
}

bool DateTime::LongTime(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return TimeText(*this, TimeStyle::kLong, buffer, size, locale);
}

bool DateTime::ShortTimeNoMarker(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    if (!TimeText(*this, TimeStyle::kShortNoMarker, buffer, size, locale)) {
        return false;
    }
    CutMarker(buffer);
    return true;
}

bool DateTime::DateAndTime(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    char date[kPartSize];
    char time[kPartSize];
    ShortDate(date, sizeof date, locale);
    ShortTime(time, sizeof time, locale);
    return Join(date, time, buffer, size);
}

bool DateTime::DateAndTimeNoMarker(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    char date[kPartSize];
    char time[kPartSize];
    ShortDate(date, sizeof date, locale);
    ShortTimeNoMarker(time, sizeof time, locale);
    return Join(date, time, buffer, size);
}

bool DateTime::DateAndLongTime(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    char date[kPartSize];
    char time[kPartSize];
    return ShortDate(date, sizeof date, locale) && LongTime(time, sizeof time, locale) &&
           Join(date, time, buffer, size);
}

bool DateTime::LongDateAndTime(char* buffer, std::size_t size, const LocaleFormats& locale) const {
    char date[kLongDateSize];
    char time[kPartSize];
    if (LongDate(date, sizeof date, locale) && LongTime(time, sizeof time, locale) &&
        Join(date, time, buffer, size)) {
        return true;
    }
    if (Clear(buffer, size)) {
        std::snprintf(buffer, size, "?");
    }
    return false;
}

bool DateTime::TimeAfter(std::int64_t ms, char* buffer, std::size_t size, const LocaleFormats& locale) const {
    return After(*this, TimeStyle::kLong, ms, buffer, size, locale);
}

bool DateTime::ShortTimeAfter(std::int64_t ms, char* buffer, std::size_t size,
                              const LocaleFormats& locale) const {
    return After(*this, TimeStyle::kShort, ms, buffer, size, locale);
}

}  // namespace kx
