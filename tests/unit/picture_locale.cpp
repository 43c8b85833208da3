#include "tests/unit/picture_locale.h"

#include <chrono>
#include <cstring>
#include <sstream>

namespace kx::test {
namespace {

std::string DayName(const KxDateTime& when) {
    using namespace std::chrono;
    const unsigned day = weekday(sys_days(year(when.year) / when.month / when.day)).c_encoding();
    return std::string("SunMonTueWedThuFriSat").substr(3 * day, 3);
}

std::string Formatted(const PictureLocale& locale, const KxDateTime& when, const std::string& picture) {
    const auto padded = [](int value, std::size_t width) {
        const std::string digits = std::to_string(value);
        return std::string(width - std::min(width, digits.size()), '0') + digits;
    };
    std::string text;
    std::size_t run = 1;
    for (std::size_t i = 0; i < picture.size(); i += run, run = 1) {
        while (std::strchr("dMyhHmst", picture[i]) != nullptr && picture[i + run] == picture[i]) {
            ++run;
        }
        const auto month = static_cast<std::size_t>(when.month - 1);
        switch (picture[i]) {
            case 'd': text += run > 2 ? DayName(when) : padded(when.day, run); break;
            case 'M': text += run == 4 ? locale.months[month] : run == 3 ? locale.abbreviations[month] : padded(when.month, run); break;
            case 'y': text += padded(run > 2 ? when.year : when.year % 100, run); break;
            case 'h': text += padded((when.hour + 11) % 12 + 1, run); break;
            case 'H': text += padded(when.hour, run); break;
            case 'm': text += padded(when.minute, run); break;
            case 's': text += padded(when.second, run); break;
            case 't': text += when.hour < 12 ? "AM" : "PM"; break;
            default: text += picture[i];
        }
    }
    return text;
}

std::string Without(std::string text, const char* part) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? text : text.erase(at, std::strlen(part));
}

PictureLocale Locale(const char* shortDate, const char* longDate, const char* time, const char* months, const char* abbreviations) {
    PictureLocale locale;
    locale.shortDate = shortDate, locale.longDate = longDate, locale.time = time;
    std::istringstream full(months), abbreviated(abbreviations);
    for (std::size_t month = 0; month < 12; ++month) {
        full >> locale.months[month];
        abbreviated >> locale.abbreviations[month];
    }
    return locale;
}

}  // namespace

bool PictureLocale::Give(const std::string& text, char* buffer, std::size_t size) const {
    return !broken && text.size() < size && std::memcpy(buffer, text.c_str(), text.size() + 1) != nullptr;
}

bool PictureLocale::DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const {
    const std::string& picture = style == DateStyle::kLong ? longDate : shortDate;
    const bool exists = when.month >= 1 && when.month <= 12 && when.day >= 1 && when.year >= 1601;
    return exists && Give(Formatted(*this, when, style == DateStyle::kDayName ? "ddd" : picture), buffer, size);
}

bool PictureLocale::TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const {
    const std::string picture = style == TimeStyle::kLong ? time : Without(time, ":ss");
    return when.hour < 24 &&
           Give(Formatted(*this, when, style == TimeStyle::kShortNoMarker ? Without(picture, " tt") : picture), buffer, size);
}

bool PictureLocale::MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const {
    return Give((style == MonthNameStyle::kFull ? months : abbreviations).at(static_cast<std::size_t>(month - 1)), buffer, size);
}

PictureLocale Italian() {
    return Locale("dd/MM/yyyy", "d MMMM yyyy", "HH:mm:ss",
                  "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre novembre dicembre",
                  "gen feb mar apr mag giu lug ago set ott nov dic");
}

PictureLocale American() {
    return Locale("M/d/yyyy", "MMMM d, yyyy", "h:mm:ss tt",
                  "January February March April May June July August September October November December",
                  "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec");
}

PictureLocale French() {
    return Locale("dd/MM/yyyy", "d MMMM yyyy", "HH:mm:ss",
                  "janvier f\xE9vrier mars avril mai juin juillet ao\xFBt septembre octobre novembre d\xE9"
                  "cembre",
                  "janv. f\xE9vr. mars avr. mai juin juil. ao\xFBt sept. oct. nov. d\xE9"
                  "c.");
}

}  // namespace kx::test
