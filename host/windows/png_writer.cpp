#include "host/windows/png_writer.h"

// The GDI+ headers want the COM types and min and max that the project's settings leave out.
#include <objidl.h>

#include <algorithm>
namespace Gdiplus {
using std::max;  // NOLINT(misc-unused-using-decls)
using std::min;  // NOLINT(misc-unused-using-decls)
}  // namespace Gdiplus
#include <gdiplus.h>

#include <memory>
#include <system_error>

namespace kxhost {
namespace {

using namespace Gdiplus::DllExports;

// The PNG encoder that every GDI+ has.
constexpr CLSID kPngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

struct ImageDeleter {
    void operator()(Gdiplus::GpBitmap* image) const { GdipDisposeImage(image); }
};

}  // namespace

GdiPlusSession::GdiPlusSession() {
    Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) {
        token_ = 0;
    }
}

GdiPlusSession::~GdiPlusSession() {
    if (token_ != 0) {
        Gdiplus::GdiplusShutdown(token_);
    }
}

bool WritePng(HBITMAP bitmap, const std::filesystem::path& file, int dotsPerInch) {
    Gdiplus::GpBitmap* made = nullptr;
    if (GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &made) != Gdiplus::Ok) {
        return false;
    }
    const std::unique_ptr<Gdiplus::GpBitmap, ImageDeleter> image(made);
    const auto resolution = static_cast<Gdiplus::REAL>(dotsPerInch);
    if (dotsPerInch != 0 && GdipBitmapSetResolution(made, resolution, resolution) != Gdiplus::Ok) {
        return false;
    }
    if (GdipSaveImageToFile(image.get(), file.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok) {
        return true;
    }
    std::error_code ignored;
    if (std::filesystem::is_regular_file(file, ignored)) {
        std::filesystem::remove(file, ignored);
    }
    return false;
}

}  // namespace kxhost
