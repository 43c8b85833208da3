// Text files that people write for the suite, in whatever their editor saves. Portable.
#pragma once

#include <string>
#include <string_view>

namespace kx::suite {

// The text of a file as Windows-1252, which the suite's records hold. A file that is UTF-8 throughout (with
// or without its mark) is converted, and characters that Windows-1252 does not have become '?'; any other
// file is taken for Windows-1252 already. Pure ASCII is the same in both.
std::string TextOfFile(std::string_view file);

}  // namespace kx::suite
