#include "lib/windows/device_context.h"

#include <cstddef>
#include <utility>

#include "lib/windows/bitmap.h"

namespace kx {

// The fields stand in the order in which the suite's other programs hold them.
struct DeviceContextLayout {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
    static_assert(offsetof(DeviceContext, handle_) == 0);
    static_assert(offsetof(DeviceContext, transform_) == 4);
    static_assert(offsetof(DrawingTransform, deviceOriginX) == 4);
    static_assert(offsetof(DrawingTransform, logicalOriginY) == 8);
    static_assert(offsetof(DrawingTransform, xDivisor) == 16);
    static_assert(offsetof(DrawingTransform, xMultiplier) == 20);
    static_assert(offsetof(DrawingTransform, yMultiplier) == 28);
    static_assert(offsetof(DeviceContext, saved_) == 36);
    static_assert(offsetof(DeviceContext, originalBitmap_) == 68);
    static_assert(offsetof(DeviceContext, originalPen_) == 72);
    static_assert(offsetof(DeviceContext, ownPen_) == 76);
    static_assert(offsetof(DeviceContext, originalBrush_) == 80);
    static_assert(offsetof(DeviceContext, ownBrush_) == 84);
    static_assert(offsetof(DeviceContext, originalFont_) == 88);
    static_assert(offsetof(DeviceContext, widthMm_) == 92);
    static_assert(offsetof(DeviceContext, heightPixels_) == 104);
    static_assert(sizeof(DeviceContext) == 108);
#pragma GCC diagnostic pop
};

void DeviceContext::Attach(HDC handle) {
    Release();
    handle_ = handle;
    if (handle_ == nullptr) {
        return;
    }
    SetMapMode(handle_, MM_TEXT);
    transform_ = {};
    SetSizeOverrides(0, 0, 0, 0);
    originalBitmap_ = GetCurrentObject(handle_, OBJ_BITMAP);
    originalPen_ = GetCurrentObject(handle_, OBJ_PEN);
    originalBrush_ = GetCurrentObject(handle_, OBJ_BRUSH);
    originalFont_ = GetCurrentObject(handle_, OBJ_FONT);
}

void DeviceContext::Release() {
    if (handle_ != nullptr) {
        for (HGDIOBJ original : {originalFont_, originalBrush_, originalPen_, originalBitmap_}) {
            if (original != nullptr) {
                SelectObject(handle_, original);
            }
        }
        SelectClipRgn(handle_, nullptr);
    }
    ownPen_.reset();
    ownBrush_.reset();
    originalFont_ = originalBrush_ = originalPen_ = originalBitmap_ = nullptr;
    handle_ = nullptr;
}

void DeviceContext::SetLogicalOrigin(std::int32_t x, std::int32_t y) {
    transform_.logicalOriginX = x;
    transform_.logicalOriginY = y;
}

void DeviceContext::SetDeviceOrigin(std::int32_t x, std::int32_t y) {
    transform_.deviceOriginX = x;
    transform_.deviceOriginY = y;
}

void DeviceContext::SetDivisors(std::int32_t x, std::int32_t y) {
    transform_.xDivisor = x;
    transform_.yDivisor = y;
}

void DeviceContext::SetMultipliers(std::int32_t x, std::int32_t y) {
    transform_.xMultiplier = x;
    transform_.yMultiplier = y;
}

bool DeviceContext::SetPen(int style, std::int32_t width, COLORREF colour) {
    UniquePen pen(CreatePen(style, style == PS_SOLID ? ScaleY(width) : 0, colour));
    if (pen == nullptr || Select(pen.get()) == nullptr) {
        return false;
    }
    ownPen_ = std::move(pen);
    return true;
}

bool DeviceContext::TakeBrush(UniqueBrush brush) {
    if (brush == nullptr || Select(brush.get()) == nullptr) {
        return false;
    }
    ownBrush_ = std::move(brush);
    return true;
}

bool DeviceContext::SetSolidBrush(COLORREF colour) {
    return TakeBrush(UniqueBrush(CreateSolidBrush(colour)));
}

bool DeviceContext::SetPatternBrush(const Bitmap& pattern) {
    return TakeBrush(UniqueBrush(CreatePatternBrush(pattern.Handle())));
}

bool DeviceContext::SetDotBrush() {
    // Each row fills a word, of which the second byte lies beyond the 8 pixels.
    constexpr int kSide = 8;
    static constexpr unsigned char kDots[2 * kSide] = {0x10, 0x00, 0x01, 0x00, 0x01, 0x10, 0x00, 0x00,
                                                       0x01, 0x10, 0x00, 0x00, 0x10, 0x00, 0x01, 0x00};
    Bitmap pattern;
    pattern.Create(kSide, kSide, 1, 1, kDots);
    return SetPatternBrush(pattern);
}

HGDIOBJ DeviceContext::SelectSystemBrush() {
    return Select(GetSysColorBrush(COLOR_BACKGROUND));
}

HGDIOBJ DeviceContext::Select(HGDIOBJ object) {
    return SelectObject(handle_, object);
}

HGDIOBJ DeviceContext::SelectBitmap(const Bitmap& bitmap) {
    return Select(bitmap.Handle());
}

void DeviceContext::RestoreBitmap() {
    if (originalBitmap_ != nullptr) {
        Select(originalBitmap_);
    }
}

int DeviceContext::SetClipRect(const RECT& area) {
    return SelectClipRgn(handle_, RectRegion(area).get());
}

int DeviceContext::ClearClip() {
    return SelectClipRgn(handle_, nullptr);
}

void DeviceContext::SetSizeOverrides(int widthMm, int heightMm, int widthPixels, int heightPixels) {
    widthMm_ = widthMm;
    heightMm_ = heightMm;
    widthPixels_ = widthPixels;
    heightPixels_ = heightPixels;
}

PaintContext::PaintContext(HWND window) : window_(window) {
    Attach(BeginPaint(window_, &paint_));
}

PaintContext::~PaintContext() {
    Release();
    EndPaint(window_, &paint_);
}

WindowContext::WindowContext(HWND window) : DeviceContext(GetDC(window)), window_(window) {}

WindowContext::~WindowContext() {
    HDC handle = Handle();
    Release();
    if (handle != nullptr) {
        ReleaseDC(window_, handle);
    }
}

MemoryContext::MemoryContext() : DeviceContext(CreateCompatibleDC(nullptr)) {}

MemoryContext::MemoryContext(const DeviceContext& like) : DeviceContext(CreateCompatibleDC(like.Handle())) {}

MemoryContext::~MemoryContext() {
    UniqueMemoryDc handle(Handle());
    Release();
}

PrinterContext::~PrinterContext() {
    UniqueMemoryDc handle(Handle());
    Release();
}

int PrinterContext::StartDocument(const DOCINFOA& document) {
    return StartDocA(Handle(), &document);
}
int PrinterContext::StartPage() {
    return ::StartPage(Handle());
}
int PrinterContext::EndPage() {
    return ::EndPage(Handle());
}
int PrinterContext::EndDocument() {
    return EndDoc(Handle());
}

}  // namespace kx
