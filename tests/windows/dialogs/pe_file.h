// What a loaded module exports and imports, read from its own headers.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kx::test {

std::vector<std::string> ExportNames(HMODULE module);
// File names in lower case.
std::vector<std::string> ImportNames(HMODULE module);

}  // namespace kx::test
