// Statement files and the typing completion: a library that is full, and the keystrokes of a statement.
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bench/ratio.h"
#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"

namespace {

using kx::StatementLibrary;
using kx::StatementMatcher;

// A file of the C library, the same for the floor and for the subject.
class File final : public kx::ByteSource, public kx::ByteSink {
  public:
    explicit File(const char* path) : path_(path) {}

    bool CreateAlways(kx::Reporter* /*log*/) override {
        content_.clear();
        return true;
    }
    bool Write(const void* bytes, std::uint32_t count) override {
        const char* const first = static_cast<const char*>(bytes);
        content_.insert(content_.end(), first, first + count);
        return true;
    }
    bool Save() const {
        const Handle file(std::fopen(path_, "wb"));
        return file != nullptr &&
               std::fwrite(content_.data(), 1, content_.size(), file.get()) == content_.size();
    }
    bool LoadAll(kx::Reporter* /*log*/) override {
        const Handle file(std::fopen(path_, "rb"));
        if (file == nullptr || std::fseek(file.get(), 0, SEEK_END) != 0) {
            return false;
        }
        const auto size = static_cast<std::size_t>(std::ftell(file.get()));
        std::rewind(file.get());
        loaded_.reset(new char[size + 1]);
        length_ = static_cast<std::uint32_t>(std::fread(loaded_.get(), 1, size, file.get()));
        loaded_[length_] = '\0';
        return length_ == size;
    }
    const char* Content() const override { return loaded_.get(); }
    std::uint32_t Length() const override { return length_; }

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using Handle = std::unique_ptr<std::FILE, Closer>;

    const char* path_;
    std::vector<char> content_;
    std::unique_ptr<char[]> loaded_;
    std::uint32_t length_ = 0;
};

// Sentences as they are written: a few openings shared by many, differing in the middle and at the end.
std::string Sentence(std::size_t number) {
    constexpr const char* kOpenings[] = {"Ritmo sinusale",
                                         "Fibrillazione atriale",
                                         "Blocco di branca destra",
                                         "Battiti ectopici",
                                         "Onde T negative",
                                         "Ipertrofia ventricolare",
                                         "Deviazione assiale",
                                         "Segni di",
                                         "Alterazioni aspecifiche",
                                         "Sopraslivellamento",
                                         "Tachicardia",
                                         "Pausa",
                                         "QRS di durata",
                                         "Emiblocco",
                                         "Ritmo da pacemaker",
                                         "Asse elettrico"};
    return std::string(kOpenings[number % std::size(kOpenings)]) + " numero " + std::to_string(number) +
           ", da confrontare con il tracciato precedente e con il quadro clinico del paziente.";
}

std::string Code(std::size_t number) {
    return {static_cast<char>('a' + number % 26), static_cast<char>('a' + number / 26 % 26),
            static_cast<char>('0' + number / 676)};
}

int MeasureLoading() {
    StatementLibrary full;
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        full.SetTitle(section, "Sezione " + std::to_string(section));
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            const std::size_t number = section * StatementLibrary::kEntries + entry;
            full.SetText(section, entry, Sentence(number));
            full.SetCode(section, entry, Code(number));
        }
    }
    constexpr char kPath[] = "statements_bench.htm";
    File file(kPath);
    kx::WriteStatements(full, file);
    StatementLibrary library;
    kx::StatementReader reader(nullptr);
    if (!file.Save() || !reader.Read(file, library)) {
        return 1;
    }
    kx::bench::Run(
        "load_full_statement_library", 2.0,
        [&] {
            file.LoadAll(nullptr);
            kx::bench::Keep(std::memchr(file.Content(), '\1', file.Length()) != nullptr ? 1 : 0);
        },
        [&] {
            reader.Read(file, library);
            kx::bench::Keep(library.Text(47, 63)[0]);
        });
    std::remove(kPath);
    return 0;
}

// The bare scan: every text against what is typed, without regard to case.
std::size_t CountBeginning(const std::vector<kx::CompletionEntry>& entries, std::string_view prefix) {
    std::size_t count = 0;
    for (const kx::CompletionEntry& entry : entries) {
        std::size_t at = 0;
        while (at < prefix.size() && kx::Folded(entry.text[at]) == kx::Folded(prefix[at])) {
            ++at;
        }
        count += at == prefix.size() ? 1 : 0;
    }
    return count;
}

void MeasureCompletion() {
    StatementMatcher matcher;
    std::vector<kx::CompletionEntry> entries(StatementMatcher::kMaxEntries);
    for (std::size_t number = 0; number < entries.size(); ++number) {
        matcher.Add(Sentence(number), Code(number));
        std::snprintf(entries[number].text, sizeof entries[number].text, "%s", Sentence(number).c_str());
    }
    // One call types a statement to its number, a character at a time.
    const std::string typed = "blocco di branca DESTRA numero 9";
    const auto scan = [&] {
        std::size_t found = 0;
        for (std::size_t length = 1; length <= typed.size(); ++length) {
            found += CountBeginning(entries, std::string_view(kx::bench::Fresh(typed.data()), length));
        }
        kx::bench::Keep(static_cast<double>(found));
    };
    kx::bench::Run("completion_of_1024_entries", 2.0, scan, [&] {
        matcher.Start(0, std::string_view(typed).substr(0, 1));
        for (std::size_t at = 1; at < typed.size(); ++at) {
            matcher.Extend(at, typed[at]);
        }
        kx::bench::Keep(matcher.Match(0).text[0]);
    });
    // The first letter of a statement behind a line that is none.
    const std::string line = "il paziente riferisce cardiopalmo da circa due settimane; r";
    kx::bench::Run(
        "completion_at_end_of_line", 2.0,
        [&] {
            const std::size_t found = CountBeginning(entries, kx::bench::Fresh("r"));
            kx::bench::Keep(static_cast<double>(found));
        },
        [&] {
            matcher.Start(0, line);
            kx::bench::Keep(matcher.Match(0).text[0]);
        });
}

}  // namespace

int main() {
    const int failed = MeasureLoading();
    MeasureCompletion();
    return failed;
}
