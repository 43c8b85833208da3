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

}  // namespace
