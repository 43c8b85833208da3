// Any bytes as a BMP file: the pixels that the reader promises are there.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "lib/bmp_format.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kx::BmpPicture picture;
    if (kx::ParseBmp(std::as_bytes(std::span(data, size)), picture) != kx::BmpFault::kNone) {
        return 0;
    }
    unsigned sum = 0;
    for (const std::byte value : picture.pixels) {
        sum += std::to_integer<unsigned>(value);
    }
    if (picture.bitsPerPixel == 1) {
        for (const std::byte value : kx::MonochromeRows(picture)) {
            sum -= std::to_integer<unsigned>(value);
        }
        // Only padding is left out.
        if (picture.width % 32 == 0 && sum != 0) {
            std::abort();
        }
    }
    return 0;
}
