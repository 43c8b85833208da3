#include "lib/windows/device_context.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/gui_objects.h"
#include "tests/windows/drawing/canvas.h"

namespace {

using kx::DeviceContext;
using kx::test::Canvas;
using Rows = std::vector<std::string>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);

TEST(DeviceContext, FillsInLogicalUnits) {
    Canvas canvas(6, 4);
    DeviceContext& dc = canvas.Context();
    dc.SetLogicalOrigin(100, 0);
    dc.SetDeviceOrigin(1, 1);
    dc.SetDivisors(10, 20);
    dc.SetMultipliers(1, 1);
    dc.FillBlack(110, 0, 30, 40);
    EXPECT_EQ(canvas.Rows(), (Rows{"......", "..###.", "..###.", "......"}));
    dc.SaveTransform();
    dc.SetMultipliers(5, 5);
    dc.SetLogicalOrigin(0, 0);
    dc.RestoreTransform();
    dc.FillWhite(120, 20, 10, 20);
    EXPECT_EQ(canvas.Rows(), (Rows{"......", "..###.", "..#.#.", "......"}));
    EXPECT_EQ(dc.ScaleX(30), 3);
    EXPECT_EQ(dc.ScaleY(30), 2);
}

TEST(DeviceContext, AttachingSetsEverythingBack) {
    Canvas canvas(4, 4);
    HDC handle = canvas.Context().Handle();
    DeviceContext dc(handle);
    dc.SetMultipliers(7, 7);
    dc.SetSizeOverrides(1, 2, 3, 4);
    SetMapMode(handle, MM_HIMETRIC);
    dc.Attach(handle);
    EXPECT_EQ(GetMapMode(handle), MM_TEXT);
    EXPECT_EQ(dc.ScaleX(10), 10);
    EXPECT_EQ(dc.WidthMm(), GetDeviceCaps(handle, HORZSIZE));
    EXPECT_EQ(dc.HeightPixels(), GetDeviceCaps(handle, VERTRES));
    dc.SetSizeOverrides(210, 0, 1000, -1);
    EXPECT_EQ(dc.WidthMm(), 210);
    EXPECT_EQ(dc.HeightMm(), GetDeviceCaps(handle, VERTSIZE));
    EXPECT_EQ(dc.WidthPixels(), 1000);
    EXPECT_EQ(dc.HeightPixels(), GetDeviceCaps(handle, VERTRES));
}

TEST(DeviceContext, ReleasingRestoresTheObjectsAndTheClipping) {
    Canvas canvas(8, 8);
    HDC handle = canvas.Context().Handle();
    const HGDIOBJ before[] = {GetCurrentObject(handle, OBJ_PEN), GetCurrentObject(handle, OBJ_BRUSH),
                              GetCurrentObject(handle, OBJ_FONT), GetCurrentObject(handle, OBJ_BITMAP)};
    HPEN pen = nullptr;
    kx::Bitmap other;
    other.Create(8, 8, 1, 1, nullptr);
    {
        DeviceContext dc(handle);
        EXPECT_TRUE(dc.SetPen(PS_SOLID, 3, kRed));
        pen = static_cast<HPEN>(GetCurrentObject(handle, OBJ_PEN));
        EXPECT_TRUE(dc.SetDotBrush());
        EXPECT_TRUE(dc.SetSolidBrush(kRed));
        dc.Select(GetStockObject(SYSTEM_FIXED_FONT));
        dc.SelectBitmap(other);
        EXPECT_EQ(dc.SetClipRect({2, 2, 4, 4}), SIMPLEREGION);
    }
    const HGDIOBJ after[] = {GetCurrentObject(handle, OBJ_PEN), GetCurrentObject(handle, OBJ_BRUSH),
                             GetCurrentObject(handle, OBJ_FONT), GetCurrentObject(handle, OBJ_BITMAP)};
    EXPECT_EQ(std::memcmp(before, after, sizeof before), 0);
    EXPECT_EQ(GetObjectType(pen), 0u) << "the own pen is deleted";
    canvas.Context().FillBlack(0, 0, 8, 8);
    EXPECT_EQ(canvas.Count(kBlack), 64) << "the clip region is removed";
}

TEST(DeviceContext, ClipsToALogicalRectangle) {
    Canvas canvas(6, 3);
    DeviceContext& dc = canvas.Context();
    dc.SetMultipliers(200, 100);
    dc.SetClipRect({1, 1, 2, 2});
    dc.FillBlack(0, 0, 3, 3);
    EXPECT_EQ(canvas.Rows(), (Rows{"......", "..##..", "......"}));
    dc.ClearClip();
    dc.FillBlack(0, 0, 1, 1);
    EXPECT_EQ(canvas.Rows(), (Rows{"##....", "..##..", "......"}));
}

TEST(DeviceContext, APenHasALogicalWidthOnlyWhenItIsSolid) {
    Canvas canvas(4, 4);
    DeviceContext& dc = canvas.Context();
    dc.SetDivisors(1, 1);
    dc.SetMultipliers(1, 4);
    const struct {
        int style;
        LONG width;
    } rows[] = {{PS_SOLID, 12}, {PS_DASH, 0}, {PS_DOT, 0}, {PS_INSIDEFRAME, 0}};
    for (const auto& row : rows) {
        ASSERT_TRUE(dc.SetPen(row.style, 3, kRed));
        LOGPEN pen = {};
        GetObjectA(GetCurrentObject(dc.Handle(), OBJ_PEN), sizeof pen, &pen);
        EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(row.style));
        EXPECT_LE(pen.lopnWidth.x, row.width == 0 ? 1 : row.width) << row.style;
        EXPECT_GE(pen.lopnWidth.x, row.width) << row.style;
        EXPECT_EQ(pen.lopnColor, kRed);
    }
}

TEST(DeviceContext, PatternsShowTheirBits) {
    Canvas canvas(8, 8);
    DeviceContext& dc = canvas.Context();
    ASSERT_TRUE(dc.SetDotBrush());
    dc.FillPattern(0, 0, 8, 8);
    // A set bit takes the background colour, white; the others take the text colour, black.
    EXPECT_EQ(canvas.Rows(), (Rows{"###.####", "#######.", "#######.", "########", "#######.", "########",
                                   "###.####", "#######."}));
    ASSERT_TRUE(dc.SetPatternBrush(kx::Bitmap::MakeHatch(2, 1)));
    dc.FillPattern(0, 0, 8, 8);
    EXPECT_EQ(canvas.Rows(), Rows(8, ".#.#.#.#"));
    EXPECT_FALSE(dc.SetPatternBrush(kx::Bitmap()));
    dc.FillPattern(0, 0, 1, 1);
    EXPECT_EQ(canvas.Pixel(1, 0), kBlack) << "the brush before stays";
}

TEST(DeviceContext, CopiesFromTheSourcesOwnCoordinates) {
    Canvas source(8, 4);
    source.Context().FillBlack(4, 2, 2, 1);
    source.Context().SetMultipliers(200, 200);
    Canvas canvas(6, 3);
    EXPECT_TRUE(canvas.Context().CopyFrom(1, 1, 4, 2, source.Context(), 2, 1));
    EXPECT_EQ(canvas.Rows(), (Rows{"......", ".##...", "......"}));
    EXPECT_TRUE(canvas.Context().DeviceCopyFrom(0, 0, 6, 1, source.Context(), 3, 2));
    EXPECT_EQ(canvas.Rows(), (Rows{".##...", ".##...", "......"}));
    EXPECT_TRUE(canvas.Context().StretchFrom(0, 0, 6, 2, source.Context(), 2, 1, 1, 1));
    EXPECT_EQ(canvas.Rows(), (Rows{"######", "......", "......"}));
}

TEST(DeviceContext, DrawsShapesInLogicalUnits) {
    Canvas canvas(9, 5);
    DeviceContext& dc = canvas.Context();
    dc.SetMultipliers(200, 100);
    POINT points[] = {{0, 0}, {3, 0}, {3, 4}};
    dc.SetPen(PS_SOLID, 1, kBlack);
    EXPECT_TRUE(dc.Polyline(points, 3));
    EXPECT_EQ(points[2].x, 6) << "the points are the caller's to be changed";
    EXPECT_EQ(canvas.Rows(), (Rows{"#######..", "......#..", "......#..", "......#..", "........."}));
    dc.FillWhite(0, 0, 5, 5);
    EXPECT_TRUE(dc.Rectangle(1, 1, 4, 4));
    EXPECT_EQ(canvas.Rows(), (Rows{".........", "..######.", "..#....#.", "..######.", "........."}));
    EXPECT_EQ(dc.FillRectOwnBrush({0, 0, 1, 1}), 0) << "no brush of its own yet";
    dc.SetSolidBrush(kBlack);
    EXPECT_NE(dc.FillRectOwnBrush({0, 0, 1, 1}), 0);
    EXPECT_EQ(canvas.Rows().front(), "##.......");
}

TEST(DeviceContext, RegionsAreInDeviceUnits) {
    Canvas canvas(8, 4);
    DeviceContext& dc = canvas.Context();
    dc.SetMultipliers(200, 100);
    const kx::UniqueRegion left = dc.RectRegion({0, 0, 2, 2});
    POINT corners[] = {{1, 1}, {4, 1}, {4, 4}, {1, 4}};
    const kx::UniqueRegion right = dc.PolygonRegion(corners, 4);
    const kx::UniqueRegion both = DeviceContext::CombineRegions(left.get(), right.get(), RGN_AND);
    ASSERT_NE(both, nullptr);
    dc.FillRegion(both.get(), static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(canvas.Rows(), (Rows{"........", "..##....", "........", "........"}));
    dc.FrameRegion(right.get(), static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)), 1, 1);
    EXPECT_EQ(canvas.Rows(), (Rows{"........", "..######", "..#....#", "..######"}));
    EXPECT_EQ(DeviceContext::CombineRegions(nullptr, right.get(), RGN_OR), nullptr);
    RECT box = {};
    GetRgnBox(dc.EllipseRegion({1, 0, 3, 4}).get(), &box);
    EXPECT_EQ(box.left, 2);
}

TEST(DeviceContext, AGradientGoesFromLeftToRight) {
    Canvas canvas(128, 2);
    ASSERT_TRUE(canvas.Context().GradientFill({0, 0, 128, 2}, RGB(0, 0, 0), RGB(200, 100, 0)));
    int red = -1;
    for (int x = 0; x < 128; ++x) {
        EXPECT_GE(GetRValue(canvas.Pixel(x, 1)), red) << x;
        red = GetRValue(canvas.Pixel(x, 1));
    }
    EXPECT_LT(GetRValue(canvas.Pixel(0, 0)), 4);
    EXPECT_NEAR(red, 200, 4);
    EXPECT_NEAR(GetGValue(canvas.Pixel(64, 0)), 50, 4);
}

// The columns that hold something of a text drawn at x = 50, y = 20.
RECT Inked(const Canvas& canvas) {
    RECT ink = {1000, 1000, -1, -1};
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 100; ++x) {
            if (canvas.Pixel(x, y) != kWhite) {
                ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x),
                       std::max<LONG>(ink.bottom, y)};
            }
        }
    }
    return ink;
}

TEST(DeviceContext, TextStandsWhereItsAlignmentSays) {
    using H = kx::HorizontalAlignment;
    using V = kx::VerticalAlignment;
    const struct {
        H horizontal;
        V vertical;
        int xSide, ySide;  // the side of the point on which the text lies: -1, 0 both, 1
    } rows[] = {
        {H::kLeft, V::kTop, 1, 1},     {H::kRight, V::kTop, -1, 1},     {H::kCenter, V::kTop, 0, 1},
        {H::kLeft, V::kBottom, 1, -1}, {H::kRight, V::kBottom, -1, -1}, {static_cast<H>(7), V::kTop, 0, 1},
    };
    for (const auto& row : rows) {
        Canvas canvas(100, 40);
        canvas.Context().SetMultipliers(200, 100);
        ASSERT_TRUE(canvas.Context().TextAt("HHHH", 25, 20, row.horizontal, row.vertical));
        const RECT ink = Inked(canvas);
        EXPECT_EQ(ink.left >= 50, row.xSide == 1) << static_cast<int>(row.horizontal);
        EXPECT_EQ(ink.right <= 50, row.xSide == -1) << static_cast<int>(row.horizontal);
        EXPECT_EQ(ink.top >= 20, row.ySide == 1) << static_cast<int>(row.vertical);
        EXPECT_EQ(ink.bottom <= 20, row.ySide == -1) << static_cast<int>(row.vertical);
    }
}

TEST(DeviceContext, MeasuresTextInLogicalUnits) {
    Canvas canvas(10, 10);
    DeviceContext& dc = canvas.Context();
    const SIZE pixels = dc.TextExtent("120 ms", -1);
    EXPECT_GT(pixels.cx, 0);
    dc.SetMultipliers(100, 50);
    const SIZE logical = dc.TextExtent("120 ms of which six count", 6);
    EXPECT_EQ(logical.cx, pixels.cx);
    EXPECT_EQ(logical.cy, pixels.cy * 2);
}

TEST(DeviceContext, ImagesKeepTheirSize) {
    Canvas canvas(12, 8);
    DeviceContext& dc = canvas.Context();
    dc.SetMultipliers(200, 100);
    Canvas stamp(3, 2);
    stamp.Context().FillBlack(1, 0, 2, 1);
    kx::Bitmap picture;
    picture.CreateCompatible(dc, 3, 2);
    {
        kx::MemoryContext copy(dc);
        copy.SelectBitmap(picture);
        copy.CopyFrom(0, 0, 3, 2, stamp.Context(), 0, 0);
    }
    dc.SetSolidBrush(kRed);
    dc.FillPattern(0, 0, 12, 8);
    ASSERT_TRUE(dc.DrawTransparent(2, 1, picture, kWhite));
    EXPECT_EQ(canvas.Rows()[1], "+++++##+++++");
    EXPECT_EQ(canvas.Rows()[2], "++++++++++++");
    struct {
        BITMAPINFOHEADER header;
        unsigned char pixels[4];
    } dib = {{sizeof(BITMAPINFOHEADER), 1, 1, 1, 24, BI_RGB, 0, 0, 0, 0, 0}, {0, 0, 0, 0}};
    EXPECT_EQ(dc.DrawDib({0, 5, 6, 8}, reinterpret_cast<const BITMAPINFO*>(&dib)), 1);
    EXPECT_EQ(canvas.Count(kBlack), 12 * 3 + 2);
    EXPECT_EQ(dc.DrawDib({0, 0, 1, 1}, nullptr), 0);
}

TEST(DeviceContext, WashingOutLeavesAShade) {
    Canvas canvas(40, 2);
    canvas.Context().FillBlack(0, 0, 40, 2);
    ASSERT_TRUE(canvas.Context().WashOut({0, 0, 20, 2}));
    EXPECT_NEAR(GetGValue(canvas.Pixel(10, 1)), 208, 2);
    EXPECT_EQ(canvas.Pixel(20, 1), kBlack);
}

TEST(DeviceContext, ANullHandleDrawsNothing) {
    DeviceContext dc;
    POINT point = {1, 1};
    EXPECT_FALSE(dc.FillBlack(0, 0, 1, 1));
    EXPECT_FALSE(dc.SetPen(PS_SOLID, 1, kRed));
    EXPECT_FALSE(dc.SetSolidBrush(kRed));
    EXPECT_FALSE(dc.Rectangle(0, 0, 1, 1));
    EXPECT_FALSE(dc.Polyline(&point, 1));
    EXPECT_EQ(dc.SetClipRect({0, 0, 1, 1}), ERROR);
    EXPECT_EQ(dc.TextExtent("x", 1).cx, 0);
    EXPECT_EQ(dc.PixelsPerInchX(), 0);
    EXPECT_FALSE(dc.WashOut({0, 0, 1, 1}));
    dc.DrawSmoothPolyline(&point, 1, kRed, 1, 0);
}

TEST(DeviceContext, EveryKindGivesBackWhatItTakes) {
    const auto useAll = [] {
        kx::WindowContext screen(nullptr);
        kx::MemoryContext memory(screen);
        kx::MemoryContext ofScreen;
        kx::PrinterContext printer(CreateCompatibleDC(nullptr));
        EXPECT_NE(printer.Handle(), nullptr);
        memory.SetPen(PS_SOLID, 1, kRed);
        ofScreen.SetDotBrush();
        screen.SetSolidBrush(kRed);
        screen.SetSolidBrush(kWhite);
    };
    useAll();
    const kx::test::GuiObjects before = kx::test::CountGuiObjects();
    for (int i = 0; i < 200; ++i) {
        useAll();
    }
    EXPECT_LE(kx::test::CountGuiObjects().gdi, before.gdi + 4);
}

TEST(PaintContext, PaintsTheUpdateRectangleOnce) {
    HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 60, 40, nullptr, nullptr,
                                  nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    UpdateWindow(window);
    const RECT part = {10, 5, 30, 25};
    InvalidateRect(window, &part, FALSE);
    {
        kx::PaintContext paint(window);
        EXPECT_NE(paint.Handle(), nullptr);
        EXPECT_TRUE(EqualRect(&paint.UpdateRect(), &part));
    }
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    DestroyWindow(window);
}

}  // namespace
