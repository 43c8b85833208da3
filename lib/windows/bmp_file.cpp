// The BMP files of Bitmap.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <vector>

#include "lib/bmp_format.h"
#include "lib/fileutil.h"
#include "lib/modules/module_instance.h"
#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"

namespace kx {

namespace {

constexpr char kSource[] = "..\\..\\lib\\windows\\bitmap";
constexpr char kExceptionContext[] = "BMP FILE";

struct Report {
    std::uint32_t line;
    const char* text;
};
constexpr Report kNoFile = {133, "no bmp file"};
constexpr Report kNoBitmap = {355, "Invalid hbm"};
constexpr Report kNoRows = {351, "Invalid byte width"};
constexpr std::uint32_t kNoRowBufferLine = 350;
constexpr std::uint32_t kNoHeadLine = 352;

constexpr Report ReportOf(BmpFault fault) {
    switch (fault) {
        case BmpFault::kTooShort:
            return {132, "no bmp file buf"};
        case BmpFault::kNotBmp:
            return {131, "not bmp file"};
        case BmpFault::kPixelsMissing:
            return {130, "bmp file small"};
        case BmpFault::kCompressed:
            return {129, "no compression required"};
        case BmpFault::kUnsupportedDepth:
            return {128, "Color issue"};
        case BmpFault::kWidthNotInBytes:
            return {104, "Width must be divisable by 16"};
        case BmpFault::kInvalid:
        case BmpFault::kNone:
            break;
    }
    return {103, "Invalid bitmap"};
}

void LogProgramError(Reporter& services, const Report& report) {
    services.LOGOEMERROR(kSource, report.line, report.text);
}

UniqueBitmap MakeMonochrome(const BmpPicture& picture) {
    const std::vector<std::byte> rows = MonochromeRows(picture);
    return UniqueBitmap(CreateBitmap(picture.width, picture.height, 1, 1, rows.data()));
}

UniqueBitmap MakeColoured(const BmpPicture& picture) {
    // A header of our own: what the file's says beyond these fields is nothing to trust.
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = picture.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = picture.bitsPerPixel;
    info.bmiHeader.biCompression = BI_RGB;
    // A context in memory holds a monochrome bitmap at first, and a bitmap made for it would be monochrome
    // too; it takes the screen's depth with a bitmap of the screen selected.
    const WindowContext screen(nullptr);
    Bitmap pixel;
    pixel.CreateCompatible(screen, 1, 1);
    MemoryContext memory(screen);
    memory.SelectBitmap(pixel);
    return UniqueBitmap(CreateDIBitmap(memory.Handle(), &info.bmiHeader, CBM_INIT, picture.pixels.data(),
                                       &info, DIB_RGB_COLORS));
}

Bitmap Load(const ModuleInstance* module, const char* fileName, Reporter& services) {
    DataFile file;
    // The file's own reports would be a second one for the same failure.
    if (!file.SetName(fileName) || !file.LoadAll(nullptr)) {
        LogProgramError(services, kNoFile);
        return {};
    }
    const std::size_t length = file.Content() != nullptr ? file.Length() : 0;
    BmpPicture picture;
    const BmpFault fault = ParseBmp(std::as_bytes(std::span(file.Content(), length)), picture);
    if (fault != BmpFault::kNone) {
        LogProgramError(services, ReportOf(fault));
        return {};
    }
    UniqueBitmap bitmap = picture.bitsPerPixel == 1 ? MakeMonochrome(picture) : MakeColoured(picture);
    if (bitmap == nullptr && module != nullptr) {
        module->LogLastSystemError(services);
    }
    return Bitmap(bitmap.release());
}

// A header and the colours that GetDIBits writes behind it.
struct ScanLineRequest {
    BITMAPINFOHEADER header;
    RGBQUAD colours[256];
};

bool WriteScanLines(DataFile& file, HBITMAP bitmap, const BITMAP& record, std::byte* row,
                    std::uint32_t rowSize) {
    const MemoryContext memory;
    ScanLineRequest request = {};
    for (LONG line = 0; line < record.bmHeight; ++line) {
        request.header = {};
        request.header.biSize = sizeof request.header;
        request.header.biWidth = record.bmWidth;
        request.header.biHeight = record.bmHeight;
        request.header.biPlanes = 1;
        request.header.biBitCount = record.bmBitsPixel;
        request.header.biCompression = BI_RGB;
        if (GetDIBits(memory.Handle(), bitmap, static_cast<UINT>(line), 1, row,
                      reinterpret_cast<BITMAPINFO*>(&request), DIB_RGB_COLORS) == 0 ||
            !file.Write(row, rowSize)) {
            return false;
        }
    }
    return true;
}

bool Write(DataFile& file, HBITMAP bitmap, const BITMAP& record, Reporter& services) {
    const std::int64_t rowSize = BmpRowSize(record.bmWidth, record.bmBitsPixel);
    if (rowSize <= 0) {
        LogProgramError(services, kNoRows);
        return false;
    }
    const auto rowBytes = static_cast<std::uint32_t>(rowSize);
    const std::unique_ptr<std::byte[]> row(new (std::nothrow) std::byte[rowBytes]());
    if (row == nullptr) {
        services.LOGMEMORYERROR(kSource, kNoRowBufferLine);
        return false;
    }
    const std::unique_ptr<BmpHead> head(new (std::nothrow) BmpHead);
    if (head == nullptr) {
        services.LOGMEMORYERROR(kSource, kNoHeadLine);
        return false;
    }
    MakeBmpHead(record.bmWidth, record.bmHeight, record.bmBitsPixel, rowBytes, *head);
    return file.Write(head->data(), static_cast<std::uint32_t>(head->size())) &&
           WriteScanLines(file, bitmap, record, row.get(), rowBytes);
}

}  // namespace

Bitmap Bitmap::LoadBmpFile(const ModuleInstance* module, const char* fileName, Reporter& services) {
    try {
        return Load(module, fileName, services);
    } catch (...) {
        services.LOGEXCEPTION(kExceptionContext);
        return {};
    }
}

bool Bitmap::SaveBmpFile(const char* fileName, Reporter& services) const {
    if (Handle() == nullptr) {
        LogProgramError(services, kNoBitmap);
        return false;
    }
    try {
        const BITMAP record = Record();
        DataFile file;
        if (!file.SetName(fileName) || !file.CreateAlways(&services)) {
            return false;
        }
        if (!Write(file, Handle(), record, services)) {
            // Half a picture is no picture.
            file.Delete(0);
            return false;
        }
        return true;
    } catch (...) {
        services.LOGEXCEPTION(kExceptionContext);
        return false;
    }
}

}  // namespace kx
