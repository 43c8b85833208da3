// pltgrid: the millimetre paper behind a waveform. Where its lines lie is portable (pltgrid.cpp); PlotGrid,
// which has them in a bitmap, knows the system (pltgrid_win.cpp).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "include/kxdialogs.h"
#include "lib/reporter.h"

namespace kx {

class Bitmap;
class DeviceContext;

// A colour as the system packs it: 0x00BBGGRR.
using GridColour = std::uint32_t;

struct GridColours {
    GridColour background;
    GridColour major;
    GridColour minor;
};

// What a grid is drawn on, in pixels. What lies beyond its edges is not drawn.
class GridSurface {
  public:
    virtual void SetBrush(GridColour colour) = 0;
    virtual void Fill(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;
    // The block of that size in the upper left corner, which the new place may overlap.
    virtual void CopyCorner(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) = 0;

  protected:
    ~GridSurface() = default;
};

// The paper: major lines, minor dots and a frame, sized in thousandths of an inch (mil), so that it looks the
// same at every resolution.
struct PaperGrid {
    struct Size {
        std::int32_t width;
        std::int32_t height;
    };
    static constexpr std::int32_t kMajorSpacing = 197;  // 5 mm
    static constexpr std::int32_t kMinorSpacing = 39;   // 1 mm

    std::int32_t pixelsPerInchX;
    std::int32_t pixelsPerInchY;
    KxRect frame{};  // mil; only its width and height count
    std::uint32_t frameStyle = 0;
    std::int32_t frameWidth = 0;  // mil
    GridColour frameColour = 0;
    std::int32_t majorHorizontal = kMajorSpacing;
    std::int32_t minorHorizontal = kMinorSpacing;
    std::int32_t majorVertical = kMajorSpacing;
    std::int32_t minorVertical = kMinorSpacing;

    // The area that the frame takes.
    Size Pixels() const;
    // The bitmap that holds it: width rounded up to a multiple of 16, one row more. Nothing when there is no
    // area or the system has no bitmap so large.
    std::optional<Size> BitmapPixels() const;
    Size CellPixels() const;
    // Draws the whole bitmap.
    void Draw(GridSurface& surface, const GridColours& colours) const;

  private:
    Size FrameSize() const;
    void DrawCell(GridSurface& surface, const GridColours& colours) const;
    void DrawDots(GridSurface& surface) const;
    bool Tile(GridSurface& surface, const GridColours& colours) const;
    void DrawFrame(GridSurface& surface) const;
};

// Renders the paper into a bitmap of its own, which is shown by selecting it into a memory context; before
// the next Render, and before the grid goes, it must be unlocked.
class PlotGrid {
  public:
    static constexpr std::int32_t kMajorSpacing = PaperGrid::kMajorSpacing;
    static constexpr std::int32_t kMinorSpacing = PaperGrid::kMinorSpacing;

    // owner: where failures are reported; it outlives the grid. Pixels per inch: the device's logical
    // resolution.
    PlotGrid(Reporter& owner, std::int32_t pixelsPerInchX, std::int32_t pixelsPerInchY);
    ~PlotGrid();
    PlotGrid(const PlotGrid&) = delete;
    PlotGrid& operator=(const PlotGrid&) = delete;

    // The area to cover, in mil; only its width and height count.
    void SetFrameRect(const KxRect& area);
    // style: 0 no frame, 1 a plain one. width in mil.
    void SetFrame(std::uint32_t style, std::int32_t width, GridColour colour);
    // In mil. A minor spacing below 1 leaves out the dots, a major one below 1 leaves out the grid.
    void SetSpacing(std::int32_t majorHorizontal, std::int32_t minorHorizontal, std::int32_t majorVertical,
                    std::int32_t minorVertical);

    // Makes the bitmap anew; see PaperGrid::BitmapPixels. False, reported, when it cannot be made; there is
    // no bitmap then. The context is used for drawing and keeps no selection.
    bool Render(DeviceContext& memory, GridColour background, GridColour major, GridColour minor,
                int bitsPerPixel, bool monochrome);

    // Selects the bitmap and makes 1000 logical units one inch. False, reported, when there is none.
    bool Select(DeviceContext& memory);
    // The context with the bitmap selected, as Select; null when that failed.
    DeviceContext* Lock(DeviceContext& memory);
    // Gives the context its own bitmap and one unit per pixel again.
    static void Unlock(DeviceContext& memory);

  private:
    void CreateBitmap(int bitsPerPixel, bool monochrome);

    Reporter* owner_;
    std::unique_ptr<PaperGrid> paper_;
    std::unique_ptr<Bitmap> bitmap_;
};

}  // namespace kx
