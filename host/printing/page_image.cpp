#include "host/printing/page_image.h"

#include <stdexcept>

namespace kxhost {

PageImage::PageImage(int width, int height)
    : width_(width),
      height_(height),
      stride_(static_cast<std::size_t>((width + 31) / 32 * 4)),
      dc_(CreateCompatibleDC(nullptr)) {
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[2];
    } info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = width;
    info.header.biHeight = height;
    info.header.biPlanes = 1;
    info.header.biBitCount = 1;
    info.colours[1] = {255, 255, 255, 0};
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(dc_.get(), reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS,
                                   &bits, nullptr, 0));
    if (!dc_ || !bitmap_) {
        throw std::runtime_error("there is not enough memory for the page");
    }
    bits_ = static_cast<std::uint8_t*>(bits);
    ownBitmap_ = SelectObject(dc_.get(), bitmap_.get());
    PatBlt(dc_.get(), 0, 0, width, height, WHITENESS);
}

HBITMAP PageImage::TakeBitmap() {
    SelectObject(dc_.get(), ownBitmap_);
    GdiFlush();
    return bitmap_.get();
}

// White is set already: black dots alone are carried over.
std::unique_ptr<PageImage> PageImage::TurnedRight() const {
    auto turned = std::make_unique<PageImage>(height_, width_);
    for (int y = 0; y < height_; ++y) {
        const auto row = Row(y);
        const int x = height_ - 1 - y;
        const auto place = static_cast<std::size_t>(x / 8);
        const auto clear = static_cast<std::uint8_t>(~(0x80 >> x % 8));
        for (int down = 0; down < width_; ++down) {
            if ((row[static_cast<std::size_t>(down / 8)] & 0x80 >> down % 8) == 0) {
                turned->bits_[static_cast<std::size_t>(width_ - 1 - down) * turned->stride_ + place] &= clear;
            }
        }
    }
    return turned;
}

std::span<const std::uint8_t> PageImage::Row(int y) const {
    return {bits_ + static_cast<std::size_t>(height_ - 1 - y) * stride_,
            static_cast<std::size_t>((width_ + 7) / 8)};
}

std::span<const std::uint8_t> PageImage::BottomUpRows() const {
    return {bits_, stride_ * static_cast<std::size_t>(height_)};
}

}  // namespace kxhost
