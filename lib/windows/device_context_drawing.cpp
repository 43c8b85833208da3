// The operations of DeviceContext that put something on the device.
#include <cstddef>

#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"

namespace kx {

RECT DeviceContext::DeviceRect(const RECT& area) const {
    return {transform_.DeviceX(area.left), transform_.DeviceY(area.top), transform_.DeviceX(area.right),
            transform_.DeviceY(area.bottom)};
}

void DeviceContext::TransformInPlace(POINT* points, int count) const {
    for (int i = 0; i < count; ++i) {
        points[i].x = transform_.DeviceX(points[i].x);
        points[i].y = transform_.DeviceY(points[i].y);
    }
}

// Filling and copying.

BOOL DeviceContext::Fill(int x, int y, int w, int h, DWORD operation) {
    return PatBlt(handle_, transform_.DeviceX(x), transform_.DeviceY(y), ScaleX(w), ScaleY(h), operation);
}

BOOL DeviceContext::FillPattern(int x, int y, int w, int h) {
    return Fill(x, y, w, h, PATCOPY);
}
BOOL DeviceContext::FillBlack(int x, int y, int w, int h) {
    return Fill(x, y, w, h, BLACKNESS);
}
BOOL DeviceContext::FillWhite(int x, int y, int w, int h) {
    return Fill(x, y, w, h, WHITENESS);
}
BOOL DeviceContext::InvertPattern(int x, int y, int w, int h) {
    return Fill(x, y, w, h, PATINVERT);
}

BOOL DeviceContext::CopyFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy) {
    return BitBlt(handle_, transform_.DeviceX(x), transform_.DeviceY(y), ScaleX(w), ScaleY(h),
                  source.Handle(), source.Transform().DeviceX(sx), source.Transform().DeviceY(sy), SRCCOPY);
}

BOOL DeviceContext::DeviceCopyFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy,
                                   DWORD operation) {
    return BitBlt(handle_, x, y, w, h, source.Handle(), sx, sy, operation);
}

BOOL DeviceContext::DeviceCopyFrom(const RECT& area, const DeviceContext& source) {
    return DeviceCopyFrom(area.left, area.top, area.right - area.left, area.bottom - area.top, source,
                          area.left, area.top);
}

BOOL DeviceContext::StretchFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy,
                                int sw, int sh) {
    return StretchBlt(handle_, transform_.DeviceX(x), transform_.DeviceY(y), ScaleX(w), ScaleY(h),
                      source.Handle(), source.Transform().DeviceX(sx), source.Transform().DeviceY(sy),
                      source.ScaleX(sw), source.ScaleY(sh), SRCCOPY);
}

int DeviceContext::FillRect(const RECT& area, HBRUSH brush) {
    const RECT device = DeviceRect(area);
    return brush == nullptr ? 0 : ::FillRect(handle_, &device, brush);
}

int DeviceContext::FillRectOwnBrush(const RECT& area) {
    return FillRect(area, ownBrush_.get());
}

BOOL DeviceContext::FillRegion(HRGN region, HBRUSH brush) {
    return FillRgn(handle_, region, brush);
}

BOOL DeviceContext::FrameRegion(HRGN region, HBRUSH brush, int deviceWidth, int deviceHeight) {
    return FrameRgn(handle_, region, brush, deviceWidth, deviceHeight);
}

namespace {

TRIVERTEX Corner(LONG x, LONG y, COLORREF colour) {
    const auto widened = [](BYTE channel) { return static_cast<COLOR16>(channel * 256); };
    return {x, y, widened(GetRValue(colour)), widened(GetGValue(colour)), widened(GetBValue(colour)), 0};
}

}  // namespace

BOOL DeviceContext::GradientFill(const RECT& area, COLORREF left, COLORREF right) {
    const RECT device = DeviceRect(area);
    TRIVERTEX corners[] = {Corner(device.left, device.top, left), Corner(device.right, device.bottom, right)};
    GRADIENT_RECT whole = {0, 1};
    return ::GradientFill(handle_, corners, 2, &whole, 1, GRADIENT_FILL_RECT_H);
}

// Regions.

UniqueRegion DeviceContext::PolygonRegion(POINT* points, int count) const {
    TransformInPlace(points, count);
    return UniqueRegion(CreatePolygonRgn(points, count, ALTERNATE));
}

UniqueRegion DeviceContext::EllipseRegion(const RECT& area) const {
    const RECT device = DeviceRect(area);
    return UniqueRegion(CreateEllipticRgnIndirect(&device));
}

UniqueRegion DeviceContext::RectRegion(const RECT& area) const {
    const RECT device = DeviceRect(area);
    return UniqueRegion(CreateRectRgnIndirect(&device));
}

UniqueRegion DeviceContext::CombineRegions(HRGN first, HRGN second, int mode) {
    UniqueRegion combined(CreateRectRgn(0, 0, 0, 0));
    if (combined != nullptr && CombineRgn(combined.get(), first, second, mode) == ERROR) {
        combined.reset();
    }
    return combined;
}

// Lines and shapes.

BOOL DeviceContext::Polyline(POINT* points, int count) {
    TransformInPlace(points, count);
    return ::Polyline(handle_, points, count);
}

BOOL DeviceContext::Rectangle(int left, int top, int right, int bottom) {
    const RECT device = DeviceRect({left, top, right, bottom});
    return ::Rectangle(handle_, device.left, device.top, device.right, device.bottom);
}

BOOL DeviceContext::Ellipse(int left, int top, int right, int bottom) {
    const RECT device = DeviceRect({left, top, right, bottom});
    return ::Ellipse(handle_, device.left, device.top, device.right, device.bottom);
}

// Text.

int DeviceContext::SetTransparent() {
    return SetBkMode(handle_, TRANSPARENT);
}
int DeviceContext::SetOpaque() {
    return SetBkMode(handle_, OPAQUE);
}
COLORREF DeviceContext::SetTextColor(COLORREF colour) {
    return ::SetTextColor(handle_, colour);
}
COLORREF DeviceContext::SetBackColor(COLORREF colour) {
    return SetBkColor(handle_, colour);
}
UINT DeviceContext::SetTextAlign(UINT flags) {
    return ::SetTextAlign(handle_, flags);
}

BOOL DeviceContext::TextAt(const char* text, int x, int y, HorizontalAlignment horizontal,
                           VerticalAlignment vertical) {
    UINT flags = TA_CENTER;
    if (horizontal == HorizontalAlignment::kLeft) {
        flags = TA_LEFT;
    } else if (horizontal == HorizontalAlignment::kRight) {
        flags = TA_RIGHT;
    }
    if (vertical == VerticalAlignment::kBottom) {
        flags |= TA_BOTTOM;
    }
    SetTextAlign(flags);
    return ExtTextAt(x, y, 0, nullptr, text, -1, nullptr);
}

BOOL DeviceContext::ExtTextAt(int x, int y, UINT options, const RECT* clip, const char* text, int length,
                              const INT* spacing) {
    const RECT device = clip != nullptr ? DeviceRect(*clip) : RECT{};
    const UINT count = static_cast<UINT>(text != nullptr && length < 0 ? lstrlenA(text) : length);
    return ExtTextOutA(handle_, transform_.DeviceX(x), transform_.DeviceY(y), options,
                       clip != nullptr ? &device : nullptr, text, text != nullptr ? count : 0, spacing);
}

int DeviceContext::DrawTextIn(const char* text, int length, const RECT& area, UINT format) {
    RECT device = DeviceRect(area);
    return text == nullptr ? 0 : DrawTextA(handle_, text, length, &device, format);
}

SIZE DeviceContext::TextExtent(const char* text, int length) const {
    SIZE size = {};
    if (text == nullptr ||
        !GetTextExtentPoint32A(handle_, text, length < 0 ? lstrlenA(text) : length, &size)) {
        return {};
    }
    return {transform_.LogicalWidth(size.cx), transform_.LogicalHeight(size.cy)};
}

// Images and frames.

BOOL DeviceContext::DrawIconAt(int x, int y, HICON icon) {
    return DrawIconEx(handle_, transform_.DeviceX(x), transform_.DeviceY(y), icon, 0, 0, 0, nullptr,
                      DI_NORMAL);
}

BOOL DeviceContext::DrawTransparent(int x, int y, const Bitmap& bitmap, COLORREF transparent) {
    MemoryContext source(*this);
    if (source.SelectBitmap(bitmap) == nullptr) {
        return FALSE;
    }
    const int width = bitmap.Width();
    const int height = bitmap.Height();
    return TransparentBlt(handle_, transform_.DeviceX(x), transform_.DeviceY(y), width, height,
                          source.Handle(), 0, 0, width, height, transparent);
}

int DeviceContext::DrawDib(const RECT& area, const BITMAPINFO* image) {
    if (image == nullptr) {
        return 0;
    }
    const BITMAPINFOHEADER& header = image->bmiHeader;
    DWORD colours = header.biClrUsed;
    if (colours == 0 && header.biBitCount <= 8) {
        colours = DWORD{1} << header.biBitCount;
    }
    // Three masks in place of colours, unless a later kind of header has them inside.
    if (header.biCompression == BI_BITFIELDS && header.biSize == sizeof(BITMAPINFOHEADER)) {
        colours += 3;
    }
    const auto* bytes = reinterpret_cast<const std::byte*>(image);
    const RECT device = DeviceRect(area);
    return StretchDIBits(handle_, device.left, device.top, device.right - device.left,
                         device.bottom - device.top, 0, 0, header.biWidth,
                         header.biHeight < 0 ? -header.biHeight : header.biHeight,
                         bytes + header.biSize + colours * sizeof(RGBQUAD), image, DIB_RGB_COLORS, SRCCOPY);
}

BOOL DeviceContext::DrawEdge(const RECT& area, UINT edge, UINT flags) {
    RECT device = DeviceRect(area);
    return ::DrawEdge(handle_, &device, edge, flags);
}

BOOL DeviceContext::DrawFrameControl(const RECT& area, UINT type, UINT state) {
    RECT device = DeviceRect(area);
    return ::DrawFrameControl(handle_, &device, type, state);
}

BOOL DeviceContext::DrawFocusRect(const RECT& area) {
    const RECT device = DeviceRect(area);
    return ::DrawFocusRect(handle_, &device);
}

BOOL DeviceContext::DrawPushedFrame(const RECT& area) {
    return DrawFrameControl(area, DFC_BUTTON, DFCS_PUSHED);
}

BOOL DeviceContext::WashOut(const RECT& deviceArea) {
    constexpr int kSide = 16;
    constexpr BYTE kWhiteness = 208;
    Bitmap white;
    white.CreateCompatible(*this, kSide, kSide);
    MemoryContext source(*this);
    if (source.SelectBitmap(white) == nullptr || !source.FillWhite(0, 0, kSide, kSide)) {
        return FALSE;
    }
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, kWhiteness, 0};
    return AlphaBlend(handle_, deviceArea.left, deviceArea.top, deviceArea.right - deviceArea.left,
                      deviceArea.bottom - deviceArea.top, source.Handle(), 0, 0, kSide, kSide, blend);
}

}  // namespace kx
