#include "lib/windows/bitmap.h"

#include "lib/windows/device_context.h"

namespace kx {

static_assert(sizeof(Bitmap) == sizeof(HBITMAP));

BITMAP Bitmap::Record() const {
    BITMAP record = {};
    if (GetObjectA(Handle(), sizeof record, &record) == 0) {
        return {};
    }
    return record;
}

bool Bitmap::Create(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
    handle_.reset(CreateBitmap(width, height, planes, bitsPerPixel, bits));
    return handle_ != nullptr;
}

bool Bitmap::CreateCompatible(const DeviceContext& context, int width, int height) {
    handle_.reset(CreateCompatibleBitmap(context.Handle(), width, height));
    return handle_ != nullptr;
}

bool Bitmap::CreateDibSection(int width, int height, WORD bitsPerPixel) {
    // The header is followed by one colour, and its size is said to be both together, 44 bytes. The system
    // reads a colour table behind the header for the shallow depths, hence the room for one.
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256 + 1];
    } info = {};
    info.header.biSize = sizeof(BITMAPINFO);
    info.header.biWidth = width;
    info.header.biHeight = height;
    info.header.biPlanes = 1;
    info.header.biBitCount = bitsPerPixel;
    info.header.biCompression = BI_RGB;
    handle_.reset(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS,
                                   nullptr, nullptr, 0));
    return handle_ != nullptr;
}

LONG Bitmap::GetBits(void* buffer, LONG size) const {
    return GetBitmapBits(Handle(), size, buffer);
}

std::unique_ptr<std::byte[]> Bitmap::GetDibBits(const DeviceContext& context) const {
    const BITMAP record = Record();
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colours[256];
    } info = {};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = record.bmWidth;
    info.header.biHeight = record.bmHeight;
    info.header.biPlanes = 1;
    info.header.biBitCount = static_cast<WORD>(record.bmPlanes * record.bmBitsPixel);
    info.header.biCompression = BI_RGB;
    auto* request = reinterpret_cast<BITMAPINFO*>(&info);
    const UINT lines = static_cast<UINT>(record.bmHeight);
    if (record.bmHeight < 1 ||
        GetDIBits(context.Handle(), Handle(), 0, lines, nullptr, request, DIB_RGB_COLORS) == 0 ||
        info.header.biSizeImage == 0) {
        return nullptr;
    }
    auto bits = std::make_unique<std::byte[]>(info.header.biSizeImage);
    if (GetDIBits(context.Handle(), Handle(), 0, lines, bits.get(), request, DIB_RGB_COLORS) == 0) {
        return nullptr;
    }
    return bits;
}

}  // namespace kx
