#include "lib/windows/smooth_polyline.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/windows/drawing/canvas.h"

namespace {

using kx::test::Canvas;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// Whether something was drawn in every column from `first` to `last`.
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

TEST(SmoothPolyline, AnyNumberOfPointsMakesALineWithoutGaps) {
    for (const int count : {2, 1023, 1024, 1025, 2047, 2048, 2500}) {
        Canvas canvas(2500, 9);
        std::vector<POINT> points;
        for (int i = 0; i < count; ++i) {
            points.push_back({i, 4 + (i % 3 - 1)});
        }
        canvas.Context().DrawSmoothPolyline(points.data(), count, kBlack, 1, 0);
        EXPECT_EQ(FirstGap(canvas, 1, count - 2, 9), -1) << count;
    }
    kx::StopSmoothDrawing();
}

// Shades of its colour between full and none: whether there are any is the platform's choice (Wine draws none
// here).
TEST(SmoothPolyline, HasItsColourAndNoOther) {
    Canvas canvas(40, 20);
    POINT points[] = {{1, 2}, {38, 17}};
    canvas.Context().DrawSmoothPolyline(points, 2, RGB(255, 0, 0), 1, 0);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x) {
            const COLORREF colour = canvas.Pixel(x, y);
            EXPECT_EQ(GetRValue(colour), 255);
            EXPECT_EQ(GetGValue(colour), GetBValue(colour));
        }
    }
    EXPECT_LT(GetGValue(canvas.Pixel(19, 9)) + GetGValue(canvas.Pixel(19, 10)), 2 * 255);
}

TEST(SmoothPolyline, TheWidthIsLogicalAndTheCallersPointsAreTransformed) {
    Canvas canvas(20, 20);
    canvas.Context().SetMultipliers(100, 400);
    POINT points[] = {{0, 2}, {19, 2}};
    canvas.Context().DrawSmoothPolyline(points, 2, kBlack, 2, 0);
    EXPECT_EQ(points[1].y, 8);
    int dark = 0;
    for (int y = 0; y < 20; ++y) {
        dark += GetGValue(canvas.Pixel(10, y)) < 128 ? 1 : 0;
    }
    EXPECT_NEAR(dark, 8, 1);
}

TEST(SmoothPolyline, DashesLeaveGapsOfTheirPattern) {
    const struct {
        int style;
        int lowest, highest;  // percent of the line that is drawn
    } rows[] = {{0, 99, 100}, {1, 65, 85}, {2, 40, 60}, {3, 55, 78}};
    for (const auto& row : rows) {
        Canvas canvas(400, 9);
        POINT points[] = {{0, 4}, {399, 4}};
        canvas.Context().DrawSmoothPolyline(points, 2, kBlack, 4, row.style);
        int drawn = 0;
        for (int x = 0; x < 400; ++x) {
            drawn += GetGValue(canvas.Pixel(x, 4)) < 128 ? 1 : 0;
        }
        EXPECT_GE(drawn * 100 / 400, row.lowest) << row.style;
        EXPECT_LE(drawn * 100 / 400, row.highest) << row.style;
    }
}

TEST(SmoothPolyline, AMonochromeDeviceGetsNoShades) {
    kx::Bitmap bitmap;
    bitmap.Create(40, 20, 1, 1, nullptr);
    kx::MemoryContext memory;
    memory.SelectBitmap(bitmap);
    memory.FillWhite(0, 0, 40, 20);
    POINT points[] = {{1, 10}, {38, 10}};
    memory.DrawSmoothPolyline(points, 2, kBlack, 1, 0);
    EXPECT_EQ(GetPixel(memory.Handle(), 20, 10), kBlack);
    EXPECT_EQ(GetPixel(memory.Handle(), 20, 14), kWhite);
}

TEST(SmoothPolyline, WithoutPointsOrScaleNothingBreaks) {
    Canvas canvas(10, 10);
    POINT points[] = {{1, 1}, {8, 8}};
    canvas.Context().DrawSmoothPolyline(points, 0, kBlack, 1, 0);
    canvas.Context().DrawSmoothPolyline(points, 1, kBlack, 1, 0);
    canvas.Context().DrawSmoothPolyline(points, -5, kBlack, 1, 0);
    EXPECT_EQ(canvas.Count(kWhite), 100);
    canvas.Context().SetMultipliers(0, 0);
    canvas.Context().DrawSmoothPolyline(points, 2, kBlack, 1, 3);
}

TEST(SmoothPolyline, StartsAgainAfterItsEnd) {
    for (int round = 0; round < 3; ++round) {
        Canvas canvas(10, 10);
        POINT points[] = {{1, 5}, {8, 5}};
        canvas.Context().DrawSmoothPolyline(points, 2, kBlack, 1, 0);
        EXPECT_NE(canvas.Pixel(5, 5), kWhite) << round;
        kx::StopSmoothDrawing();
        kx::StopSmoothDrawing();
    }
}

}  // namespace
