// A page on a device context: a picture's or a printer's.
#pragma once

#include <windows.h>

#include "host/printing/page_canvas.h"

namespace kxhost {

// Where the sheet lies on a device.
struct SheetOnDevice {
    double dotsPerMmX = 0;
    double dotsPerMmY = 0;
    int left = 0;  // the device's first dot on the sheet, dots from its left edge, and from its top edge
    int top = 0;
    bool isMonochrome = false;  // one bit a dot: paper in dots, so that the trace stands out
};

class GdiCanvas final : public PageCanvas {
  public:
    // The device context outlives the canvas.
    GdiCanvas(HDC dc, const SheetOnDevice& sheet);

    void MillimetrePaper(const PageArea& area) override;
    void Polyline(Ink ink, double widthMm, std::span<const PagePoint> points) override;
    void Text(const PagePoint& baseline, const PageFont& font, Ink ink, std::wstring_view text) override;

  private:
    POINT Dot(double x, double y) const;
    void DottedPaper(const PageArea& area) const;
    void Lines(const PageArea& area, int everyMm, COLORREF colour, double widthMm) const;
    int Width(double mm) const;

    HDC dc_;
    SheetOnDevice sheet_;
};

}  // namespace kxhost
