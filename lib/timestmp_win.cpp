// The system's half of the time stamps: now, the system's own times, and the user's locale.
#include <windows.h>

#include <limits>

#include "lib/timestmp.h"

namespace kx {

namespace {

int AsSize(std::size_t size) {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(size < kMost ? size : kMost);
}

class SystemLocale final : public LocaleFormats {
  public:
    bool DateText(const KxDateTime& time, DateStyle style, char* buffer, std::size_t size) const override {
        DWORD flags = LOCALE_USE_CP_ACP;
        const char* picture = nullptr;
        switch (style) {
            case DateStyle::kShort:
                flags |= DATE_SHORTDATE;
                break;
            case DateStyle::kLong:
                flags |= DATE_LONGDATE;
                break;
            case DateStyle::kDayName:
                picture = "ddd";
                break;
        }
        const SYSTEMTIME system = SystemTime(time);
        return GetDateFormatA(LOCALE_USER_DEFAULT, flags, &system, picture, buffer, AsSize(size)) != 0;
    }

    bool TimeText(const KxDateTime& time, TimeStyle style, char* buffer, std::size_t size) const override {
        DWORD flags = LOCALE_USE_CP_ACP;
        if (style != TimeStyle::kLong) {
            flags |= TIME_NOSECONDS;
        }
        if (style == TimeStyle::kShortNoMarker) {
            flags |= TIME_NOTIMEMARKER;
        }
        const SYSTEMTIME system = SystemTime(time);
        return GetTimeFormatA(LOCALE_USER_DEFAULT, flags, &system, nullptr, buffer, AsSize(size)) != 0;
    }

    bool ShortDateFormat(char* buffer, std::size_t size) const override {
        return Info(LOCALE_SSHORTDATE, buffer, size);
    }
    bool TimeFormat(char* buffer, std::size_t size) const override {
        return Info(LOCALE_STIMEFORMAT, buffer, size);
    }
    bool MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const override {
        const LCTYPE january =
            style == MonthNameStyle::kAbbreviated ? LOCALE_SABBREVMONTHNAME1 : LOCALE_SMONTHNAME1;
        return month >= 1 && month <= 12 && Info(january + static_cast<LCTYPE>(month - 1), buffer, size);
    }

  private:
    static SYSTEMTIME SystemTime(const KxDateTime& time) {
        SYSTEMTIME system;
        DateTime(time).ToSystemTime(system);
        return system;
    }
    static bool Info(LCTYPE type, char* buffer, std::size_t size) {
        return GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_USE_CP_ACP | type, buffer, AsSize(size)) != 0;
    }
};

}  // namespace

DateTime::DateTime() : KxDateTime{} {
    SYSTEMTIME now;
    GetLocalTime(&now);
    SetFromSystemTime(now);
}

void DateTime::SetFromSystemTime(const SYSTEMTIME& time) {
    Set(DateTime(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond,
                 time.wMilliseconds / 10));
}

void DateTime::SetFromFileTime(const FILETIME& time) {
    SYSTEMTIME system{};
    FileTimeToSystemTime(&time, &system);
    SetFromSystemTime(system);
}

void DateTime::ToSystemTime(SYSTEMTIME& time) const {
    time = {};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = month;
    time.wDay = day;
    time.wHour = hour;
    time.wMinute = minute;
    time.wSecond = second;
    time.wMilliseconds = static_cast<WORD>(Milliseconds());
}

const LocaleFormats& UserLocale() {
    static const SystemLocale locale;
    return locale;
}

}  // namespace kx
