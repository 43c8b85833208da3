#include "host/page_format.h"

#include "host/file_extension.h"

namespace kxhost {

std::optional<PageFormat> PageFormatOf(std::string_view file) {
    if (HasExtension(file, ".pcl"))
        return PageFormat::kPcl;
    if (HasExtension(file, ".bmp"))
        return PageFormat::kBmp;
    if (HasExtension(file, ".png"))
        return PageFormat::kPng;
    return std::nullopt;
}

}  // namespace kxhost
