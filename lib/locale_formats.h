// The user's formats of dates and times, as the time stamps need them.
#pragma once

#include <cstddef>

#include "include/kxdialogs.h"

namespace kx {

enum class DateStyle {
    kShort,
    kLong,
    kDayName  // the picture "ddd"
};

enum class TimeStyle {
    kShort,         // without seconds
    kLong,          // with seconds
    kShortNoMarker  // without seconds and without the AM/PM marker
};

enum class MonthNameStyle { kAbbreviated, kFull };

// Texts are Windows-1252. Every operation writes at most size characters, terminator included, and returns
// whether it produced the whole text; otherwise the buffer's contents are not to be used. Buffers are never
// null and sizes never 0.
class LocaleFormats {
  public:
    // False for a time that does not exist, such as a zero record.
    virtual bool DateText(const KxDateTime& time, DateStyle style, char* buffer, std::size_t size) const = 0;
    virtual bool TimeText(const KxDateTime& time, TimeStyle style, char* buffer, std::size_t size) const = 0;

    // The pictures by which a typed date or time is read, such as "dd/MM/yyyy" and "h:mm:ss tt".
    virtual bool ShortDateFormat(char* buffer, std::size_t size) const = 0;
    virtual bool TimeFormat(char* buffer, std::size_t size) const = 0;
    // month: 1 to 12.
    virtual bool MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const = 0;

  protected:
    LocaleFormats() = default;
    LocaleFormats(const LocaleFormats&) = default;
    LocaleFormats& operator=(const LocaleFormats&) = default;
    ~LocaleFormats() = default;
};

// The user's default locale. Windows only: portable code is given its formats.
const LocaleFormats& UserLocale();

}  // namespace kx
