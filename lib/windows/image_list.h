// Ownership of image lists, and their making from icons.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <memory>

#include "lib/modules/module_instance.h"

namespace kx {

struct ImageListDeleter {
    using pointer = HIMAGELIST;
    void operator()(HIMAGELIST list) const noexcept { ImageList_Destroy(list); }
};
using UniqueImageList = std::unique_ptr<HIMAGELIST, ImageListDeleter>;

// The images of `count` coloured icons of a module, so many pixels wide and high, in their order. Null: one
// of them cannot be had.
UniqueImageList LoadIconImages(const ModuleInstance& module, int side, int count,
                               const std::uint32_t* iconIds);

}  // namespace kx
