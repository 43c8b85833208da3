// A grid in memory, one number a pixel.
#pragma once

#include <cstddef>
#include <vector>

#include "lib/pltgrid.h"

namespace kx::test {

class GridPicture final : public GridSurface {
  public:
    GridPicture(PaperGrid::Size size)
        : width(size.width), height(size.height), pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    void SetBrush(GridColour colour) override { brush_ = colour; }
    void Fill(std::int32_t x, std::int32_t y, std::int32_t across, std::int32_t down) override {
        Paint(x, y, across, down, [this](std::int32_t, std::int32_t) { return brush_; });
    }
    void CopyCorner(std::int32_t x, std::int32_t y, std::int32_t across, std::int32_t down) override {
        const GridPicture before = *this;
        Paint(x, y, across, down, [&](std::int32_t i, std::int32_t j) { return before.Pixel(i - x, j - y); });
    }
    GridColour Pixel(std::int32_t x, std::int32_t y) const { return pixels_[static_cast<std::size_t>(y * width + x)]; }
    const std::vector<GridColour>& Pixels() const { return pixels_; }

    const std::int32_t width;
    const std::int32_t height;

  private:
    template <class Colour>
    void Paint(std::int32_t x, std::int32_t y, std::int32_t across, std::int32_t down, Colour colour) {
        for (std::int32_t j = std::max(y, 0); j < std::min(y + down, height); ++j) {
            for (std::int32_t i = std::max(x, 0); i < std::min(x + across, width); ++i) {
                pixels_[static_cast<std::size_t>(j * width + i)] = colour(i, j);
            }
        }
    }

    std::vector<GridColour> pixels_;
    GridColour brush_ = 0;
};

}  // namespace kx::test
