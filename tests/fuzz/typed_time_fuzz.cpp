// Any bytes as a locale's picture, a month's name and what a user typed, each up to a zero byte, and as a
// time stamp behind them: what is read is a time that exists, or none.
#include <cstdlib>
#include <cstring>
#include <string>

#include "lib/timestmp.h"
#include "tests/rig/plain_locale.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::string TakeText(const std::uint8_t*& data, std::size_t& size) {
    const void* zero = size == 0 ? nullptr : std::memchr(data, 0, size);
    const std::size_t length =
        zero != nullptr ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(zero) - data) : size;
    std::string text(reinterpret_cast<const char*>(data), length);
    const std::size_t taken = zero != nullptr ? length + 1 : length;
    data += taken;
    size -= taken;
    return text;
}

void ReadTyped(const std::string& typed, const kx::test::PlainLocale& locale, const KxDateTime& time) {
    kx::SilentReporter log;
    kx::DateTime date = time;
    if (date.SetShortDate(typed.c_str(), log, locale)) {
        Require(date.month >= 1 && date.month <= 12 && date.day >= 1 && date.day <= 31 && date.year > 0);
    } else {
        Require(date.Compare(kx::DateTime::None()) == 0);
    }
    kx::DateTime timeOfDay = time;
    timeOfDay.SetShortTime(typed.c_str(), log, locale);
    const KxDateTime& read = timeOfDay;
    Require(std::memcmp(&read, &time, 4) == 0 && read.hundredths == time.hundredths);
    Require((read.hour == time.hour && read.minute == time.minute && read.second == time.second) ||
            (read.hour <= 23 && read.minute <= 59 && read.second <= 59));
}

void Calculate(const KxDateTime& time, std::int64_t amount) {
    kx::DateTime moved = time;
    moved.AddMilliseconds(amount);
    Require(moved.month >= 1 && moved.month <= 12 && moved.day >= 1);
    Require(moved.Hour() <= 23 && moved.Minute() <= 59 && moved.Second() <= 59);
    // A year that the stamp does not hold is the nearest that it does, where the way back ends.
    constexpr int kLastExactYear = 32000;
    if (std::abs(moved.Year()) < kLastExactYear) {
        Require(moved.day <= kx::DateTime::DaysInMonth(moved.Month(), moved.Year()));
        kx::DateTime back = moved;
        back.AddDays(400);
        back.AddDays(-400);
        Require(std::memcmp(&back, &moved, sizeof back) == 0);
    }
    kx::DateTime(time).WeekOfYear();
    kx::DateTime(time).MillisecondsSince(moved);
    moved.AddMonths(static_cast<std::int32_t>(amount));
    Require(moved.Month() >= 1 && moved.Month() <= 12);
}

void ShowEverything(const kx::DateTime& time, std::int64_t amount, const kx::test::PlainLocale& locale) {
    for (const std::size_t size : {0u, 1u, 9u, 60u}) {
        std::string buffer(size, 'x');
        char* text = size > 0 ? buffer.data() : nullptr;
        time.DateAndTime(text, size, locale);
        time.LongDateAndTime(text, size, locale);
        time.ShortTimeNoMarker(text, size, locale);
        if (time.TimeAfter(amount, text, size, locale)) {
            Require(buffer.find('\0') != std::string::npos && buffer.find('(') != std::string::npos);
        }
        kx::DurationMinSec(static_cast<std::uint32_t>(amount), text, size);
        kx::DurationHourMin(static_cast<std::uint32_t>(amount), text, size);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::test::PlainLocale locale;
    locale.picture = TakeText(data, size);
    locale.monthName = TakeText(data, size);
    const std::string typed = TakeText(data, size);
    struct {
        KxDateTime time;
        std::int64_t amount;
    } rest{};
    if (size > 0) {
        std::memcpy(&rest, data, size < sizeof rest ? size : sizeof rest);
    }
    ReadTyped(typed, locale, rest.time);
    Calculate(rest.time, rest.amount);
    ShowEverything(rest.time, rest.amount, locale);
    return 0;
}
