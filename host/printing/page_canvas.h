// What a page is drawn on, whatever it becomes: a PDF file, a picture, a printer's page. Portable.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kxhost {

// Millimetres from the left upper corner of the sheet.
struct PagePoint {
    double x = 0;
    double y = 0;
};

struct PageArea {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

enum class Ink { kBlack, kGrey, kBlue };

struct PageFont {
    double points = 9;
    bool bold = false;
};

class PageCanvas {
  public:
    virtual ~PageCanvas() = default;

    // Paper with lines at every millimetre, and stronger ones at every five, the last on the area's edges.
    virtual void MillimetrePaper(const PageArea& area) = 0;
    virtual void Polyline(Ink ink, double widthMm, std::span<const PagePoint> points) = 0;
    // From the left end of the baseline; one line.
    virtual void Text(const PagePoint& baseline, const PageFont& font, Ink ink, std::wstring_view text) = 0;
};

// The width of a text in Helvetica, millimetres, by the metrics that Adobe publishes for it; Arial and its
// metric equivalents have the same. A bold one is reckoned a tenth wider.
double TextWidthMm(const PageFont& font, std::wstring_view text);
// The text in lines that are no wider; \n begins one. A word that is wider than a line is cut.
std::vector<std::wstring> WrapText(const PageFont& font, std::wstring_view text, double widthMm);

}  // namespace kxhost
