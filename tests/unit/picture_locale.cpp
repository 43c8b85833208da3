#include "tests/unit/picture_locale.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <sstream>

namespace kx::test {
namespace {

std::string Word(const std::string& words, int number) {
    std::istringstream stream(words);
    std::string word;
    for (int i = 0; i < number; ++i) {
        stream >> word;
    }
    return word;
}

std::string Formatted(const PictureLocale& locale, const KxDateTime& when, const std::string& picture) {
    const std::map<char, int> numbers{{'d', when.day},  {'M', when.month},  {'y', when.year},  {'h', (when.hour + 11) % 12 + 1},
                                      {'H', when.hour}, {'m', when.minute}, {'s', when.second}};
    std::string text;
    for (std::size_t i = 0, run = 1; i < picture.size(); i += run) {
        const auto number = numbers.find(picture[i]);
        run = number == numbers.end() ? 1 : std::min(picture.find_first_not_of(picture[i], i), picture.size()) - i;
        if (picture[i] == 'M' && run > 2) {
            text += Word(run == 4 ? locale.months : locale.abbreviations, when.month);
        } else if (number != numbers.end()) {
            const std::string digits = std::to_string(number->second);
            text += std::string(run - std::min(run, digits.size()), '0') + digits;
        } else {
            text += picture[i];
        }
    }
    const std::size_t marker = text.find("tt");
    return marker == std::string::npos ? text : text.replace(marker, 2, when.hour < 12 ? "AM" : "PM");
}

std::string Without(std::string text, const char* part) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? text : text.erase(at, std::strlen(part));
}

}  // namespace

bool PictureLocale::Give(const std::string& text, char* buffer, std::size_t size) const {
    return text.size() < size && std::memcpy(buffer, text.c_str(), text.size() + 1) != nullptr;
}

bool PictureLocale::DateText(const KxDateTime& when, DateStyle style, char* buffer, std::size_t size) const {
    const std::string& picture = style == DateStyle::kLong ? longDate : shortDate;
    const bool exists = when.month >= 1 && when.month <= 12 && when.day >= 1 && when.year >= 1601;
    return exists && Give(Formatted(*this, when, picture), buffer, size);
}

bool PictureLocale::TimeText(const KxDateTime& when, TimeStyle style, char* buffer, std::size_t size) const {
    const std::string picture = style == TimeStyle::kLong ? time : Without(time, ":ss");
    return when.hour < 24 &&
           Give(Formatted(*this, when, style == TimeStyle::kShortNoMarker ? Without(picture, " tt") : picture), buffer, size);
}

bool PictureLocale::MonthName(int month, MonthNameStyle style, char* buffer, std::size_t size) const {
    return Give(Word(style == MonthNameStyle::kFull ? months : abbreviations, month), buffer, size);
}

PictureLocale Italian() {
    return {"dd/MM/yyyy", "d MMMM yyyy", "HH:mm:ss",
            "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre novembre dicembre",
            "gen feb mar apr mag giu lug ago set ott nov dic"};
}

}  // namespace kx::test
