#include "lib/html_document.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

namespace kx {
namespace {

constexpr char kCouldNotOpen[] = "Could not open HTML file.";

[[gnu::format(printf, 2, 3)]] void WriteLine(ByteSink& file, const char* format, ...) {
    char line[HtmlDocument::kLineSize];
    std::va_list values;
    va_start(values, format);
    const int wanted = std::vsnprintf(line, sizeof line, format, values);
    va_end(values);
    if (wanted > 0) {
        file.Write(line, static_cast<std::uint32_t>(
                             std::min<std::size_t>(static_cast<std::size_t>(wanted), sizeof line - 1)));
    }
}

const char* OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace

bool HtmlDocument::Load(ByteSource& file) {
    content_ = {};
    if (!file.LoadAll(nullptr)) {
        if (log_ != nullptr) {
            log_->LOGSYSTEMERROR(kCouldNotOpen);
        }
        return false;
    }
    content_ = {file.Content(), file.Length()};
    return true;
}

void HtmlDocument::WriteRows(ByteSink& /*file*/) {}

void HtmlDocument::SetTitle(const char* text) {
    std::snprintf(title_, sizeof title_, "%s", OrEmpty(text));
}

void HtmlDocument::AddColumn(const char* title) {
    if (title != nullptr && columnCount_ < kMaxColumns) {
        columnTitles_[columnCount_++] = title;
    }
}

bool HtmlDocument::WriteDocument(ByteSink& file) {
    if (!file.CreateAlways(nullptr)) {
        if (log_ != nullptr) {
            log_->LOGSYSTEMERROR(kCouldNotOpen);
        }
        return false;
    }
    OpenTag(file, "HTML");
    WriteHead(file);
    WriteBody(file);
    CloseTag(file, "HTML");
    return true;
}

void HtmlDocument::WriteHead(ByteSink& file) const {
    OpenTag(file, "HEAD");
    WriteLine(file, "<TITLE>%s</TITLE>\r\n", title_);
    CloseTag(file, "HEAD");
}

void HtmlDocument::WriteBody(ByteSink& file) {
    OpenTag(file, "BODY");
    WriteTable(file);
    CloseTag(file, "BODY");
}

void HtmlDocument::WriteTable(ByteSink& file) {
    WriteLine(
        file,
        "<TABLE BORDER=1 BGCOLOR=#ffffff CELLSPACING=0><FONT FACE=\"Arial\" COLOR=#000000><CAPTION><B>%s</B>"
        "</CAPTION></FONT>\r\n",
        title_);
    OpenTag(file, "THEAD");
    WriteHeaderRow(file);
    CloseTag(file, "THEAD");
    OpenTag(file, "TBODY");
    WriteRows(file);
    CloseTag(file, "TBODY");
    OpenTag(file, "TFOOT");
    CloseTag(file, "TFOOT");
    CloseTag(file, "TABLE");
}

void HtmlDocument::WriteHeaderRow(ByteSink& file) const {
    BeginRow(file);
    for (std::size_t column = 0; column < columnCount_; ++column) {
        WriteLine(file,
                  "<TH BGCOLOR=#c0c0c0 BORDERCOLOR=#000000 ><FONT style=FONT-SIZE:10pt FACE=\"Arial\" "
                  "COLOR=#000000>%s"
                  "</FONT></TH>\r\n",
                  columnTitles_[column]);
    }
    EndRow(file);
}

void HtmlDocument::OpenTag(ByteSink& file, const char* tag) {
    WriteLine(file, "<%s>\r\n", tag);
}

void HtmlDocument::CloseTag(ByteSink& file, const char* tag) {
    WriteLine(file, "</%s>\r\n", tag);
}

void HtmlDocument::WriteElement(ByteSink& file, const char* tag, const char* text) {
    WriteLine(file, "\t<%s>%s</%s>\r\n", tag, OrEmpty(text), tag);
}

void HtmlDocument::BeginRow(ByteSink& file) {
    OpenTag(file, "TR");
}

void HtmlDocument::Cell(ByteSink& file, const char* text, std::uint32_t border, std::uint32_t color) {
    WriteLine(
        file,
        "<TD BORDERCOLOR=#%06X ><FONT style=FONT-SIZE:10pt FACE=\"Arial\" COLOR=#%06X>%s</FONT></TD>\r\n",
        static_cast<unsigned>(border & 0xFFFFFF), static_cast<unsigned>(color & 0xFFFFFF), OrEmpty(text));
}

void HtmlDocument::EndRow(ByteSink& file) {
    CloseTag(file, "TR");
}

std::uint32_t HtmlDocument::FindOpenTag(std::uint32_t from, std::string_view tag) const {
    const std::string mark = '<' + std::string(tag) + '>';
    const std::size_t found = content_.find(mark, from);
    return found != std::string_view::npos ? static_cast<std::uint32_t>(found + mark.size()) : 0;
}

std::uint32_t HtmlDocument::FindBody(std::uint32_t from) const {
    const std::uint32_t upper = FindOpenTag(from, "BODY");
    return upper != 0 ? upper : FindOpenTag(from, "body");
}

std::uint32_t HtmlDocument::ReadElement(std::uint32_t from, std::string_view tag, char* buffer,
                                        std::size_t size) const {
    const std::uint32_t start = FindOpenTag(from, tag);
    const std::size_t end =
        start != 0 ? content_.find("</" + std::string(tag) + '>', start) : std::string_view::npos;
    if (end == std::string_view::npos || end == start) {
        return 0;
    }
    if (buffer != nullptr && size > 0) {
        const std::size_t copied = std::min<std::size_t>(end - start, size - 1);
        std::memcpy(buffer, content_.data() + start, copied);
        buffer[copied] = '\0';
    }
    return start;
}

}  // namespace kx
