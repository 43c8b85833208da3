#include "host/recording/calendar_text.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

constexpr int kLastUnknownYear = 1800;

std::string DigitsOf(std::string_view text, char separator) {
    std::string digits;
    for (const char c : Trim(text)) {
        if (c != separator) {
            digits += c;
        }
    }
    return digits;
}

// A number of exactly `count` digits off the front; -1 when they are not there.
int TakeDigits(std::string_view& text, std::size_t count) {
    int value = 0;
    if (text.size() < count) {
        return -1;
    }
    for (const char c : text.substr(0, count)) {
        if (c < '0' || c > '9') {
            return -1;
        }
        value = 10 * value + (c - '0');
    }
    text.remove_prefix(count);
    return value;
}

struct DayTime {
    int hour = 0, minute = 0;
    double seconds = 0;
};

bool ParseTime(std::string_view text, DayTime& time) {
    time.hour = TakeDigits(text, 2);
    time.minute = text.empty() ? 0 : TakeDigits(text, 2);
    // 60 is a leap second, shown as the second before.
    const int second = text.empty() ? 0 : TakeDigits(text, 2);
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || second < 0 || second > 60) {
        return false;
    }
    time.seconds = std::min(second, 59);
    if (Take(text, '.') && second < 60) {
        const std::string fraction = "0." + std::string(text);
        std::string_view rest = fraction;
        time.seconds += TakeNumber<double>(rest).value_or(0);
        return rest.empty();
    }
    return true;
}

// The part of a date and time before its offset from universal time.
std::string_view WithoutOffset(std::string_view text) {
    text = Trim(text);
    return text.substr(0, text.find_first_of("+-Z"));
}

}  // namespace

bool IsDate(int year, int month, int day) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year <= kLastUnknownYear || year > 9999 || month < 1 || month > 12 || day < 1) {
        return false;
    }
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return day <= (month == 2 && leap ? 29 : kDays[month - 1]);
}

bool TakeDate(std::string_view text, KxDate& date) {
    const std::string digits = DigitsOf(text, '.');
    std::string_view rest = digits;
    const int year = TakeDigits(rest, 4), month = TakeDigits(rest, 2), day = TakeDigits(rest, 2);
    if (!rest.empty() || !IsDate(year, month, day)) {
        return false;
    }
    date = {static_cast<std::int16_t>(year), static_cast<std::uint8_t>(day),
            static_cast<std::uint8_t>(month)};
    return true;
}

bool TakeTime(std::string_view text, KxDateTime& time) {
    DayTime parsed;
    if (!ParseTime(DigitsOf(text, ':'), parsed)) {
        return false;
    }
    const auto hundredths = static_cast<int>(std::floor(parsed.seconds * 100 + 1e-6));
    time.hour = static_cast<std::uint8_t>(parsed.hour);
    time.minute = static_cast<std::uint8_t>(parsed.minute);
    time.second = static_cast<std::uint8_t>(hundredths / 100);
    time.hundredths = static_cast<std::uint8_t>(hundredths % 100);
    return true;
}

bool TakeDateTime(std::string_view text, KxDateTime& time) {
    constexpr std::size_t kDateLength = 8;
    text = WithoutOffset(text);
    KxDate date;
    KxDateTime taken{};
    if (!TakeDate(text.substr(0, kDateLength), date) ||
        (text.size() > kDateLength && !TakeTime(text.substr(kDateLength), taken))) {
        return false;
    }
    taken.year = date.year;
    taken.month = date.month;
    taken.day = date.day;
    time = taken;
    return true;
}

double MillisecondsOfDay(std::string_view dateTime) {
    constexpr std::size_t kDateLength = 8;
    const std::string_view text = WithoutOffset(dateTime);
    DayTime time;
    if (text.size() <= kDateLength || !ParseTime(text.substr(kDateLength), time)) {
        return 0;
    }
    return ((time.hour * 60 + time.minute) * 60 + time.seconds) * 1000;
}

}  // namespace kx::recording
