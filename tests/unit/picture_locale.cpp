#include "tests/unit/picture_locale.h"

#include <cstdio>
#include <cstring>

namespace kx::test {

namespace {

bool Give(const std::string& text, char* buffer, std::size_t size) {
    if (text.size() >= size) {
        return false;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}

std::string Padded(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Monday is 0.
int DayOfWeek(const KxDateTime& when) {
    const int shift = (14 - when.month) / 12;
    const int year = when.year - shift;
    const int month = when.month + 12 * shift - 2;
    return (when.day + year + year / 4 - year / 100 + year / 400 + 31 * month / 12 + 6) % 7;
}

void Erase(std::string& text, const char* part) {
    if (const std::size_t at = text.find(part); at != std::string::npos) {
        text.erase(at, std::strlen(part));
    }
}

}  // namespace

std::string PictureLocale::Formatted(const KxDateTime& when, const std::string& picture) const {
    static constexpr const char* kDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    std::string text;
    for (std::size_t i = 0; i < picture.size();) {
        const char letter = picture[i];
        const std::size_t run = picture.find_first_not_of(letter, i) == std::string::npos
                                    ? picture.size() - i
                                    : picture.find_first_not_of(letter, i) - i;
        i += std::strchr("dMyhHmst", letter) != nullptr ? run : 1;
        const int hour12 = when.hour % 12 == 0 ? 12 : when.hour % 12;
        const auto month = static_cast<std::size_t>(when.month - 1);
        switch (letter) {
            case 'd':
                text += run > 2 ? kDays[DayOfWeek(when)] : Padded(when.day, run);
                break;
            case 'M':
                text += run == 4   ? months.at(month)
                        : run == 3 ? abbreviations.at(month)
                                   : Padded(when.month, run);
                break;
            case 'y':
                text += run > 2 ? Padded(when.year, 4) : Padded(when.year % 100, run);
                break;
            case 'h':
                text += Padded(hour12, run);
                break;
            case 'H':
                text += Padded(when.hour, run);
                break;
            case 'm':
                text += Padded(when.minute, run);
                break;
            case 's':
                text += Padded(when.second, run);
                break;
            case 't':
                text += (when.hour < 12 ? morning : afternoon).substr(0, run);
                break;
            default:
                text += letter;
                break;
        }
    }
    return text;
}

bool PictureLocale::DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const {
    if (broken || when.month < 1 || when.month > 12 || when.day < 1 || when.year < 1601) {
        return false;
    }
    const std::string& picture = style == DateStyle::kLong ? longDate : shortDate;
    return Give(Formatted(when, style == DateStyle::kDayName ? "ddd" : picture), buffer, size);
}

bool PictureLocale::TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const {
    if (broken || when.hour > 23) {
        return false;
    }
    std::string picture = time;
    if (style != TimeStyle::kLong) {
        Erase(picture, ":ss");
    }
    if (style == TimeStyle::kShortNoMarker) {
        Erase(picture, " tt");
    }
    return Give(Formatted(when, picture), buffer, size);
}

bool PictureLocale::ShortDateFormat(char* buffer, std::size_t size) const {
    return !broken && Give(shortDate, buffer, size);
}

bool PictureLocale::TimeFormat(char* buffer, std::size_t size) const {
    return !broken && Give(time, buffer, size);
}

bool PictureLocale::MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const {
    const auto& names = style == MonthNameStyle::kFull ? months : abbreviations;
    return !broken && Give(names.at(static_cast<std::size_t>(month - 1)), buffer, size);
}

PictureLocale Italian() {
    PictureLocale locale;
    locale.shortDate = "dd/MM/yyyy";
    locale.longDate = "d MMMM yyyy";
    locale.time = "HH:mm:ss";
    locale.months = {"gennaio", "febbraio", "marzo",     "aprile",  "maggio",   "giugno",
                     "luglio",  "agosto",   "settembre", "ottobre", "novembre", "dicembre"};
    locale.abbreviations = {"gen", "feb", "mar", "apr", "mag", "giu",
                            "lug", "ago", "set", "ott", "nov", "dic"};
    return locale;
}

PictureLocale American() {
    PictureLocale locale;
    locale.shortDate = "M/d/yyyy";
    locale.longDate = "MMMM d, yyyy";
    locale.time = "h:mm:ss tt";
    locale.months = {"January", "February", "March",     "April",   "May",      "June",
                     "July",    "August",   "September", "October", "November", "December"};
    locale.abbreviations = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return locale;
}

PictureLocale German() {
    PictureLocale locale;
    locale.shortDate = "dd.MM.yyyy";
    locale.longDate = "d. MMMM yyyy";
    locale.time = "HH:mm:ss";
    locale.months = {"Januar", "Februar", "M\xE4rz",   "April",   "Mai",      "Juni",
                     "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
    locale.abbreviations = {"Jan", "Feb", "Mrz", "Apr", "Mai", "Jun",
                            "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"};
    return locale;
}

PictureLocale French() {
    PictureLocale locale = Italian();
    locale.longDate = "d MMMM yyyy";
    locale.abbreviations = {"janv.",
                            "f\xE9vr.",
                            "mars",
                            "avr.",
                            "mai",
                            "juin",
                            "juil.",
                            "ao\xFBt",
                            "sept.",
                            "oct.",
                            "nov.",
                            "d\xE9"
                            "c."};
    return locale;
}

}  // namespace kx::test
