// A locale made of pictures and names, as the system would format by it: what the portable tests give the
// time stamps.
#pragma once

#include <array>
#include <string>

#include "lib/locale_formats.h"

namespace kx::test {

struct PictureLocale final : LocaleFormats {
    std::string shortDate;
    std::string longDate;
    std::string time;  // with seconds
    std::array<std::string, 12> months;
    std::array<std::string, 12> abbreviations;
    std::string morning = "AM";
    std::string afternoon = "PM";
    bool broken = false;  // nothing can be read or formatted

    bool DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const override;
    bool TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const override;
    bool ShortDateFormat(char* buffer, std::size_t size) const override;
    bool TimeFormat(char* buffer, std::size_t size) const override;
    bool MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const override;

  private:
    std::string Formatted(const KxDateTime& when, const std::string& picture) const;
};

PictureLocale Italian();   // dd/MM/yyyy, HH:mm:ss
PictureLocale American();  // M/d/yyyy, h:mm:ss tt
PictureLocale German();    // dd.MM.yyyy, HH:mm:ss
PictureLocale French();    // abbreviated months of three and four letters

}  // namespace kx::test
