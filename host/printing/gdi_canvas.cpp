#include "host/printing/gdi_canvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/windows/win32_handles.h"

namespace kxhost {
namespace {

constexpr COLORREF kMinorLine = RGB(250, 217, 212);
constexpr COLORREF kMajorLine = RGB(237, 168, 158);

COLORREF ColourOf(Ink ink, bool isMonochrome) {
    if (isMonochrome || ink == Ink::kBlack) {
        return RGB(0, 0, 0);
    }
    return ink == Ink::kGrey ? RGB(89, 89, 89) : RGB(0, 0, 128);
}

// A pen whose ends and corners do not reach beyond its line.
UniquePen MakePen(COLORREF colour, int width) {
    const LOGBRUSH brush{BS_SOLID, colour, 0};
    // NOLINTNEXTLINE(misc-redundant-expression): two of the styles are 0
    return UniquePen(ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | PS_JOIN_ROUND,
                                  static_cast<DWORD>(width), &brush, 0, nullptr));
}

}  // namespace

GdiCanvas::GdiCanvas(HDC dc, const SheetOnDevice& sheet) : dc_(dc), sheet_(sheet) {
    SetBkMode(dc, TRANSPARENT);
}

POINT GdiCanvas::Dot(double x, double y) const {
    return {std::lround(x * sheet_.dotsPerMmX) - sheet_.left,
            std::lround(y * sheet_.dotsPerMmY) - sheet_.top};
}

int GdiCanvas::Width(double mm) const {
    return std::max(1, static_cast<int>(std::lround(mm * sheet_.dotsPerMmX)));
}

void GdiCanvas::Lines(const PageArea& area, int everyMm, COLORREF colour, double widthMm) const {
    const UniquePen pen = MakePen(colour, Width(widthMm));
    const Selection selected(dc_, pen.get());
    const auto line = [this](POINT from, POINT to) {
        MoveToEx(dc_, static_cast<int>(from.x), static_cast<int>(from.y), nullptr);
        LineTo(dc_, static_cast<int>(to.x), static_cast<int>(to.y));
    };
    for (int mm = 0; mm <= std::lround(area.width); mm += everyMm) {
        line(Dot(area.left + mm, area.top), Dot(area.left + mm, area.top + area.height));
    }
    for (int mm = 0; mm <= std::lround(area.height); mm += everyMm) {
        line(Dot(area.left, area.top + mm), Dot(area.left + area.width, area.top + mm));
    }
}

void GdiCanvas::DottedPaper(const PageArea& area) const {
    for (int down = 0; down <= std::lround(area.height); ++down) {
        for (int across = 0; across <= std::lround(area.width); ++across) {
            const POINT dot = Dot(area.left + across, area.top + down);
            SetPixelV(dc_, static_cast<int>(dot.x), static_cast<int>(dot.y), RGB(0, 0, 0));
        }
    }
}

void GdiCanvas::MillimetrePaper(const PageArea& area) {
    if (sheet_.isMonochrome) {
        DottedPaper(area);
        return Lines(area, 5, RGB(0, 0, 0), 0);
    }
    Lines(area, 1, kMinorLine, 0.08);
    Lines(area, 5, kMajorLine, 0.16);
}

void GdiCanvas::Polyline(Ink ink, double widthMm, std::span<const PagePoint> points) {
    std::vector<POINT> dots;
    for (const PagePoint& point : points) {
        dots.push_back(Dot(point.x, point.y));
    }
    const UniquePen pen = MakePen(ColourOf(ink, sheet_.isMonochrome), Width(widthMm));
    const Selection selected(dc_, pen.get());
    if (dots.size() > 1) {
        ::Polyline(dc_, dots.data(), static_cast<int>(dots.size()));
    }
}

void GdiCanvas::Text(const PagePoint& baseline, const PageFont& font, Ink ink, std::wstring_view text) {
    constexpr double kMmPerPoint = 25.4 / 72;
    LOGFONTW described{};
    described.lfHeight = -std::lround(font.points * kMmPerPoint * sheet_.dotsPerMmY);
    described.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    // A dot of one bit is black or white: grey edges would become ragged ones.
    described.lfQuality = sheet_.isMonochrome ? NONANTIALIASED_QUALITY : DEFAULT_QUALITY;
    described.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    constexpr std::wstring_view kFace = L"Arial";
    kFace.copy(described.lfFaceName, LF_FACESIZE - 1);
    const UniqueFont made(CreateFontIndirectW(&described));
    const Selection selected(dc_, made.get());
    SetTextColor(dc_, ColourOf(ink, sheet_.isMonochrome));
    SetTextAlign(dc_, TA_LEFT | TA_BASELINE);
    const POINT dot = Dot(baseline.x, baseline.y);
    TextOutW(dc_, static_cast<int>(dot.x), static_cast<int>(dot.y), text.data(),
             static_cast<int>(text.size()));
}

}  // namespace kxhost
