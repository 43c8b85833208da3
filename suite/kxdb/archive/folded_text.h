// Texts as search compares them.
#pragma once

#include <string>
#include <string_view>

namespace kx::db {

// A Windows-1252 text in small letters without accents, in ASCII; characters that are no letters stay where
// ASCII has them and become blanks where it has not.
std::string Folded(std::string_view text);

}  // namespace kx::db
