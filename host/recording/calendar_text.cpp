#include "host/recording/calendar_text.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

#include "host/recording/text_scanner.h"

namespace kx::recording {

namespace {

constexpr int kLastUnknownYear = 1800;
constexpr int kLastYear = 9999;

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
    int hour, minute;
    double seconds;
};

std::optional<DayTime> ParseTime(std::string_view text) {
    const int hour = TakeDigits(text, 2);
    const int minute = text.empty() ? 0 : TakeDigits(text, 2);
    // 60 is a leap second, shown as the second before.
    const int second = text.empty() ? 0 : TakeDigits(text, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60) {
        return std::nullopt;
    }
    DayTime time{hour, minute, double(std::min(second, 59))};
    const std::string fraction = "0" + std::string(text);
    std::string_view rest = fraction;
    const double part = TakeNumber<double>(rest).value_or(0);
    if (!rest.empty() || (!text.empty() && text.front() != '.')) {
        return std::nullopt;
    }
    time.seconds += second < 60 ? part : 0;
    return time;
}

// The part of a date and time before its offset from universal time.
std::string_view WithoutOffset(std::string_view text) {
    text = Trim(text);
    return text.substr(0, text.find_first_of("+-Z"));
}

}  // namespace

bool IsDate(int year, int month, int day) {
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return year > kLastUnknownYear && year <= kLastYear && date.ok();
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
    const auto parsed = ParseTime(DigitsOf(text, ':'));
    if (!parsed) {
        return false;
    }
    const auto hundredths = static_cast<int>(std::floor(parsed->seconds * 100 + 1e-6));
    time.hour = static_cast<std::uint8_t>(parsed->hour);
    time.minute = static_cast<std::uint8_t>(parsed->minute);
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
    const auto time = ParseTime(text.substr(std::min(kDateLength, text.size())));
    return time ? ((time->hour * 60 + time->minute) * 60 + time->seconds) * 1000 : 0;
}

}  // namespace kx::recording
