// Where this program lies; the suite's modules lie beside it.
#pragma once

#include <filesystem>

namespace kxhost {

std::filesystem::path ProgramFolder();

}  // namespace kxhost
