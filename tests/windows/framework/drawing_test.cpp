// The drawing surface, its smooth lines and the grid, on a bitmap that is looked at.
#include "lib/pltgrid.h"
#include "lib/windows/smooth_polyline.h"
#include "tests/rig/recorded_reports.h"
#include "tests/unit/grid_picture.h"
#include "tests/windows/framework/canvas.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using Rows = std::vector<std::string>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);

TEST(Surface, FillsAndClipsInLogicalUnits) {
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
    dc.SetPixelMapping();
    dc.FillWhite(0, 0, 6, 4);
    dc.SetMultipliers(200, 100);
    dc.SetClipRect({1, 1, 2, 2});
    dc.FillBlack(0, 0, 3, 3);
    EXPECT_EQ(canvas.Rows(), (Rows{"......", "..##..", "......", "......"}));
    dc.ClearClip();
    dc.FillBlack(0, 0, 1, 1);
    EXPECT_EQ(canvas.Rows(), (Rows{"##....", "..##..", "......", "......"}));
}

TEST(Surface, DrawsShapesInLogicalUnits) {
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

TEST(Surface, RestoresTheObjectsAndTheClippingWhenItIsReleased) {
    Canvas canvas(8, 8);
    const HDC handle = canvas.Context().Handle();
    const auto selected = [handle] {
        return std::vector<HGDIOBJ>{GetCurrentObject(handle, OBJ_PEN), GetCurrentObject(handle, OBJ_BRUSH),
                                    GetCurrentObject(handle, OBJ_FONT), GetCurrentObject(handle, OBJ_BITMAP)};
    };
    const auto before = selected();
    HGDIOBJ pen = nullptr;
    Bitmap other;
    other.Create(8, 8, 1, 1, nullptr);
    {
        DeviceContext dc(handle);
        EXPECT_TRUE(dc.SetPen(PS_SOLID, 3, kRed) && dc.SetDotBrush() && dc.SetSolidBrush(kRed));
        pen = GetCurrentObject(handle, OBJ_PEN);
        dc.Select(GetStockObject(SYSTEM_FIXED_FONT));
        dc.SelectBitmap(other);
        EXPECT_EQ(dc.SetClipRect({2, 2, 4, 4}), SIMPLEREGION);
    }
    EXPECT_EQ(selected(), before);
    EXPECT_EQ(GetObjectType(pen), 0u) << "the own pen is deleted";
    canvas.Context().FillBlack(0, 0, 8, 8);
    EXPECT_EQ(canvas.Count(kBlack), 64) << "the clip region is removed";
}

TEST(Surface, WithoutAHandleDrawsNothing) {
    DeviceContext dc;
    POINT point = {1, 1};
    EXPECT_FALSE(dc.FillBlack(0, 0, 1, 1) || dc.SetPen(PS_SOLID, 1, kRed) || dc.SetSolidBrush(kRed) || dc.Rectangle(0, 0, 1, 1) ||
                 dc.Polyline(&point, 1) || dc.WashOut({0, 0, 1, 1}));
    EXPECT_EQ(dc.SetClipRect({0, 0, 1, 1}), ERROR);
    EXPECT_EQ(dc.TextExtent("x", 1).cx, 0);
    EXPECT_EQ(dc.PixelsPerInchX(), 0);
    dc.DrawSmoothPolyline(&point, 1, kRed, 1, 0);
}

// The first column of the canvas without ink; -1: none.
int FirstGap(const Canvas& canvas, int first, int last, int height) {
    for (int x = first; x <= last; ++x) {
        bool ink = false;
        for (int y = 0; y < height && !ink; ++y) {
            ink = canvas.Pixel(x, y) != kWhite;
        }
        if (!ink) {
            return x;
        }
    }
    return -1;
}

TEST(SmoothPolyline, OfAnyNumberOfPointsHasNoGaps) {
    for (const int count : {2, 1023, 1024, 1025, 2047, 2048, 2500}) {
        Canvas canvas(2500, 9);
        std::vector<POINT> points;
        for (int i = 0; i < count; ++i) {
            points.push_back({i, 4 + (i % 3 - 1)});
        }
        canvas.Context().DrawSmoothPolyline(points.data(), count, kBlack, 1, 0);
        EXPECT_EQ(FirstGap(canvas, 1, count - 2, 9), -1) << count;
    }
    Canvas canvas(10, 10);
    POINT points[] = {{1, 1}, {8, 8}};
    for (const int count : {0, 1, -5}) {
        canvas.Context().DrawSmoothPolyline(points, count, kBlack, 1, 0);
    }
    EXPECT_EQ(canvas.Count(kWhite), 100);
    canvas.Context().SetMultipliers(0, 0);
    canvas.Context().DrawSmoothPolyline(points, 2, kBlack, 1, 3);
    StopSmoothDrawing();
}

constexpr COLORREF kPaper = 0xFFFFFD, kMajor = 0xB7F095, kMinor = 0xEBFCE2, kFrame = 0xFFFFFF;

TEST(Grid, OnABitmapIsThePaper) {
    for (const int dpi : {96, 120}) {
        RecordedReports reports;
        MemoryContext memory;
        PlotGrid grid(reports, dpi, dpi);
        PaperGrid paper{dpi, dpi};
        paper.frame = {0, 0, 2500, 1700};
        paper.frameStyle = 1;
        paper.frameWidth = 20;
        paper.frameColour = kFrame;
        grid.SetFrameRect(paper.frame);
        grid.SetFrame(paper.frameStyle, paper.frameWidth, paper.frameColour);
        ASSERT_TRUE(grid.Render(memory, kPaper, kMajor, kMinor, 32, false));
        ASSERT_EQ(grid.Lock(memory), &memory);
        GridPicture picture(*paper.BitmapPixels());
        paper.Draw(picture, {kPaper, kMajor, kMinor});
        BITMAP record{};
        GetObjectA(GetCurrentObject(memory.Handle(), OBJ_BITMAP), sizeof record, &record);
        EXPECT_EQ(record.bmWidth, picture.width);
        EXPECT_EQ(record.bmHeight, picture.height);
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                ASSERT_EQ(GetPixel(memory.Handle(), x, y), picture.Pixel(x, y)) << x << ' ' << y << " at " << dpi;
            }
        }
        PlotGrid::Unlock(memory);
    }
}

TEST(Grid, ThatCannotBeMadeIsReportedOnce) {
    const struct {
        const char* name;
        int dpi;
        KxRect frame;
        int bits;
    } rows[] = {
        {"no area", 96, {0, 0, 0, 0}, 32},
        {"turned over", 96, {100, 100, 0, 0}, 32},
        {"no resolution", 0, {0, 0, 2000, 2000}, 32},
        {"negative resolution", -96, {0, 0, 2000, 2000}, 32},
        {"too large", 96, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, 32},
        {"no such depth", 96, {0, 0, 2000, 2000}, 5},
    };
    for (const auto& row : rows) {
        RecordedReports reports;
        PlotGrid grid(reports, row.dpi, row.dpi);
        MemoryContext memory;
        grid.SetFrameRect(row.frame);
        EXPECT_FALSE(grid.Render(memory, kPaper, kMajor, kMinor, row.bits, false)) << row.name;
        EXPECT_THAT(reports.Take(), testing::ElementsAre(testing::StartsWith("memory ..\\..\\lib\\pltgrid "))) << row.name;
        EXPECT_EQ(grid.Lock(memory), nullptr) << row.name;
    }
}

}  // namespace
}  // namespace kx::test
