#include "lib/windows/drawing_transform.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using kx::DrawingTransform;

TEST(DrawingTransform, MapsAPointByItsOriginsAndItsScale) {
    const struct {
        const char* name;
        DrawingTransform transform;  // origins x: logical, device; y: logical, device; then the scales x, y
        std::int32_t x, y, deviceX, deviceY;
    } rows[] = {
        {"as it is", {}, 100, -7, 100, -7},
        {"hundredths of an inch in 254 per 100", {0, 0, 0, 0, 100, 254, 100, 254}, 100, 50, 254, 127},
        {"origins", {10, 1000, -20, 2000}, 15, 5, 1005, 2025},
        {"origin before the scale", {10, 3, 0, 0, 2, 6, 1, 1}, 14, 9, 15, 9},
        {"halves away from zero", {0, 0, 0, 0, 2, 1, 2, 1}, 5, -5, 3, -3},
        {"down to the nearest", {0, 0, 0, 0, 3, 1, 3, 1}, 4, -4, 1, -1},
        {"upwards axis", {0, 0, 0, 400, 100, 100, 100, -100}, 0, 30, 0, 370},
        {"no divisor", {0, 9, 0, 9, 0, 100, 0, 100}, 50, 50, 8, 8},
        {"too large", {0, 5, 0, 0, 1, 1000, 100, 100}, INT32_MAX, INT32_MIN + 1, 4, INT32_MIN + 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.transform.DeviceX(row.x), row.deviceX) << row.name;
        EXPECT_EQ(row.transform.DeviceY(row.y), row.deviceY) << row.name;
    }
}

TEST(DrawingTransform, AWidthHasNoOriginAndAnExtentGoesBack) {
    const DrawingTransform transform = {70, 80, 90, 100, 100, 254, 50, 200};
    EXPECT_EQ(transform.ScaleX(100), 254);
    EXPECT_EQ(transform.ScaleY(-3), -12);
    EXPECT_EQ(transform.LogicalWidth(254), 100);
    EXPECT_EQ(transform.LogicalHeight(10), 3);
}

TEST(DrawingTransform, NoCoordinateIsTooLarge) {
    const std::int32_t extremes[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX};
    for (const std::int32_t a : extremes) {
        for (const std::int32_t b : extremes) {
            for (const std::int32_t c : extremes) {
                const DrawingTransform transform = {a, b, b, a, c, a, b, c};
                // Nothing to expect but that it ends: the sanitizers look at the arithmetic.
                (void)transform.DeviceX(c);
                (void)transform.DeviceY(c);
                (void)transform.LogicalHeight(a);
            }
        }
    }
}

}  // namespace
