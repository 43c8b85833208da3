// Where the batch forms write: the handles that the program was started with, else the console it was started
// from.
#pragma once

#include <string_view>

namespace kxhost {

// UTF-8 as it stands; nothing happens when there is neither a handle nor a console.
void WriteOutput(std::string_view text);
void WriteError(std::string_view text);

}  // namespace kxhost
