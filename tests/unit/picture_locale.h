// A locale made of pictures and names, as the system would format by it: what the portable tests give the time stamps.
#pragma once

#include <string>

#include "lib/locale_formats.h"

namespace kx::test {

struct PictureLocale final : LocaleFormats {
    PictureLocale(const char* shortDateIs, const char* longDateIs, const char* timeIs, const char* monthsAre, const char* abbreviationsAre)
        : shortDate(shortDateIs), longDate(longDateIs), time(timeIs), months(monthsAre), abbreviations(abbreviationsAre) {}

    std::string shortDate, longDate, time;  // the time with seconds
    std::string months, abbreviations;      // twelve words

    bool DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const override;
    bool TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const override;
    bool ShortDateFormat(char* buffer, std::size_t size) const override { return Give(shortDate, buffer, size); }
    bool TimeFormat(char* buffer, std::size_t size) const override { return Give(time, buffer, size); }
    bool MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const override;

  private:
    bool Give(const std::string& text, char* buffer, std::size_t size) const;
};

PictureLocale Italian();  // dd/MM/yyyy, HH:mm:ss

}  // namespace kx::test
