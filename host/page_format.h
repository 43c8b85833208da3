// The files that a page can be printed into.
#pragma once

#include <optional>
#include <string_view>

namespace kxhost {

enum class PageFormat { kPcl, kBmp, kPng };

// By the extension of a file's name, in either case; none for any other.
std::optional<PageFormat> PageFormatOf(std::string_view file);

}  // namespace kxhost
