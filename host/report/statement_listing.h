// The statements of an automatic interpretation by their codes.
#pragma once

#include <string>
#include <string_view>

#include "lib/resource_text.h"

namespace kxhost {

// One "code<TAB>text" a line for each line of an interpretation's text (Windows-1252, in and out), in its
// order. The code is that of the statement whose text the line is, with numbers in the places of its "%d"; 0
// when the line is none of the statements.
std::string ListStatements(std::string_view interpretation, const kx::ResourceTexts& texts);

}  // namespace kxhost
