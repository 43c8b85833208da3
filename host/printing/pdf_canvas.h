// A page as a PDF file of one page: lines, and text in the standard fonts that every viewer has. Portable.
//
// Written here because so little is needed of PDF: two fonts of the standard fourteen, one stream of lines
// and texts. A library would bring fonts, pictures and compression that nobody asks for.
#pragma once

#include <string>

#include "host/printing/page_canvas.h"

namespace kxhost {

class PdfCanvas final : public PageCanvas {
  public:
    // The sheet, millimetres.
    PdfCanvas(double widthMm, double heightMm) : width_(widthMm), height_(heightMm) {}

    void MillimetrePaper(const PageArea& area) override;
    void Polyline(Ink ink, double widthMm, std::span<const PagePoint> points) override;
    void Text(const PagePoint& baseline, const PageFont& font, Ink ink, std::wstring_view text) override;

    // The file (PDF 1.4), whose viewers are asked to print it at its size. title: in the viewer's caption.
    std::string File(std::wstring_view title) const;

  private:
    void Number(double value);
    void Point(const PagePoint& point, const char* operation);
    void Stroke(const char* colour, double widthMm);

    double width_;
    double height_;
    std::string content_;
};

}  // namespace kxhost
