#include "tests/windows/host/png_picture.h"

#include <windows.h>

#include <objidl.h>

#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include <memory>
#include <set>

namespace kx::test {

namespace {

PngPicture Read(const std::filesystem::path& file) {
    PngPicture picture;
    Gdiplus::Bitmap image(file.c_str());
    GUID format{};
    if (image.GetLastStatus() == Gdiplus::Ok && image.GetRawFormat(&format) == Gdiplus::Ok && format == Gdiplus::ImageFormatPNG) {
        picture.width = static_cast<int>(image.GetWidth());
        picture.height = static_cast<int>(image.GetHeight());
        Gdiplus::Rect area(0, 0, picture.width, picture.height);
        Gdiplus::BitmapData pixels{};
        if (image.LockBits(&area, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &pixels) != Gdiplus::Ok) {
            return {};
        }
        std::set<Gdiplus::ARGB> colours;
        for (int y = 0; y < picture.height; ++y) {
            const auto* row = reinterpret_cast<const Gdiplus::ARGB*>(static_cast<const char*>(pixels.Scan0) + y * pixels.Stride);
            // Neighbours are mostly alike.
            for (int x = 0; x < picture.width; ++x) {
                if (x == 0 || row[x] != row[x - 1]) {
                    colours.insert(row[x]);
                }
            }
        }
        image.UnlockBits(&pixels);
        picture.colours = colours.size();
    }
    return picture;
}

}  // namespace

PngPicture ReadPng(const std::filesystem::path& file) {
    ULONG_PTR token = 0;
    Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
        return {};
    }
    const PngPicture picture = Read(file);
    Gdiplus::GdiplusShutdown(token);
    return picture;
}

}  // namespace kx::test
