// A locale made of pictures and names, as the system would format by it: what the portable tests give the time stamps.
#pragma once

#include <array>
#include <string>

#include "lib/locale_formats.h"

namespace kx::test {

struct PictureLocale final : LocaleFormats {
    std::string shortDate, longDate, time;  // the time with seconds
    std::array<std::string, 12> months, abbreviations;
    bool broken = false;  // nothing can be read or formatted

    bool DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const override;
    bool TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const override;
    bool ShortDateFormat(char* buffer, std::size_t size) const override { return Give(shortDate, buffer, size); }
    bool TimeFormat(char* buffer, std::size_t size) const override { return Give(time, buffer, size); }
    bool MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const override;

  private:
    bool Give(const std::string& text, char* buffer, std::size_t size) const;
};

PictureLocale Italian();   // dd/MM/yyyy, HH:mm:ss
PictureLocale American();  // M/d/yyyy, h:mm:ss tt
PictureLocale French();    // abbreviated months of three and four letters

}  // namespace kx::test
