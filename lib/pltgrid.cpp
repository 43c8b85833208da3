#include "lib/pltgrid.h"

#include <algorithm>
#include <new>

#include "lib/muldiv.h"

namespace kx {

namespace {

constexpr char kSource[] = "..\\..\\lib\\pltgrid";
constexpr std::uint32_t kNoFrameRectLine = 41;
constexpr std::uint32_t kNothingToRenderLine = 97;
constexpr std::uint32_t kNoBitmapLine = 203;

constexpr std::int32_t kMilPerInch = 1000;
constexpr std::int32_t kLineWidth = 2;
// A dot is a 25th of a cell, 0.2 mm.
constexpr std::int32_t kDotsPerCell = 25;
constexpr std::int64_t kWidthStep = 16;
// What a bitmap of the system can have at most in each direction.
constexpr std::int64_t kMaxPixels = 32767;

std::int32_t Extent(LONG from, LONG to) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(std::int64_t{to} - from, 0, INT32_MAX));
}

}  // namespace

PlotGrid::PlotGrid(Reporter& owner, std::int32_t pixelsPerInchX, std::int32_t pixelsPerInchY)
    : owner_(&owner),
      frame_(new (std::nothrow) RECT{}),
      pixelsPerInchX_(pixelsPerInchX),
      pixelsPerInchY_(pixelsPerInchY) {
    if (frame_ == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNoFrameRectLine);
    }
}

void PlotGrid::SetFrameRect(const RECT& area) {
    if (frame_ != nullptr) {
        *frame_ = area;
    }
}

void PlotGrid::SetFrame(std::uint32_t style, std::int32_t width, COLORREF colour) {
    frameStyle_ = style;
    frameWidth_ = width;
    frameColour_ = colour;
}

void PlotGrid::SetSpacing(std::int32_t majorHorizontal, std::int32_t minorHorizontal,
                          std::int32_t majorVertical, std::int32_t minorVertical) {
    majorHorizontal_ = majorHorizontal;
    minorHorizontal_ = minorHorizontal;
    majorVertical_ = majorVertical;
    minorVertical_ = minorVertical;
}

PlotGrid::Size PlotGrid::FrameSize() const {
    return {Extent(frame_->left, frame_->right), Extent(frame_->top, frame_->bottom)};
}

PlotGrid::Size PlotGrid::GridPixels() const {
    const Size mil = FrameSize();
    return {MulDivRound(mil.width, pixelsPerInchX_, kMilPerInch),
            MulDivRound(mil.height, pixelsPerInchY_, kMilPerInch)};
}

PlotGrid::Size PlotGrid::CellPixels() const {
    // Both from the vertical resolution: a cell is a square of the paper.
    return {MulDivRound(majorHorizontal_, pixelsPerInchY_, kMilPerInch),
            MulDivRound(majorVertical_, pixelsPerInchY_, kMilPerInch)};
}

bool PlotGrid::CreateBitmap(int bitsPerPixel, bool monochrome) {
    const Size grid = GridPixels();
    const std::int64_t width = (grid.width + kWidthStep - 1) / kWidthStep * kWidthStep;
    const std::int64_t height = std::int64_t{grid.height} + 1;
    if (grid.width < 1 || grid.height < 1 || width > kMaxPixels || height > kMaxPixels) {
        return false;
    }
    if (monochrome) {
        return bitmap_.Create(static_cast<int>(width), static_cast<int>(height), 1, 1, nullptr);
    }
    return bitmap_.CreateDibSection(static_cast<int>(width), static_cast<int>(height),
                                    static_cast<WORD>(bitsPerPixel));
}

bool PlotGrid::Render(DeviceContext& memory, COLORREF background, COLORREF major, COLORREF minor,
                      int bitsPerPixel, bool monochrome) {
    bitmap_.Destroy();
    if (frame_ == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNothingToRenderLine);
        return false;
    }
    // A bitmap that could not be created is reported where it would be selected.
    CreateBitmap(bitsPerPixel, monochrome);
    if (!Select(memory)) {
        return false;
    }
    memory.SetPixelMapping();
    const Size grid = GridPixels();
    const Size cell = CellPixels();
    const int width = bitmap_.Width();
    const int height = bitmap_.Height();
    const Brushes brushes{background, major, minor};
    memory.SetSolidBrush(background);
    if (!Tile(memory, brushes, grid, cell)) {
        memory.FillPattern(0, 0, width, height);
    }
    // After the cells, the last of which may reach beyond the area.
    memory.FillPattern(grid.width, 0, width - grid.width, height);
    memory.FillPattern(0, height - 1, width, 1);
    if (frameStyle_ == 1) {
        DrawFrame(memory, grid);
    }
    Unlock(memory);
    return true;
}

void PlotGrid::DrawCell(DeviceContext& memory, const Brushes& brushes, Size cell) const {
    memory.SetSolidBrush(brushes.major);
    memory.FillPattern(0, 0, kLineWidth, cell.height + kLineWidth);
    memory.FillPattern(0, 0, cell.width + kLineWidth, kLineWidth);
    memory.SetSolidBrush(brushes.minor);
    DrawDots(memory, cell);
}

void PlotGrid::DrawDots(DeviceContext& memory, Size cell) const {
    const Size dot = {(cell.height + 1) / kDotsPerCell, (cell.width + 1) / kDotsPerCell};
    if (minorHorizontal_ < 1 || minorVertical_ < 1 || dot.width < 1 || dot.height < 1) {
        return;
    }
    const Size parts = {majorHorizontal_ / minorHorizontal_, majorVertical_ / minorVertical_};
    // More parts than pixels would be one surface.
    if (parts.width > cell.width || parts.height > cell.height) {
        return;
    }
    for (std::int32_t i = 1; i < parts.height; ++i) {
        for (std::int32_t j = 1; j < parts.width; ++j) {
            memory.FillPattern(MulDivRound(cell.width, j, parts.width) - dot.width / 2,
                               MulDivRound(cell.height, i, parts.height) - dot.height / 2, dot.width,
                               dot.height);
        }
    }
}

// Spreads whole cells evenly over the area; the gaps between them and what they leave at the right and at the
// bottom are background, whose brush is selected. False, and nothing drawn: the area holds no cell.
bool PlotGrid::Tile(DeviceContext& memory, const Brushes& brushes, Size grid, Size cell) const {
    const Size mil = FrameSize();
    const std::int32_t rows = MulDivRound(1, mil.height, majorVertical_);
    const std::int32_t columns = MulDivRound(1, mil.width, majorHorizontal_);
    if (cell.width < 1 || cell.height < 1 || rows < 1 || columns < 1) {
        return false;
    }
    memory.FillPattern(0, 0, grid.width, cell.height);
    DrawCell(memory, brushes, cell);
    memory.SetSolidBrush(brushes.background);
    std::int32_t xEnd = 0;
    for (std::int32_t j = 0; j < columns; ++j) {
        const std::int32_t x = MulDivRound(grid.width, j, columns);
        if (x > xEnd) {
            memory.FillPattern(xEnd, 0, x - xEnd, cell.height);
        }
        xEnd = x + cell.width;
        if (j != 0) {
            memory.CopyFrom(x, 0, cell.width, cell.height, memory, 0, 0);
        }
    }
    memory.FillPattern(xEnd, 0, std::max(grid.width - xEnd, 0), cell.height);
    // Every further row is a copy of the first one.
    std::int32_t yEnd = cell.height;
    for (std::int32_t i = 1; i < rows; ++i) {
        const std::int32_t y = MulDivRound(grid.height, i, rows);
        if (y > yEnd) {
            memory.FillPattern(0, yEnd, grid.width, y - yEnd);
        }
        yEnd = y + cell.height;
        memory.CopyFrom(0, y, grid.width, cell.height, memory, 0, 0);
    }
    memory.FillPattern(0, yEnd, grid.width, std::max(grid.height - yEnd, 0));
    return true;
}

// Four bands over the outermost pixels of the area.
void PlotGrid::DrawFrame(DeviceContext& memory, Size grid) const {
    const std::int32_t across =
        std::clamp(MulDivRound(frameWidth_, pixelsPerInchX_, kMilPerInch), 0, grid.width);
    const std::int32_t down =
        std::clamp(MulDivRound(frameWidth_, pixelsPerInchY_, kMilPerInch), 0, grid.height);
    memory.SetSolidBrush(frameColour_);
    memory.FillPattern(0, 0, grid.width, down);
    memory.FillPattern(0, grid.height - down, grid.width, down);
    memory.FillPattern(0, 0, across, grid.height);
    memory.FillPattern(grid.width - across, 0, across, grid.height);
}

void PlotGrid::SetMilMapping(DeviceContext& memory) const {
    memory.SetPixelMapping();
    memory.SetMultipliers(pixelsPerInchX_, pixelsPerInchY_);
    memory.SetDivisors(kMilPerInch, kMilPerInch);
}

bool PlotGrid::Select(DeviceContext& memory) {
    if (!bitmap_ || memory.SelectBitmap(bitmap_) == nullptr) {
        owner_->LOGMEMORYERROR(kSource, kNoBitmapLine);
        return false;
    }
    SetMilMapping(memory);
    return true;
}

DeviceContext* PlotGrid::Lock(DeviceContext& memory) {
    return Select(memory) ? &memory : nullptr;
}

void PlotGrid::Unlock(DeviceContext& memory) {
    memory.RestoreBitmap();
    memory.SetPixelMapping();
}

}  // namespace kx
