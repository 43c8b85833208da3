#include "lib/pltgrid.h"

#include "lib/muldiv.h"
#include "tests/unit/grid_picture.h"

namespace kx::test {
namespace {

enum : GridColour { kPaper = 1, kMajor, kMinor, kFrame };

PaperGrid Grid(std::int32_t dpi, std::int32_t width, std::int32_t height, std::uint32_t style) {
    PaperGrid grid{dpi, dpi};
    grid.frame = {-100, 50, -100 + MulDivRound(width, 1000, dpi), 50 + MulDivRound(height, 1000, dpi)};
    grid.frameStyle = style;
    grid.frameWidth = 20;
    grid.frameColour = kFrame;
    return grid;
}

// The colour of a pixel from where the cells lie: each lies over the one before it and is whole; behind the area is paper.
GridColour Expected(const PaperGrid& grid, std::int32_t x, std::int32_t y) {
    const PaperGrid::Size area = grid.Pixels(), cell = grid.CellPixels();
    const std::int32_t dpi = grid.pixelsPerInchX, band = MulDivRound(grid.frameWidth, dpi, 1000);
    if (x >= area.width || y >= area.height) {
        return kPaper;
    }
    if (grid.frameStyle == 1 && (x < band || y < band || x >= area.width - band || y >= area.height - band)) {
        return kFrame;
    }
    const std::int32_t rows = MulDivRound(1, grid.frame.bottom - grid.frame.top, 197);
    const std::int32_t columns = MulDivRound(1, grid.frame.right - grid.frame.left, 197);
    std::int32_t right = -1, down = -1;
    for (std::int32_t j = 0; j < columns; ++j) {
        right = x >= MulDivRound(area.width, j, columns) ? x - MulDivRound(area.width, j, columns) : right;
    }
    for (std::int32_t i = 0; i < rows; ++i) {
        down = y >= MulDivRound(area.height, i, rows) ? y - MulDivRound(area.height, i, rows) : down;
    }
    if (right < 0 || down < 0 || right >= cell.width || down >= cell.height) {
        return kPaper;
    }
    if (right < 2 || down < 2) {
        return kMajor;
    }
    const std::int32_t dot = (cell.width + 1) / 25;
    for (std::int32_t i = 1; i < 5; ++i) {
        for (std::int32_t j = 1; j < 5; ++j) {
            const std::int32_t left = MulDivRound(cell.width, j, 5) - dot / 2, top = MulDivRound(cell.height, i, 5) - dot / 2;
            if (right >= left && right < left + dot && down >= top && down < top + dot) {
                return kMinor;
            }
        }
    }
    return kPaper;
}

TEST(PaperGrid, HoldsWholeCellsAtEverySizeAndResolution) {
    for (const std::int32_t dpi : {96, 120, 144, 300}) {
        for (const std::int32_t width : {1, 18, 22, 52, 192, 400, 401}) {
            for (const std::int32_t height : {1, 30, 97, 150}) {
                const PaperGrid grid = Grid(dpi, width, height, width % 2 == 0 ? 0 : 1);
                ASSERT_TRUE(grid.BitmapPixels());
                GridPicture picture(*grid.BitmapPixels());
                EXPECT_EQ(picture.width, (width + 15) / 16 * 16);
                EXPECT_EQ(picture.height, height + 1);
                grid.Draw(picture, {kPaper, kMajor, kMinor});
                for (std::int32_t y = 0; y < picture.height; ++y) {
                    for (std::int32_t x = 0; x < picture.width; ++x) {
                        ASSERT_EQ(picture.Pixel(x, y), Expected(grid, x, y))
                            << x << ' ' << y << " of " << width << " x " << height << " at " << dpi;
                    }
                }
            }
        }
    }
}

TEST(PaperGrid, AnySpacingAndAnyAreaEnds) {
    const std::int32_t values[] = {INT32_MIN, -1, 0, 1, 39, 197, INT32_MAX};
    for (const std::int32_t major : values) {
        for (const std::int32_t minor : values) {
            PaperGrid grid = Grid(96, 50, 40, 1);
            grid.majorHorizontal = grid.minorVertical = major;
            grid.minorHorizontal = grid.majorVertical = minor;
            GridPicture picture(*grid.BitmapPixels());
            grid.Draw(picture, {kPaper, kMajor, kMinor});
            PaperGrid none{major, minor};
            none.frame = {major, minor, minor, major};
            EXPECT_FALSE(none.BitmapPixels());
        }
    }
}

}  // namespace
}  // namespace kx::test
