// What everything is drawn on: a GDI device context that takes the caller's own units.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/windows/drawing_transform.h"
#include "lib/windows/gdi_handles.h"

namespace kx {

class Bitmap;

// Where a text stands from its point. Any other horizontal value centres.
enum class HorizontalAlignment : std::uint32_t { kLeft = 0, kCenter = 1, kRight = 2 };
enum class VerticalAlignment : std::uint32_t { kTop = 0, kBottom = 1 };

// Draws in logical coordinates (see DrawingTransform), unless an operation or an argument is named "device",
// so that the same code serves screen, memory bitmap and printer. It keeps the pen and the brush that it
// makes, and when it is released the context has its original objects again. An operation on a null handle,
// or one that GDI refuses, returns what the GDI function returns then (FALSE, 0, CLR_INVALID); nothing is
// reported.
class DeviceContext {
  public:
    // The plain kind: a handle that somebody else gives back.
    explicit DeviceContext(HDC handle = nullptr) { Attach(handle); }
    ~DeviceContext() { Release(); }
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;

    HDC Handle() const { return handle_; }

    // Takes a handle, releasing the one before: mapping mode MM_TEXT, scale 1 without origins, no device-size
    // overrides, and the objects that are selected now are the ones to restore. With null nothing is
    // attached.
    void Attach(HDC handle);
    // Restores the original objects, removes the clip region and deletes the own pen and brush; the handle is
    // null afterwards. The handle itself is not given back.
    void Release();

    // Transform. A divisor of 0 makes every coordinate of its axis the device origin - 1.
    void SetDivisors(std::int32_t x, std::int32_t y);
    void SetMultipliers(std::int32_t x, std::int32_t y);
    // Scale 1 without origins.
    void SetPixelMapping() { transform_ = {}; }
    const DrawingTransform& Transform() const { return transform_; }
    std::int32_t ScaleX(std::int32_t w) const { return transform_.ScaleX(w); }
    std::int32_t ScaleY(std::int32_t h) const { return transform_.ScaleY(h); }

    // Objects. The setters make a pen or a brush that this object owns, select it and delete the one before;
    // false when it cannot be made, and the one before stays. A solid pen (PS_SOLID) has a logical width
    // along the y axis, every other style is one pixel wide.
    bool SetPen(int style, std::int32_t width, COLORREF colour);
    bool SetSolidBrush(COLORREF colour);
    // Returns the object selected before. The caller keeps the object alive while it is selected.
    HGDIOBJ Select(HGDIOBJ object);
    HGDIOBJ SelectBitmap(const Bitmap& bitmap);
    // Selects the bitmap that was there at the attaching.
    void RestoreBitmap();

    // Clipping.
    int SetClipRect(const RECT& area);
    int ClearClip();

    // Filling and copying.
    BOOL FillPattern(int x, int y, int w, int h);
    BOOL FillBlack(int x, int y, int w, int h);
    BOOL FillWhite(int x, int y, int w, int h);
    // The source's point is in the source's own logical coordinates.
    BOOL CopyFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy);
    // Everything in device units, with SRCCOPY or another raster operation.
    BOOL DeviceCopyFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy,
                        DWORD operation = SRCCOPY);
    // The whole rectangle of the destination from the same place of the source, in device units.
    BOOL DeviceCopyFrom(const RECT& area, const DeviceContext& source);
    int FillRect(const RECT& area, HBRUSH brush);
    // In device units; null when there is none.
    UniqueRegion RectRegion(const RECT& area) const;

    // Lines and shapes, with the selected pen and brush. The caller's points are transformed in place.
    BOOL Polyline(POINT* points, int count);
    BOOL Rectangle(int left, int top, int right, int bottom);

    // Text (Windows-1252); a length of -1 means that it is terminated.
    int SetTransparent();
    COLORREF SetTextColor(COLORREF colour);
    UINT SetTextAlign(UINT flags);
    // spacing: the advance of each character in device units, or null.
    BOOL ExtTextAt(int x, int y, UINT options, const RECT* clip, const char* text, int length,
                   const INT* spacing);
    // In logical units; 0 by 0 when it cannot be measured.
    SIZE TextExtent(const char* text, int length) const;

    // The device's facts. Sizes are those of the overrides where they are at least 1.
    int PixelsPerInchX() const { return Capability(LOGPIXELSX); }
    int PixelsPerInchY() const { return Capability(LOGPIXELSY); }
    int WidthMm() const { return widthMm_ >= 1 ? widthMm_ : Capability(HORZSIZE); }
    int HeightMm() const { return heightMm_ >= 1 ? heightMm_ : Capability(VERTSIZE); }
    int WidthPixels() const { return widthPixels_ >= 1 ? widthPixels_ : Capability(HORZRES); }
    int HeightPixels() const { return heightPixels_ >= 1 ? heightPixels_ : Capability(VERTRES); }
    int BitsPerPixel() const { return Capability(BITSPIXEL); }
    int Capability(int index) const { return GetDeviceCaps(handle_, index); }

    // ---- what the suite's other programs do, and no pane of this library

    // Transform.
    void SetLogicalOrigin(std::int32_t x, std::int32_t y);
    void SetDeviceOrigin(std::int32_t x, std::int32_t y);
    // One saved copy. Restoring before the first save gives scale 1 without origins.
    void SaveTransform() { saved_ = transform_; }
    void RestoreTransform() { transform_ = saved_; }

    // Objects, as SetSolidBrush.
    bool SetPatternBrush(const Bitmap& pattern);
    bool SetDotBrush();
    // The brush of system colour 1 (COLOR_BACKGROUND), which is nobody's to delete.
    HGDIOBJ SelectSystemBrush();

    // Filling and copying.
    BOOL InvertPattern(int x, int y, int w, int h);
    BOOL StretchFrom(int x, int y, int w, int h, const DeviceContext& source, int sx, int sy, int sw, int sh);
    // With the brush that this object owns; 0 when it has none.
    int FillRectOwnBrush(const RECT& area);
    // Regions are in device units.
    BOOL FillRegion(HRGN region, HBRUSH brush);
    BOOL FrameRegion(HRGN region, HBRUSH brush, int deviceWidth, int deviceHeight);
    // From left to right.
    BOOL GradientFill(const RECT& area, COLORREF left, COLORREF right);

    // Regions from logical coordinates, in device units; null when there is none. The caller's points are
    // changed.
    UniqueRegion PolygonRegion(POINT* points, int count) const;
    UniqueRegion EllipseRegion(const RECT& area) const;
    // mode: RGN_AND and its kin; null when they cannot be combined.
    static UniqueRegion CombineRegions(HRGN first, HRGN second, int mode);

    // Lines and shapes, with the selected pen and brush.
    BOOL Ellipse(int left, int top, int right, int bottom);
    // An anti-aliased line through the points, which are transformed in place; on a device of 1 bit per pixel
    // it is not smoothed. width: logical, along the y axis; below 1 the thinnest line. dashStyle: 0 solid, 1
    // long dashes, 2 dots, 3 dash and dot, any other a single dash length of 1. Nothing is drawn when GDI+
    // cannot draw.
    void DrawSmoothPolyline(POINT* points, int count, COLORREF colour, std::int32_t width, int dashStyle);

    // Text.
    int SetOpaque();
    COLORREF SetBackColor(COLORREF colour);
    BOOL TextAt(const char* text, int x, int y, HorizontalAlignment horizontal, VerticalAlignment vertical);
    int DrawTextIn(const char* text, int length, const RECT& area, UINT format);

    // Images and frames.
    BOOL DrawIconAt(int x, int y, HICON icon);
    // The whole bitmap at its own size in pixels; pixels of the colour stay as they were.
    BOOL DrawTransparent(int x, int y, const Bitmap& bitmap, COLORREF transparent);
    // A packed device-independent bitmap (header, colour table, pixels; as a bitmap resource has it),
    // stretched over the rectangle. The caller vouches for its pixels. Returns the number of scan lines, 0 on
    // failure.
    int DrawDib(const RECT& area, const BITMAPINFO* image);
    BOOL DrawEdge(const RECT& area, UINT edge, UINT flags);
    BOOL DrawFrameControl(const RECT& area, UINT type, UINT state);
    BOOL DrawFocusRect(const RECT& area);
    BOOL DrawPushedFrame(const RECT& area);
    // Fades what is there to a light shade of itself, as for something that cannot be used now.
    BOOL WashOut(const RECT& deviceArea);

    // The device's facts.
    void SetSizeOverrides(int widthMm, int heightMm, int widthPixels, int heightPixels);
    bool CanBitBlt() const { return (Capability(RASTERCAPS) & RC_BITBLT) != 0; }
    // Of a printer, in device units: the unprintable edge, the printable size and the whole sheet.
    int PhysicalOffsetX() const { return Capability(PHYSICALOFFSETX); }
    int PhysicalOffsetY() const { return Capability(PHYSICALOFFSETY); }
    int PrintableWidth() const { return Capability(HORZRES); }
    int PrintableHeight() const { return Capability(VERTRES); }
    int PhysicalWidth() const { return Capability(PHYSICALWIDTH); }
    int PhysicalHeight() const { return Capability(PHYSICALHEIGHT); }

  private:
    friend struct DeviceContextLayout;

    RECT DeviceRect(const RECT& area) const;
    void TransformInPlace(POINT* points, int count) const;
    BOOL Fill(int x, int y, int w, int h, DWORD operation);
    bool TakeBrush(UniqueBrush brush);

    HDC handle_ = nullptr;
    DrawingTransform transform_;
    DrawingTransform saved_;
    HGDIOBJ originalBitmap_ = nullptr;
    HGDIOBJ originalPen_ = nullptr;
    UniquePen ownPen_;
    HGDIOBJ originalBrush_ = nullptr;
    UniqueBrush ownBrush_;
    HGDIOBJ originalFont_ = nullptr;
    std::int32_t widthMm_ = 0;
    std::int32_t heightMm_ = 0;
    std::int32_t widthPixels_ = 0;
    std::int32_t heightPixels_ = 0;
};

// Painting in answer to one WM_PAINT.
class PaintContext final : public DeviceContext {
  public:
    explicit PaintContext(HWND window);
    ~PaintContext();
    // What is to be painted, in client coordinates.
    const RECT& UpdateRect() const { return paint_.rcPaint; }

  private:
    // The handle that it acquired is its only one.
    using DeviceContext::Attach;
    using DeviceContext::Release;

    HWND window_;
    PAINTSTRUCT paint_{};
};

// The client area of a window; with null the screen.
class WindowContext final : public DeviceContext {
  public:
    explicit WindowContext(HWND window);
    ~WindowContext();

  private:
    // The handle that it acquired is its only one.
    using DeviceContext::Attach;
    using DeviceContext::Release;

    HWND window_;
};

// A context in memory, for a bitmap to be selected in; compatible with the given one or with the screen. The
// bitmap must outlive the selection.
class MemoryContext final : public DeviceContext {
  public:
    MemoryContext();
    explicit MemoryContext(const DeviceContext& like);
    ~MemoryContext();

  private:
    // The handle that it acquired is its only one.
    using DeviceContext::Attach;
    using DeviceContext::Release;
};

// A printer, whose handle it takes over. No pane prints: it is for the suite's other programs.
class PrinterContext final : public DeviceContext {
  public:
    explicit PrinterContext(HDC printer) : DeviceContext(printer) {}
    ~PrinterContext();

    // The GDI functions of these names: above 0 when they succeed.
    int StartDocument(const DOCINFOA& document);
    int StartPage();
    int EndPage();
    int EndDocument();

  private:
    // The handle that it acquired is its only one.
    using DeviceContext::Attach;
    using DeviceContext::Release;
};

}  // namespace kx
