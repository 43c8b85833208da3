// The texts of a test's report fields as rows to look through, to search and to print.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lib/dbclient/summary_text.h"

namespace kxhost {

struct ReportRow {
    int code;
    std::wstring name;
    std::string text;  // Windows-1252, as the report has it
};

// One row for each of ReportFields(). A field that the test has no answer for keeps what the library wrote
// all the same: an empty text or "..".
std::vector<ReportRow> ListReport(const kx::TestRecord& test, const kx::SummaryRequest& request);

// The template with the patient in its placeholders, whole however long it becomes. Windows-1252.
std::string ExpandTemplate(const kx::TestRecord& test, std::string_view text);

// One line in which every character is seen: CR, LF, tab and backslash as \r, \n, \t and \\.
template <class Character>
std::basic_string<Character> OneLine(std::basic_string_view<Character> text) {
    std::basic_string<Character> line;
    for (const Character c : text) {
        const char shown = c == Character{'\r'}   ? 'r'
                           : c == Character{'\n'} ? 'n'
                           : c == Character{'\t'} ? 't'
                           : c == Character{'\\'} ? '\\'
                                                  : '\0';
        if (shown != '\0') {
            line += Character{'\\'};
        }
        line += shown != '\0' ? static_cast<Character>(shown) : c;
    }
    return line;
}

// Whether every word of the filter stands somewhere in the text; without a word always. Neither case nor the
// accents of the Latin alphabet count, so that "eta" finds "Età".
bool Matches(std::wstring_view text, std::wstring_view filter);

}  // namespace kxhost
