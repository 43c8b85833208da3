// Reading a typed date or time: the locale's format and the text are walked side by side.
#include <cstring>
#include <limits>
#include <string_view>

#include "lib/timestmp.h"

namespace kx {

namespace {

constexpr char kSource[] = "..\\..\\lib\\timestmp";
constexpr std::uint32_t kNoDateFormatLine = 612;
constexpr std::uint32_t kBadCharacterLine = 697;
constexpr std::uint32_t kBadMonthFormatLine = 655;
constexpr std::uint32_t kNoTimeFormatLine = 743;

constexpr std::size_t kFormatSize = 256;
constexpr std::size_t kMonthNameSize = 80;
constexpr std::size_t kAbbreviationLength = 3;
// Numbers beyond any field of a time stamp stop growing here.
constexpr int kNumberLimit = 1000000;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Windows-1252 letters without regard to case.
unsigned char Folded(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool capital = (byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7);
    return static_cast<unsigned char>(capital ? byte + 0x20 : byte);
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (Folded(a[i]) != Folded(b[i])) {
            return false;
        }
    }
    return true;
}

// The text that is still to be read.
class TextCursor {
  public:
    explicit TextCursor(const char* text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    char Next() const { return rest_.front(); }
    std::string_view Rest() const { return rest_; }
    void Skip(std::size_t count) { rest_.remove_prefix(count < rest_.size() ? count : rest_.size()); }

    // The number that the digits at the text's start make, 0 without digits. Nothing is skipped.
    int Number() const {
        int number = 0;
        for (std::size_t i = 0; i < rest_.size() && IsDigit(rest_[i]) && number < kNumberLimit; ++i) {
            number = number * 10 + (rest_[i] - '0');
        }
        return number;
    }
    void SkipDigits() {
        while (!AtEnd() && IsDigit(Next())) {
            Skip(1);
        }
    }

  private:
    std::string_view rest_;
};

// The run of equal letters at the start of a format, taken off it.
struct FormatItem {
    char letter;
    std::size_t count;
};

FormatItem TakeItem(std::string_view& format, std::string_view runLetters) {
    const char letter = format.front();
    std::size_t count = 1;
    if (runLetters.find(letter) != std::string_view::npos) {
        while (count < format.size() && format[count] == letter) {
            ++count;
        }
    }
    format.remove_prefix(count);
    return {letter, count};
}

class DateParse {
  public:
    DateParse(const char* text, Reporter& log, const LocaleFormats& locale)
        : text_(text), log_(log), locale_(locale) {}

    // False when the format or the text cannot be read on; the reason is reported.
    bool Walk(std::string_view format) {
        while (!format.empty() && !text_.AtEnd()) {
            const FormatItem item = TakeItem(format, "Mdy");
            if (!Read(item)) {
                return false;
            }
        }
        return true;
    }

    bool IsDate() const {
        return month_ >= 1 && month_ <= 12 && day_ >= 1 && day_ <= 31 && year_ > 0 &&
               year_ <= std::numeric_limits<std::int16_t>::max();
    }
    DateTime Date() const { return {year_, month_, day_}; }

  private:
    bool Read(const FormatItem& item) {
        switch (item.letter) {
            case 'M':
                return ReadMonth(item.count);
            case 'd':
                ReadDay(item.count);
                return true;
            case 'y':
                ReadYear(item.count);
                return true;
            default:
                break;
        }
        if (text_.Next() != item.letter) {
            log_.LOGOEMERROR(kSource, kBadCharacterLine, "Invalid format character");
            return false;
        }
        text_.Skip(1);
        return true;
    }

    bool ReadMonth(std::size_t count) {
        switch (count) {
            case 1:
                month_ = text_.Number();
                text_.SkipDigits();
                return true;
            case 2:
                month_ = text_.Number();
                text_.Skip(2);
                return true;
            case 3:
                ReadAbbreviatedMonth();
                return true;
            case 4:
                ReadNamedMonth();
                return true;
            default:
                log_.LOGOEMERROR(kSource, kBadMonthFormatLine, "Unexpected M format");
                return false;
        }
    }

    // The whole name must be equal: names cut to three letters would take July for June in French.
    void ReadAbbreviatedMonth() {
        month_ = 0;
        const std::string_view typed = text_.Rest().substr(0, kAbbreviationLength);
        char name[kMonthNameSize];
        for (int month = 1; month <= 12 && month_ == 0; ++month) {
            if (locale_.MonthName(month, MonthNameStyle::kAbbreviated, name, sizeof name) &&
                EqualIgnoringCase(name, typed)) {
                month_ = month;
            }
        }
        text_.Skip(kAbbreviationLength);
    }

    void ReadNamedMonth() {
        month_ = 0;
        std::size_t compared = 0;
        char name[kMonthNameSize];
        for (int month = 1; month <= 12 && month_ == 0; ++month) {
            if (!locale_.MonthName(month, MonthNameStyle::kFull, name, sizeof name) || name[0] == '\0') {
                continue;
            }
            compared = std::strlen(name);
            if (EqualIgnoringCase(name, text_.Rest().substr(0, compared))) {
                month_ = month;
            }
        }
        text_.Skip(compared);
    }

    void ReadDay(std::size_t count) {
        if (count > 2) {
            return;  // the name of the day
        }
        day_ = text_.Number();
        if (count == 1) {
            text_.SkipDigits();
        } else {
            text_.Skip(2);
        }
    }

    void ReadYear(std::size_t count) {
        switch (count) {
            case 1:
                year_ = text_.Number() + 1900;
                text_.Skip(year_ >= 1910 ? 2 : 1);
                break;
            case 2:
                year_ = text_.Number() + 1900;
                text_.Skip(2);
                break;
            case 4:
                year_ = text_.Number();
                text_.Skip(4);
                break;
            default:
                break;
        }
    }

    TextCursor text_;
    Reporter& log_;
    const LocaleFormats& locale_;
    int year_ = 0;
    int month_ = 0;
    int day_ = 0;
};

class TimeParse {
  public:
    explicit TimeParse(const char* text) : text_(text) {}

    void Walk(std::string_view format) {
        while (!format.empty() && !text_.AtEnd()) {
            Read(TakeItem(format, "hHmst"));
        }
        if (text_.Rest() == " AM") {
            afternoon_ = false;
            text_.Skip(3);
        } else if (text_.Rest() == " PM") {
            afternoon_ = true;
            text_.Skip(3);
        }
        if (afternoon_ && hour_ != 12) {
            hour_ += 12;
        }
    }

    // Read to its end, and a time that exists.
    bool IsTime() const {
        return anyNumber_ && text_.AtEnd() && hour_ <= 23 && minute_ <= 59 && second_ <= 59;
    }

    void Store(DateTime& time) const {
        time.hour = static_cast<std::uint8_t>(hour_);
        time.minute = static_cast<std::uint8_t>(minute_);
        time.second = static_cast<std::uint8_t>(second_);
    }

  private:
    void Read(const FormatItem& item) {
        switch (item.letter) {
            case 'h':
            case 'H':
                ReadNumber(item.count, hour_);
                break;
            case 'm':
                ReadNumber(item.count, minute_);
                break;
            case 's':
                ReadNumber(item.count, second_);
                break;
            case 't':
                afternoon_ = text_.Next() == 'P' || text_.Next() == 'p';
                text_.Skip(item.count);
                break;
            default:
                if (text_.Next() == item.letter) {
                    text_.Skip(1);
                }
                break;
        }
    }

    // Where no number stands, none is read and none skipped: "2:30 PM" has no seconds, and its marker must
    // not be taken for them.
    void ReadNumber(std::size_t count, int& value) {
        if (!IsDigit(text_.Next())) {
            return;
        }
        anyNumber_ = true;
        value = text_.Number();
        if (count == 1) {
            text_.SkipDigits();
        } else {
            text_.Skip(2);
        }
    }

    TextCursor text_;
    bool anyNumber_ = false;
    int hour_ = 0;
    int minute_ = 0;
    int second_ = 0;
    bool afternoon_ = false;
};

}  // namespace

bool DateTime::SetShortDate(const char* text, Reporter& log, const LocaleFormats& locale) {
    Set(None());
    if (text == nullptr) {
        return false;
    }
    try {
        char format[kFormatSize] = "";
        if (!locale.ShortDateFormat(format, sizeof format)) {
            log.LOGOEMERROR(kSource, kNoDateFormatLine, "GetDateLocaleFormat");
            return false;
        }
        DateParse parse(text, log, locale);
        if (!parse.Walk(format) || !parse.IsDate()) {
            return false;
        }
        Set(parse.Date());
        return true;
    } catch (...) {
        log.LOGEXCEPTION("DateTime::SetShortDate");
        return false;
    }
}

bool DateTime::SetShortTime(const char* text, Reporter& log, const LocaleFormats& locale) {
    if (text == nullptr) {
        return false;
    }
    try {
        char format[kFormatSize] = "";
        if (!locale.TimeFormat(format, sizeof format)) {
            log.LOGOEMERROR(kSource, kNoTimeFormatLine, "GetTimeLocaleFormat");
            return false;
        }
        TimeParse parse(text);
        parse.Walk(format);
        if (parse.IsTime()) {
            parse.Store(*this);
        }
        return true;
    } catch (...) {
        log.LOGEXCEPTION("DateTime::SetShortTime");
        return false;
    }
}

}  // namespace kx
