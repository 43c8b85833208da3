// Ownership of image lists.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>

namespace kx {

struct ImageListDeleter {
    using pointer = HIMAGELIST;
    void operator()(HIMAGELIST list) const noexcept { ImageList_Destroy(list); }
};
using UniqueImageList = std::unique_ptr<HIMAGELIST, ImageListDeleter>;

}  // namespace kx
