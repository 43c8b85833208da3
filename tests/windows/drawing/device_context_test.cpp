#include "lib/windows/device_context.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tests/rig/gui_objects.h"
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
    for (int i = 0; i < 60; ++i) {
        useAll();
    }
    EXPECT_LE(kx::test::CountGuiObjects().gdi, before.gdi + 4);
}

}  // namespace
