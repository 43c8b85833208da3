// The millimetre paper behind a waveform.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "lib/reporter.h"
#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"

namespace kx {

// Renders the paper into a bitmap of its own: major lines, minor dots and a frame, sized in thousandths of an
// inch (mil), so that it looks the same at every resolution. The bitmap belongs to the grid and is shown by
// selecting it into a memory context; before the next Render, and before the grid goes, it must be unlocked.
class PlotGrid {
  public:
    static constexpr std::int32_t kMajorSpacing = 197;  // 5 mm
    static constexpr std::int32_t kMinorSpacing = 39;   // 1 mm

    // owner: where failures are reported; it outlives the grid. Pixels per inch: the device's logical
    // resolution.
    PlotGrid(Reporter& owner, std::int32_t pixelsPerInchX, std::int32_t pixelsPerInchY);

    // The area to cover, in mil; only its width and height count.
    void SetFrameRect(const RECT& area);
    // style: 0 no frame, 1 a plain one. width in mil.
    void SetFrame(std::uint32_t style, std::int32_t width, COLORREF colour);
    // In mil. A minor spacing below 1 leaves out the dots, a major one below 1 leaves out the grid.
    void SetSpacing(std::int32_t majorHorizontal, std::int32_t minorHorizontal, std::int32_t majorVertical,
                    std::int32_t minorVertical);

    // Makes the bitmap anew: width rounded up to a multiple of 16 pixels, one row more than the area. False,
    // reported, when it cannot be made; there is no bitmap then. The context is used for drawing and keeps no
    // selection.
    bool Render(DeviceContext& memory, COLORREF background, COLORREF major, COLORREF minor, int bitsPerPixel,
                bool monochrome);

    // Selects the bitmap and makes 1000 logical units one inch. False, reported, when there is none.
    bool Select(DeviceContext& memory);
    // The context with the bitmap selected, as Select; null when that failed.
    DeviceContext* Lock(DeviceContext& memory);
    // Gives the context its own bitmap and one unit per pixel again.
    static void Unlock(DeviceContext& memory);

  private:
    struct Size {
        std::int32_t width;
        std::int32_t height;
    };
    struct Brushes {
        COLORREF background;
        COLORREF major;
        COLORREF minor;
    };

    Size FrameSize() const;
    Size GridPixels() const;
    Size CellPixels() const;
    bool CreateBitmap(int bitsPerPixel, bool monochrome);
    void DrawCell(DeviceContext& memory, const Brushes& brushes, Size cell) const;
    void DrawDots(DeviceContext& memory, Size cell) const;
    bool Tile(DeviceContext& memory, const Brushes& brushes, Size grid, Size cell) const;
    void DrawFrame(DeviceContext& memory, Size grid) const;
    void SetMilMapping(DeviceContext& memory) const;

    Reporter* owner_;
    Bitmap bitmap_;
    std::unique_ptr<RECT> frame_;
    std::uint32_t frameStyle_ = 0;
    std::int32_t frameWidth_ = 0;
    COLORREF frameColour_ = 0;
    std::int32_t majorVertical_ = kMajorSpacing;
    std::int32_t majorHorizontal_ = kMajorSpacing;
    std::int32_t minorVertical_ = kMinorSpacing;
    std::int32_t minorHorizontal_ = kMinorSpacing;
    std::int32_t pixelsPerInchX_;
    std::int32_t pixelsPerInchY_;
};

}  // namespace kx
