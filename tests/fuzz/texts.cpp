// Bytes as texts that a user or a site writes: scripts, staff, statements, dates and times.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "lib/timestmp.h"
#include "suite/kxdb/staff_list.h"
#include "suite/kxrender/script.h"
#include "tests/fuzz/targets.h"
#include "tests/rig/memory_file.h"
#include "tests/rig/plain_locale.h"

namespace kx::fuzz {
namespace {

class FuzzValues final : public render::ScriptValues {
  public:
    std::string Field(int code) const override { return code % 3 == 0 ? "" : code % 3 == 1 ? " -1.5 mm @ 3:10 [V5] " : "Load"; }
    std::string WithPatient(const std::string& text) const override { return text; }
};

template <class Record>
void RequireName(const Record& record) {
    const auto isTerminated = [](const auto&... fields) { return ((std::memchr(fields, '\0', sizeof fields) != nullptr) && ...); };
    Require(record.lastName[0] != '\0' && isTerminated(record.lastName, record.firstName, record.initial));
}

// Whether every field is within its size and none holds a tag of the format.
bool IsPlain(const StatementLibrary& library) {
    bool plain = true;
    const auto check = [&plain](std::string_view text, std::size_t size) {
        Require(!text.empty() && text.size() < size);
        plain = plain && text.find('<') == std::string_view::npos;
    };
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        check(library.Title(section), StatementLibrary::kTextSize);
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            check(library.Text(section, entry), StatementLibrary::kTextSize);
            check(library.Code(section, entry), StatementLibrary::kCodeSize);
        }
    }
    return plain;
}

void Complete(const StatementLibrary& library, std::string_view typed) {
    StatementMatcher matcher;
    matcher.AddStatements(library, nullptr);
    const bool found = matcher.Start(7, typed);
    Require(found == (matcher.MatchCount() > 0) && matcher.MatchCount() <= StatementMatcher::kMaxMatches);
    for (std::size_t index = 0; index < matcher.MatchCount(); ++index) {
        const auto& match = matcher.Match(index);
        Require(BeginsWithFolded(match.text, matcher.Prefix()) || BeginsWithFolded(match.code, matcher.Prefix()));
    }
    matcher.Extend(matcher.PrefixStart() + matcher.Prefix().size(), 'a');
    matcher.Extend(matcher.PrefixStart(), 'r');
}

// Up to a zero byte, which goes too.
std::string TakeText(Bytes& input) {
    const std::size_t zero = TextOf(input).find('\0');
    const std::string text(TextOf(input).substr(0, zero));
    input = input.subspan(std::min(text.size() + 1, input.size()));
    return text;
}

void ReadTyped(const std::string& typed, const test::PlainLocale& locale, const KxDateTime& time) {
    SilentReporter log;
    DateTime date = time, timeOfDay = time;
    if (date.SetShortDate(typed.c_str(), log, locale)) {
        Require(date.month >= 1 && date.month <= 12 && date.day >= 1 && date.day <= 31 && date.year > 0);
    } else {
        Require(date.Compare(DateTime::None()) == 0);
    }
    timeOfDay.SetShortTime(typed.c_str(), log, locale);
    const KxDateTime& read = timeOfDay;
    Require(std::memcmp(&read, &time, 4) == 0 && read.hundredths == time.hundredths);
    Require((read.hour == time.hour && read.minute == time.minute && read.second == time.second) ||
            (read.hour <= 23 && read.minute <= 59 && read.second <= 59));
}

void Calculate(const KxDateTime& time, std::int64_t amount) {
    DateTime moved = time;
    moved.AddMilliseconds(amount);
    Require(moved.month >= 1 && moved.month <= 12 && moved.day >= 1 && moved.Hour() <= 23 && moved.Minute() <= 59 && moved.Second() <= 59);
    // A year that the stamp does not hold is the nearest that it does, where the way back ends.
    constexpr int kLastExactYear = 32000;
    if (std::abs(moved.Year()) < kLastExactYear) {
        Require(moved.day <= DateTime::DaysInMonth(moved.Month(), moved.Year()));
        DateTime back = moved;
        back.AddDays(400);
        back.AddDays(-400);
        Require(std::memcmp(&back, &moved, sizeof back) == 0);
    }
    DateTime(time).WeekOfYear();
    DateTime(time).MillisecondsSince(moved);
    moved.AddMonths(static_cast<std::int32_t>(amount));
    Require(moved.Month() >= 1 && moved.Month() <= 12);
}

void ShowEverything(const DateTime& time, std::int64_t amount, const test::PlainLocale& locale) {
    for (const std::size_t size : {0u, 1u, 9u, 60u}) {
        std::string buffer(size, 'x');
        char* text = size > 0 ? buffer.data() : nullptr;
        time.DateAndTime(text, size, locale);
        time.LongDateAndTime(text, size, locale);
        time.ShortTimeNoMarker(text, size, locale);
        if (time.TimeAfter(amount, text, size, locale)) {
            Require(buffer.find('\0') != std::string::npos && buffer.find('(') != std::string::npos);
        }
        DurationMinSec(static_cast<std::uint32_t>(amount), text, size);
        DurationHourMin(static_cast<std::uint32_t>(amount), text, size);
    }
}

}  // namespace

// Into buffers of several sizes: the report stays inside and is the longer one's beginning.
void Script(Bytes input) {
    SilentReporter log;
    std::vector<char> whole(32 * input.size() + 64);
    Require(render::RunScript(TextOf(input), FuzzValues(), whole.data(), whole.size(), log));
    for (const std::size_t room : {1u, 7u, 40u}) {
        std::vector<char> part(room);
        Require(render::RunScript(TextOf(input), FuzzValues(), part.data(), room, log) &&
                std::strncmp(part.data(), whole.data(), std::strlen(part.data())) == 0);
    }
}

// Every record that comes of them is terminated and names somebody.
void Staff(Bytes input) {
    SilentReporter log;
    const db::StaffList staff = db::ParseStaff(TextOf(input), "staff.csv", log);
    std::ranges::for_each(staff.technicians, [](const auto& one) { RequireName(one); });
    std::ranges::for_each(staff.physicians, [](const auto& one) { RequireName(one); });
}

// What is read can be completed from and written, and reads back the same.
void StatementFile(Bytes input) {
    test::MemoryFile file(TextOf(input)), written, again;
    StatementLibrary library, copy;
    StatementReader reader(nullptr);
    Require(reader.Read(file, library));
    Complete(library, std::string_view(file.bytes).substr(input.size() - std::min<std::size_t>(input.size(), 300)));
    Complete(library, library.Text(0, 0));
    WriteStatements(library, written);
    if (IsPlain(library)) {
        Require(reader.Read(written, copy));
        WriteStatements(copy, again);
        Require(again.bytes == written.bytes);
    }
}

// A locale's picture, a month's name and what a user typed, each up to a zero byte, and a time stamp behind them: what is read is a
// time that exists, or none.
void TypedTime(Bytes input) {
    test::PlainLocale locale;
    locale.picture = TakeText(input);
    locale.monthName = TakeText(input);
    const std::string typed = TakeText(input);
    struct {
        KxDateTime time;
        std::int64_t amount;
    } rest{};
    if (!input.empty()) {
        std::memcpy(&rest, input.data(), std::min(input.size(), sizeof rest));
    }
    ReadTyped(typed, locale, rest.time);
    Calculate(rest.time, rest.amount);
    ShowEverything(rest.time, rest.amount, locale);
}

}  // namespace kx::fuzz
