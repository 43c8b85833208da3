// A page as one bit a dot: what is sent to a printer and what is written into a file.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "host/printing/print_page_layout.h"
#include "host/windows/win32_handles.h"

namespace kxhost {

// White, with a device context to draw on. A clear bit is black, as on a monochrome screen.
class PageImage {
  public:
    // Throws std::runtime_error when the system has no memory for it.
    PageImage(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    HDC Dc() const { return dc_.get(); }

    // For those who need the bitmap selected nowhere; nothing is drawn after that.
    HBITMAP TakeBitmap();

    // The same page a quarter turn to the right.
    std::unique_ptr<PageImage> TurnedRight() const;

    // A row from the top, its bytes without the padding; the most significant bit is the leftmost dot. Bits
    // behind the width belong to no dot.
    std::span<const std::uint8_t> Row(int y) const;
    // All rows as a device-independent bitmap has them: from the bottom up, each padded to 32 bits.
    std::span<const std::uint8_t> BottomUpRows() const;

  private:
    int width_;
    int height_;
    std::size_t stride_;
    UniqueBitmap bitmap_;
    UniqueMemoryDc dc_;  // before the bitmap, which it holds
    HGDIOBJ ownBitmap_ = nullptr;
    std::uint8_t* bits_ = nullptr;  // the bitmap's
};

}  // namespace kxhost
