// Small HTML files: a titled document with one table, written line by line, and elements found in a file that
// was read.
//
// Nothing is escaped and no encoding is touched: texts are Windows-1252 and go into the file as they are. Tag
// names are compared byte by byte, so "<P>" is found by "P" and not by "p".
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lib/byte_stream.h"
#include "lib/reporter.h"

namespace kx {

// A colour is 0xRRGGBB here, as HTML writes it.
inline constexpr std::uint32_t kCellBorderColor = 0xC0C0C0;
inline constexpr std::uint32_t kCellTextColor = 0x000000;

class HtmlDocument {
  public:
    static constexpr std::size_t kTitleSize = 64;
    static constexpr std::size_t kMaxColumns = 32;
    // One line with its end and a terminator; what is longer loses its tail, its line end included.
    static constexpr std::size_t kLineSize = 1024;

    // log may be null and must outlive the document.
    explicit HtmlDocument(Reporter* log) : log_(log) {}
    HtmlDocument(const HtmlDocument&) = delete;
    HtmlDocument& operator=(const HtmlDocument&) = delete;

    // Has the file load its whole content, which the finders below then search; the file must outlive that. A
    // failure is reported ("Could not open HTML file."), and there is then no content.
    virtual bool Load(ByteSource& file);
    // Writes the body rows of the table, by BeginRow, Cell and EndRow; called by WriteTable. None here.
    virtual void WriteRows(ByteSink& file);
    virtual ~HtmlDocument() = default;

    // ---- writing; a line that cannot be written is not reported

    // Cut at 63 characters. Null: empty.
    void SetTitle(const char* text);
    // The text stays the caller's and must outlive the document. A 33rd column and a null one are ignored.
    void AddColumn(const char* title);

    // The whole document into the file, which is created anew. False, with a report ("Could not open HTML
    // file."), when that fails.
    bool WriteDocument(ByteSink& file);
    void WriteHead(ByteSink& file) const;
    void WriteBody(ByteSink& file);
    void WriteTable(ByteSink& file);
    void WriteHeaderRow(ByteSink& file) const;

    static void OpenTag(ByteSink& file, const char* tag);
    static void CloseTag(ByteSink& file, const char* tag);
    // A line of a statement file: a tab, the opening tag, the text, the closing tag.
    static void WriteElement(ByteSink& file, const char* tag, const char* text);
    static void BeginRow(ByteSink& file);
    static void Cell(ByteSink& file, const char* text, std::uint32_t border = kCellBorderColor,
                     std::uint32_t color = kCellTextColor);
    static void EndRow(ByteSink& file);

    // ---- reading; positions are byte offsets into the loaded content, and nothing is found without one

    // The offset behind the first <tag> at or after `from`; 0: none.
    std::uint32_t FindOpenTag(std::uint32_t from, std::string_view tag) const;
    // The offset behind the first <BODY> at or after `from` or, when there is none, behind the first <body>;
    // 0: none.
    std::uint32_t FindBody(std::uint32_t from) const;
    // The content of the first <tag> at or after `from`, which ends at the next </tag>: returns its offset
    // and copies at most size - 1 bytes of it, terminated, unless buffer is null or size 0. Returns 0 and
    // copies nothing when one of the tags is missing or nothing stands between them.
    std::uint32_t ReadElement(std::uint32_t from, std::string_view tag, char* buffer, std::size_t size) const;

  protected:
    Reporter* Log() const { return log_; }
    std::string_view Content() const { return content_; }
    void SetContent(std::string_view content) { content_ = content; }

  private:
    Reporter* log_;
    std::string_view content_;
    char title_[kTitleSize] = {};
    std::array<const char*, kMaxColumns> columnTitles_{};
    std::size_t columnCount_ = 0;
};

}  // namespace kx
