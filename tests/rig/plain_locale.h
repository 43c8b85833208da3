// A locale whose texts are the numbers of a time as they stand, whatever they are, and whose pictures and
// names are given.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>

#include "lib/locale_formats.h"

namespace kx::test {

class PlainLocale final : public LocaleFormats {
  public:
    bool DateText(const KxDateTime& time, DateStyle, char* buffer, std::size_t size) const override {
        const int length = std::snprintf(buffer, size, "%d-%d-%d", time.year, time.month, time.day);
        return static_cast<std::size_t>(length) < size;
    }
    bool TimeText(const KxDateTime& time, TimeStyle, char* buffer, std::size_t size) const override {
        const int length = std::snprintf(buffer, size, "%d:%d:%d", time.hour, time.minute, time.second);
        return static_cast<std::size_t>(length) < size;
    }
    bool ShortDateFormat(char* buffer, std::size_t size) const override { return Give(picture, buffer, size); }
    bool TimeFormat(char* buffer, std::size_t size) const override { return Give(picture, buffer, size); }
    bool MonthName(int month, MonthNameStyle, char* buffer, std::size_t size) const override {
        return Give(month % 2 == 0 ? monthName : monthName.substr(0, 3), buffer, size);
    }

    std::string picture;
    std::string monthName;

  private:
    static bool Give(const std::string& text, char* buffer, std::size_t size) {
        if (text.size() >= size) {
            return false;
        }
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return true;
    }
};

}  // namespace kx::test
