#include "host/report/report_listing.h"

#include <algorithm>

#include "host/report/report_fields.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {
namespace {

// Longer than any text of a record: an interpretation has 4096 bytes and takes one more line.
constexpr std::size_t kLongestText = 8192;

// Latin-1 from 0xC0 on: the letter that a person without an Italian keyboard types.
constexpr std::wstring_view kPlainLetters =
    L"aaaaaaaceeeeiiiidnooooo\u00D7ouuuuy\u00FEsaaaaaaaceeeeiiiidnooooo\u00F7ouuuuy\u00FEy";
static_assert(kPlainLetters.size() == 0x100 - 0xC0);

wchar_t Plain(wchar_t c) {
    if (c >= L'A' && c <= L'Z') {
        return static_cast<wchar_t>(c - L'A' + L'a');
    }
    return c >= 0xC0 && c <= 0xFF ? kPlainLetters[static_cast<std::size_t>(c - 0xC0)] : c;
}

std::wstring Plain(std::wstring_view text) {
    std::wstring plain(text);
    std::transform(plain.begin(), plain.end(), plain.begin(), [](wchar_t c) { return Plain(c); });
    return plain;
}

}  // namespace

std::vector<ReportRow> ListReport(const kx::TestRecord& test, const kx::SummaryRequest& request) {
    std::vector<ReportRow> rows;
    std::vector<char> text(kLongestText);
    for (const ReportField& field : ReportFields()) {
        kx::FieldText(test, field.code, text.data(), text.size(), request);
        rows.push_back({field.code, field.name, text.data()});
    }
    return rows;
}

std::string ExpandTemplate(const kx::TestRecord& test, std::string_view text) {
    // No placeholder becomes longer than a whole name.
    std::vector<char> output((text.size() + 1) * sizeof test.patientName);
    kx::ExpandPlaceholders(test, std::string(text).c_str(), output.data(), output.size());
    return output.data();
}

bool Matches(std::wstring_view text, std::wstring_view filter) {
    const std::wstring plainText = Plain(text);
    const std::wstring words = Plain(filter);
    std::size_t end = 0;
    for (std::size_t first = 0; (first = words.find_first_not_of(L" \t", end)) != std::wstring::npos;) {
        end = std::min(words.find_first_of(L" \t", first), words.size());
        if (plainText.find(words.substr(first, end - first)) == std::wstring::npos) {
            return false;
        }
    }
    return true;
}

}  // namespace kxhost
