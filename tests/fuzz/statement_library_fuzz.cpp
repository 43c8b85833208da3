// Any bytes as a statement file: what is read can be completed from and written, and reads back the same.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "tests/rig/memory_file.h"

namespace {

using kx::StatementLibrary;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
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
    kx::StatementMatcher matcher;
    matcher.AddStatements(library, nullptr);
    const bool found = matcher.Start(7, typed);
    Require(found == (matcher.MatchCount() > 0) && matcher.MatchCount() <= kx::StatementMatcher::kMaxMatches);
    for (std::size_t index = 0; index < matcher.MatchCount(); ++index) {
        Require(kx::BeginsWithFolded(matcher.Match(index).text, matcher.Prefix()) ||
                kx::BeginsWithFolded(matcher.Match(index).code, matcher.Prefix()));
    }
    matcher.Extend(matcher.PrefixStart() + matcher.Prefix().size(), 'a');
    matcher.Extend(matcher.PrefixStart(), 'r');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::test::MemoryFile file(std::string_view(reinterpret_cast<const char*>(data), size));
    StatementLibrary library;
    kx::StatementReader reader(nullptr);
    Require(reader.Read(file, library));
    Complete(library, std::string_view(file.bytes).substr(size - std::min<std::size_t>(size, 300)));
    Complete(library, library.Text(0, 0));

    kx::test::MemoryFile written;
    kx::WriteStatements(library, written);
    if (IsPlain(library)) {
        kx::test::MemoryFile again;
        StatementLibrary copy;
        Require(reader.Read(written, copy));
        kx::WriteStatements(copy, again);
        Require(again.bytes == written.bytes);
    }
    return 0;
}
