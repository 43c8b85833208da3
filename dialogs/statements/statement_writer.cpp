#include "dialogs/statements/statement_writer.h"

#include <span>
#include <string>

#include "lib/html_document.h"

namespace kx {
namespace {

void WriteEntry(const char* text, const char* code, ByteSink& file) {
    if (IsHidden(code)) {
        HtmlDocument::WriteElement(file, "P", text);
        return;
    }
    HtmlDocument::WriteElement(file, "P", (std::string(text) + '^' + code).c_str());
}

}  // namespace

void WriteStatements(const StatementLibrary& library, ByteSink& file) {
    HtmlDocument document(nullptr);
    document.SetTitle("Physician Dictionary");
    document.WriteHead(file);
    HtmlDocument::OpenTag(file, "BODY");
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        if (IsHidden(library.Title(section))) {
            continue;
        }
        HtmlDocument::WriteElement(file, "H1", library.Title(section));
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            if (!IsHidden(library.Text(section, entry))) {
                WriteEntry(library.Text(section, entry), library.Code(section, entry), file);
            }
        }
    }
    HtmlDocument::CloseTag(file, "BODY");
}

std::string_view FormatMark(std::string_view text, StatementPart part) {
    constexpr std::string_view kTitleMarks[] = {"</H1>"};
    constexpr std::string_view kStatementMarks[] = {"^", "</P>", "<H1>"};
    const auto first = [text](std::span<const std::string_view> marks) {
        std::string_view found;
        std::size_t earliest = std::string_view::npos;
        for (const std::string_view mark : marks) {
            if (const std::size_t at = text.find(mark); at < earliest) {
                earliest = at;
                found = mark;
            }
        }
        return found;
    };
    return part == StatementPart::kTitle ? first(kTitleMarks) : first(kStatementMarks);
}

}  // namespace kx
