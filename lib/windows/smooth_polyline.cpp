#include "lib/windows/smooth_polyline.h"

#include <windows.h>
// GDI+ needs the declarations of IStream before its own.
#include <objidl.h>

#include <gdiplus.h>

#include <algorithm>
#include <array>
#include <memory>

#include "lib/windows/device_context.h"

namespace kx {

namespace {

namespace flat = Gdiplus::DllExports;

// User-interface thread only.
struct GdiPlus {
    ULONG_PTR token = 0;
    ULONG_PTR hookToken = 0;
    Gdiplus::GdiplusStartupOutput hooks = {};
};
GdiPlus gdiPlus;

struct GraphicsDeleter {
    void operator()(Gdiplus::GpGraphics* graphics) const noexcept { flat::GdipDeleteGraphics(graphics); }
};
struct PenDeleter {
    void operator()(Gdiplus::GpPen* pen) const noexcept { flat::GdipDeletePen(pen); }
};
using UniqueGraphics = std::unique_ptr<Gdiplus::GpGraphics, GraphicsDeleter>;
using UniqueSmoothPen = std::unique_ptr<Gdiplus::GpPen, PenDeleter>;

constexpr int kBatchPoints = 1024;

struct DashPattern {
    int count;
    std::array<float, 4> lengths;
};

DashPattern DashesOf(int style, const DrawingTransform& transform) {
    // An axis without a scale has no length to measure a dash with.
    const float scale = transform.yMultiplier == 0 ? 1.0F
                                                   : static_cast<float>(transform.yDivisor) /
                                                         static_cast<float>(transform.yMultiplier);
    switch (style) {
        case 1:
            return {2, {3 * scale, scale}};
        case 2:
            return {2, {scale, scale}};
        case 3:
            return {4, {3 * scale, scale, scale, scale}};
        default:
            return {1, {1.0F}};
    }
}

UniqueSmoothPen MakePen(COLORREF colour, std::int32_t deviceWidth, int dashStyle,
                        const DrawingTransform& transform) {
    const Gdiplus::ARGB opaque =
        Gdiplus::Color::MakeARGB(255, GetRValue(colour), GetGValue(colour), GetBValue(colour));
    Gdiplus::GpPen* created = nullptr;
    flat::GdipCreatePen1(opaque, static_cast<float>(deviceWidth), Gdiplus::UnitPixel, &created);
    UniqueSmoothPen pen(created);
    if (pen != nullptr && dashStyle != 0) {
        const DashPattern dashes = DashesOf(dashStyle, transform);
        flat::GdipSetPenDashStyle(pen.get(), Gdiplus::DashStyleCustom);
        flat::GdipSetPenDashArray(pen.get(), dashes.lengths.data(), dashes.count);
    }
    return pen;
}

void DrawBatches(Gdiplus::GpGraphics* graphics, Gdiplus::GpPen* pen, const POINT* points, int count) {
    std::array<Gdiplus::GpPoint, kBatchPoints> batch;
    // A batch starts with the last point of the one before, so that the line has no gap.
    for (int first = 0; first < count - 1; first += kBatchPoints - 1) {
        const int size = std::min(count - first, kBatchPoints);
        std::transform(points + first, points + first + size, batch.begin(), [](const POINT& point) {
            return Gdiplus::GpPoint(static_cast<INT>(point.x), static_cast<INT>(point.y));
        });
        flat::GdipDrawLinesI(graphics, pen, batch.data(), size);
    }
}

}  // namespace

bool StartSmoothDrawing() noexcept {
    if (gdiPlus.token != 0) {
        return true;
    }
    // Without GDI+'s own thread its work is done by hooks of the calling thread, where the platform has any.
    const Gdiplus::GdiplusStartupInput input(nullptr, TRUE, FALSE);
    if (Gdiplus::GdiplusStartup(&gdiPlus.token, &input, &gdiPlus.hooks) != Gdiplus::Ok) {
        gdiPlus = {};
        return false;
    }
    if (gdiPlus.hooks.NotificationHook != nullptr) {
        gdiPlus.hooks.NotificationHook(&gdiPlus.hookToken);
    }
    return true;
}

void StopSmoothDrawing() noexcept {
    if (gdiPlus.token == 0) {
        return;
    }
    if (gdiPlus.hooks.NotificationUnhook != nullptr) {
        gdiPlus.hooks.NotificationUnhook(gdiPlus.hookToken);
    }
    Gdiplus::GdiplusShutdown(gdiPlus.token);
    gdiPlus = {};
}

void DeviceContext::DrawSmoothPolyline(POINT* points, int count, COLORREF colour, std::int32_t width,
                                       int dashStyle) {
    TransformInPlace(points, count);
    Gdiplus::GpGraphics* created = nullptr;
    if (!StartSmoothDrawing() || flat::GdipCreateFromHDC(handle_, &created) != Gdiplus::Ok) {
        return;
    }
    const UniqueGraphics graphics(created);
    flat::GdipSetPageUnit(created, Gdiplus::UnitPixel);
    flat::GdipSetSmoothingMode(
        created, BitsPerPixel() < 2 ? Gdiplus::SmoothingModeNone : Gdiplus::SmoothingModeAntiAlias);
    const UniqueSmoothPen pen = MakePen(colour, width > 0 ? ScaleY(width) : 0, dashStyle, transform_);
    if (pen != nullptr) {
        DrawBatches(created, pen.get(), points, count);
    }
}

}  // namespace kx
