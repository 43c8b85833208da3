#include "lib/windows/image_list.h"

#include <algorithm>

#include "lib/windows/bitmap.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"

namespace kx {
namespace {

// Images side by side in one bitmap.
class Strip {
  public:
    explicit Strip(Bitmap bitmap) : bitmap_(std::move(bitmap)) { context_.SelectBitmap(bitmap_); }

    // source: a context to select the image into for as long as it is copied.
    bool Append(HBITMAP image, int side, MemoryContext& source) {
        const bool copied = source.Select(image) != nullptr &&
                            context_.DeviceCopyFrom(end_, 0, side, side, source, 0, 0) != FALSE;
        source.RestoreBitmap();
        end_ += side;
        return copied;
    }
    // No longer selected: as an image list takes it.
    HBITMAP Finished() {
        context_.RestoreBitmap();
        return bitmap_.Handle();
    }

  private:
    Bitmap bitmap_;
    MemoryContext context_;
    int end_ = 0;
};

Bitmap Coloured(int width, int height) {
    Bitmap bitmap;
    bitmap.CreateDibSection(width, height, 32);
    return bitmap;
}

Bitmap Monochrome(int width, int height) {
    Bitmap bitmap;
    bitmap.Create(width, height, 1, 1, nullptr);
    return bitmap;
}

}  // namespace

UniqueImageList LoadIconImages(const ModuleInstance& module, int side, int count,
                               const std::uint32_t* iconIds) {
    UniqueImageList images(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, std::max(count, 1), 0));
    if (images == nullptr || count < 1) {
        return images;
    }
    // Adding icons one by one costs the system many times as much as adding them all.
    Strip colours(Coloured(side * count, side));
    Strip masks(Monochrome(side * count, side));
    MemoryContext source;
    for (int i = 0; i < count; ++i) {
        const UniqueIcon icon(
            static_cast<HICON>(module.LoadImageById(iconIds[i], IMAGE_ICON, side, side, 0)));
        ICONINFO parts{};
        if (icon == nullptr || !GetIconInfo(icon.get(), &parts)) {
            return nullptr;
        }
        const UniqueBitmap colour(parts.hbmColor);
        const UniqueBitmap mask(parts.hbmMask);
        if (!colours.Append(colour.get(), side, source) || !masks.Append(mask.get(), side, source)) {
            return nullptr;
        }
    }
    if (ImageList_Add(images.get(), colours.Finished(), masks.Finished()) != 0) {
        return nullptr;
    }
    return images;
}

}  // namespace kx
