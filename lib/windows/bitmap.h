// A GDI bitmap, its files and its hatch patterns.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>

#include "lib/reporter.h"
#include "lib/windows/gdi_handles.h"

namespace kx {

class DeviceContext;
class ModuleInstance;

// Owns one bitmap, or none. An operation without a bitmap gives 0, false or null.
class Bitmap {
  public:
    Bitmap() = default;
    // Takes the bitmap over.
    explicit Bitmap(HBITMAP handle) : handle_(handle) {}

    HBITMAP Handle() const { return handle_.get(); }
    explicit operator bool() const { return handle_ != nullptr; }

    // Each of these replaces the bitmap and tells whether there is one now. Sizes are in pixels.

    // bits: rows from the top down, each padded to 16 bits; null leaves the pixels undefined.
    bool Create(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
    bool CreateCompatible(const DeviceContext& context, int width, int height);
    // Bottom-up, uncompressed, without colours of its own at 8 bits per pixel and less.
    bool CreateDibSection(int width, int height, WORD bitsPerPixel);
    void Destroy() { handle_.reset(); }

    int Width() const { return Record().bmWidth; }
    int Height() const { return Record().bmHeight; }
    int BitsPerPixel() const { return Record().bmBitsPixel; }

    // ---- what the suite's other programs do, and no pane of this library

    // The length of a row as GetBits gives it.
    int WidthBytes() const { return Record().bmWidthBytes; }
    // Copies at most `size` bytes of the pixels, rows from the top down; returns how many.
    LONG GetBits(void* buffer, LONG size) const;
    // The pixels as the rows of a bottom-up device-independent bitmap of the same depth, each padded to 32
    // bits; null when they cannot be read. The bitmap must not be selected in a context.
    std::unique_ptr<std::byte[]> GetDibBits(const DeviceContext& context) const;

    // Reads an uncompressed BMP file of 1 or 24 bits per pixel. Whatever is wrong with it is reported to
    // services and gives no bitmap. With a module, a bitmap that the system refuses is reported by the
    // system's message too.
    static Bitmap LoadBmpFile(const ModuleInstance* module, const char* fileName, Reporter& services);
    // Writes the bitmap as a BMP file with a table of two colours, black and white, which is right for a
    // bitmap of 1 bit per pixel. The bitmap must not be selected in a context. False when there is no file
    // then, reported but for a null name and for a failed write, whose beginning is removed.
    bool SaveBmpFile(const char* fileName, Reporter& services) const;

    // A square monochrome pattern for a hatch brush. pattern: 0 falling, 1 rising diagonals, 2 vertical
    // lines, any other as 0. scale: pixels per pattern pixel, clamped to 1..16. The side is 16 * scale.
    static Bitmap MakeHatch(int pattern, int scale);

  private:
    BITMAP Record() const;

    UniqueBitmap handle_;
};

}  // namespace kx
