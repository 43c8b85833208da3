// Bytes as texts that a user or a site writes: scripts, statements, dates and times.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "lib/timestmp.h"
#include "suite/kxrender/script.h"
#include "tests/fuzz/targets.h"
#include "tests/rig/memory_file.h"
#include "tests/unit/picture_locale.h"

namespace kx::fuzz {
namespace {

class FuzzValues final : public render::ScriptValues {
  public:
    std::string Field(int code) const override { return code % 3 == 0 ? "" : code % 3 == 1 ? " -1.5 mm @ 3:10 [V5] " : "Load"; }
    std::string WithPatient(const std::string& text) const override { return text; }
};

// Whether no text holds a tag of the format.
bool IsPlain(const StatementLibrary& library) {
    bool plain = true;
    for (std::size_t i = 0; i < StatementLibrary::kSections * StatementLibrary::kEntries; ++i) {
        const std::size_t section = i / StatementLibrary::kEntries, entry = i % StatementLibrary::kEntries;
        for (const std::string_view text : {library.Title(section), library.Text(section, entry), library.Code(section, entry)}) {
            Require(!text.empty() && text.size() < StatementLibrary::kTextSize);
            plain = plain && text.find('<') == std::string_view::npos;
        }
    }
    return plain;
}

void Complete(const StatementLibrary& library, std::string_view typed) {
    StatementMatcher matcher;
    matcher.AddStatements(library, nullptr);
    Require(matcher.Start(7, typed) == (matcher.MatchCount() > 0) && matcher.MatchCount() <= StatementMatcher::kMaxMatches);
    for (std::size_t index = 0; index < matcher.MatchCount(); ++index) {
        const auto& match = matcher.Match(index);
        Require(BeginsWithFolded(match.text, matcher.Prefix()) || BeginsWithFolded(match.code, matcher.Prefix()));
    }
    matcher.Extend(matcher.PrefixStart() + matcher.Prefix().size(), 'a');
}

// Up to a zero byte, which goes too.
std::string TakeText(Bytes& input) {
    const std::size_t zero = TextOf(input).find('\0');
    std::string text(TextOf(input).substr(0, zero));
    input = input.subspan(std::min(text.size() + 1, input.size()));
    return text;
}

}  // namespace

// The report stays inside its buffer and is the longer one's beginning.
void Script(Bytes input) {
    SilentReporter log;
    std::vector<char> whole(32 * input.size() + 64);
    Require(render::RunScript(TextOf(input), FuzzValues(), whole.data(), whole.size(), log));
    std::vector<char> part(7);
    Require(render::RunScript(TextOf(input), FuzzValues(), part.data(), part.size(), log));
    Require(std::string_view(whole.data()).starts_with(part.data()));
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

// A locale's picture, its months and what a user typed, each up to a zero byte, and a time stamp behind them: what is read is a
// time that exists, or none.
void TypedTime(Bytes input) {
    test::PictureLocale locale = test::Italian();
    locale.shortDate = locale.time = TakeText(input);
    locale.months = locale.abbreviations = TakeText(input);
    const std::string typed = TakeText(input);
    KxDateTime time{};
    std::copy_n(input.begin(), std::min(input.size(), sizeof time), reinterpret_cast<std::uint8_t*>(&time));
    SilentReporter log;
    DateTime date = time, timeOfDay = time;
    const bool isDate = date.SetShortDate(typed.c_str(), log, locale);
    Require(isDate ? date.month >= 1 && date.month <= 12 && date.day >= 1 && date.day <= 31 && date.year > 0
                   : date.Compare(DateTime::None()) == 0);
    timeOfDay.SetShortTime(typed.c_str(), log, locale);
    const KxDateTime& read = timeOfDay;
    Require(std::memcmp(&read, &time, 4) == 0 && read.hundredths == time.hundredths);
    Require((read.hour == time.hour && read.minute == time.minute && read.second == time.second) ||
            (read.hour <= 23 && read.minute <= 59 && read.second <= 59));
}

}  // namespace kx::fuzz
