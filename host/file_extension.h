// What kind of file a name stands for.
#pragma once

#include <string_view>

namespace kxhost {

// Whether the name ends with the extension (".csv", in small letters), in either case, and is more than it.
bool HasExtension(std::string_view file, std::string_view extension);

}  // namespace kxhost
