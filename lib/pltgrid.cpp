#include "lib/pltgrid.h"

#include <algorithm>

#include "lib/muldiv.h"

namespace kx {

namespace {

constexpr std::int32_t kMilPerInch = 1000;
constexpr std::int32_t kLineWidth = 2;
// A dot is a 25th of a cell, 0.2 mm.
constexpr std::int32_t kDotsPerCell = 25;
constexpr std::int64_t kWidthStep = 16;
// What a bitmap of the system can have at most in each direction.
constexpr std::int64_t kMaxPixels = 32767;

std::int32_t Extent(std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(std::int64_t{to} - from, 0, INT32_MAX));
}

}  // namespace

PaperGrid::Size PaperGrid::FrameSize() const {
    return {Extent(frame.left, frame.right), Extent(frame.top, frame.bottom)};
}

PaperGrid::Size PaperGrid::Pixels() const {
    const Size mil = FrameSize();
    return {MulDivRound(mil.width, pixelsPerInchX, kMilPerInch),
            MulDivRound(mil.height, pixelsPerInchY, kMilPerInch)};
}

std::optional<PaperGrid::Size> PaperGrid::BitmapPixels() const {
    const Size grid = Pixels();
    const std::int64_t width = (grid.width + kWidthStep - 1) / kWidthStep * kWidthStep;
    const std::int64_t height = std::int64_t{grid.height} + 1;
    if (grid.width < 1 || grid.height < 1 || width > kMaxPixels || height > kMaxPixels) {
        return std::nullopt;
    }
    return Size{static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
}

PaperGrid::Size PaperGrid::CellPixels() const {
    // Both from the vertical resolution: a cell is a square of the paper.
    return {MulDivRound(majorHorizontal, pixelsPerInchY, kMilPerInch),
            MulDivRound(majorVertical, pixelsPerInchY, kMilPerInch)};
}

void PaperGrid::Draw(GridSurface& surface, const GridColours& colours) const {
    const Size grid = Pixels();
    const Size bitmap = BitmapPixels().value_or(Size{0, 0});
    surface.SetBrush(colours.background);
    if (!Tile(surface, colours)) {
        surface.Fill(0, 0, bitmap.width, bitmap.height);
    }
    // After the cells, the last of which may reach beyond the area.
    surface.Fill(grid.width, 0, bitmap.width - grid.width, bitmap.height);
    surface.Fill(0, bitmap.height - 1, bitmap.width, 1);
    if (frameStyle == 1) {
        DrawFrame(surface);
    }
}

void PaperGrid::DrawCell(GridSurface& surface, const GridColours& colours) const {
    const Size cell = CellPixels();
    surface.SetBrush(colours.major);
    surface.Fill(0, 0, std::min(kLineWidth, cell.width), cell.height);
    surface.Fill(0, 0, cell.width, std::min(kLineWidth, cell.height));
    surface.SetBrush(colours.minor);
    DrawDots(surface);
    surface.SetBrush(colours.background);
}

void PaperGrid::DrawDots(GridSurface& surface) const {
    const Size cell = CellPixels();
    const Size dot = {(cell.height + 1) / kDotsPerCell, (cell.width + 1) / kDotsPerCell};
    if (minorHorizontal < 1 || minorVertical < 1 || dot.width < 1 || dot.height < 1) {
        return;
    }
    const Size parts = {majorHorizontal / minorHorizontal, majorVertical / minorVertical};
    // More parts than pixels would be one surface.
    if (parts.width > cell.width || parts.height > cell.height) {
        return;
    }
    for (std::int32_t i = 1; i < parts.height; ++i) {
        for (std::int32_t j = 1; j < parts.width; ++j) {
            surface.Fill(MulDivRound(cell.width, j, parts.width) - dot.width / 2,
                         MulDivRound(cell.height, i, parts.height) - dot.height / 2, dot.width, dot.height);
        }
    }
}

// Spreads whole cells evenly over the area; the gaps between them and what they leave at the right and at the
// bottom are background, whose brush is selected. False, and nothing drawn: the area holds no cell.
//
// Cells may overlap by a pixel or more; then each lies over the one before it. They are laid from the last to
// the first and only as far as the next one: in the other order the second cell would lie over a part of the
// first, from which all others are copied, and lines would be a pixel wider or have holes where the places
// are not all equally far apart.
bool PaperGrid::Tile(GridSurface& surface, const GridColours& colours) const {
    const Size mil = FrameSize();
    const Size grid = Pixels();
    const Size cell = CellPixels();
    const std::int32_t rows = MulDivRound(1, mil.height, majorVertical);
    const std::int32_t columns = MulDivRound(1, mil.width, majorHorizontal);
    if (cell.width < 1 || cell.height < 1 || rows < 1 || columns < 1) {
        return false;
    }
    surface.Fill(0, 0, grid.width, std::min(cell.height, grid.height));
    DrawCell(surface, colours);
    std::int32_t right = grid.width;
    for (std::int32_t j = columns - 1; j > 0; --j) {
        const std::int32_t x = MulDivRound(grid.width, j, columns);
        surface.CopyCorner(x, 0, std::min(cell.width, right - x), cell.height);
        right = x;
    }
    // Every further row is a copy of the first one, with background below it as far as there is a gap.
    std::int32_t bottom = grid.height;
    for (std::int32_t i = rows - 1; i >= 0; --i) {
        const std::int32_t y = MulDivRound(grid.height, i, rows);
        const std::int32_t height = std::min(cell.height, bottom - y);
        if (i > 0) {
            surface.CopyCorner(0, y, grid.width, height);
        }
        surface.Fill(0, y + height, grid.width, bottom - y - height);
        bottom = y;
    }
    return true;
}

// Four bands over the outermost pixels of the area.
void PaperGrid::DrawFrame(GridSurface& surface) const {
    const Size grid = Pixels();
    const std::int32_t across =
        std::clamp(MulDivRound(frameWidth, pixelsPerInchX, kMilPerInch), 0, grid.width);
    const std::int32_t down =
        std::clamp(MulDivRound(frameWidth, pixelsPerInchY, kMilPerInch), 0, grid.height);
    surface.SetBrush(frameColour);
    surface.Fill(0, 0, grid.width, down);
    surface.Fill(0, grid.height - down, grid.width, down);
    surface.Fill(0, 0, across, grid.height);
    surface.Fill(grid.width - across, 0, across, grid.height);
}

}  // namespace kx
