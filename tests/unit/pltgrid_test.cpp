#include "lib/pltgrid.h"

#include "lib/muldiv.h"
#include "tests/unit/grid_picture.h"

namespace kx::test {
namespace {

enum : GridColour { kPaper = 1, kMajor, kMinor, kFrame };

PaperGrid Grid(std::int32_t dpi, std::int32_t width, std::int32_t height, std::uint32_t style) {
    return {dpi, dpi, {-100, 50, -100 + MulDivRound(width, 1000, dpi), 50 + MulDivRound(height, 1000, dpi)}, style, 20, kFrame};
}

// Whole cells one after the other, each over the one before it; behind the area is paper.
GridPicture Expected(const PaperGrid& grid) {
    const PaperGrid::Size area = grid.Pixels(), cell = grid.CellPixels();
    const std::int32_t rows = MulDivRound(1, grid.frame.bottom - grid.frame.top, 197);
    const std::int32_t columns = MulDivRound(1, grid.frame.right - grid.frame.left, 197);
    const std::int32_t dot = (cell.width + 1) / 25,
                       band = grid.frameStyle == 1 ? MulDivRound(grid.frameWidth, grid.pixelsPerInchX, 1000) : 0;
    GridPicture picture(*grid.BitmapPixels());
    const auto fill = [&](GridColour colour, std::int32_t x, std::int32_t y, std::int32_t across, std::int32_t down) {
        picture.SetBrush(colour);
        picture.Fill(x, y, across, down);
    };
    fill(kPaper, 0, 0, picture.width, picture.height);
    for (std::int32_t i = 0; i < rows * columns; ++i) {
        const std::int32_t x = MulDivRound(area.width, i % columns, columns), y = MulDivRound(area.height, i / columns, rows);
        fill(kPaper, x, y, cell.width, cell.height);
        fill(kMajor, x, y, 2, cell.height);
        fill(kMajor, x, y, cell.width, 2);
        for (std::int32_t k = 0; k < 16; ++k) {
            fill(kMinor, x + MulDivRound(cell.width, k % 4 + 1, 5) - dot / 2, y + MulDivRound(cell.height, k / 4 + 1, 5) - dot / 2, dot,
                 dot);
        }
    }
    fill(kPaper, area.width, 0, picture.width, picture.height);
    fill(kPaper, 0, area.height, picture.width, picture.height);
    const std::int32_t across = std::min(band, area.width), down = std::min(band, area.height);
    fill(kFrame, 0, 0, area.width, down);
    fill(kFrame, 0, 0, across, area.height);
    fill(kFrame, 0, area.height - down, area.width, down);
    fill(kFrame, area.width - across, 0, across, area.height);
    return picture;
}

TEST(PaperGrid, HoldsWholeCellsAtEverySizeAndResolution) {
    EXPECT_FALSE(PaperGrid({INT32_MAX, 96, {INT32_MIN, -1, INT32_MAX, INT32_MAX}}).BitmapPixels());
    for (const std::int32_t dpi : {96, 120, 144, 300}) {
        for (const std::int32_t width : {1, 18, 22, 52, 192, 400, 401}) {
            for (const std::int32_t height : {1, 30, 97, 150}) {
                const PaperGrid grid = Grid(dpi, width, height, width % 2 == 0 ? 0 : 1);
                ASSERT_TRUE(grid.BitmapPixels());
                GridPicture picture(*grid.BitmapPixels());
                EXPECT_TRUE(picture.width == (width + 15) / 16 * 16 && picture.height == height + 1);
                grid.Draw(picture, {kPaper, kMajor, kMinor});
                EXPECT_TRUE(picture.Pixels() == Expected(grid).Pixels()) << width << " x " << height << " at " << dpi;
            }
        }
    }
}

}  // namespace
}  // namespace kx::test
