// A bitmap in memory to draw on and to look at.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"

namespace kx::test {

// White, of the screen's depth (32 bits).
class Canvas {
  public:
    Canvas(int width, int height) : width_(width), height_(height) {
        const WindowContext screen(nullptr);
        bitmap_.CreateCompatible(screen, width, height);
        context_.SelectBitmap(bitmap_);
        context_.FillWhite(0, 0, width, height);
    }

    DeviceContext& Context() { return context_; }
    const Bitmap& Picture() const { return bitmap_; }
    // 0x00BBGGRR
    COLORREF Pixel(int x, int y) const { return GetPixel(context_.Handle(), x, y); }
    // Rows of letters: '.' white, '#' black, '+' any other colour.
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (int y = 0; y < height_; ++y) {
            std::string row;
            for (int x = 0; x < width_; ++x) {
                const COLORREF colour = Pixel(x, y);
                row += colour == RGB(255, 255, 255) ? '.' : colour == 0 ? '#' : '+';
            }
            rows.push_back(row);
        }
        return rows;
    }
    int Count(COLORREF colour) const {
        int count = 0;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                count += Pixel(x, y) == colour ? 1 : 0;
            }
        }
        return count;
    }

  private:
    int width_;
    int height_;
    Bitmap bitmap_;
    MemoryContext context_;
};

}  // namespace kx::test
