// The pick lists by which a record's codes are shown: string resources "code^text^code^text".
#pragma once

#include <cstddef>
#include <cstdint>

#include "lib/resource_text.h"

namespace kx {

// Writes the text that follows the item whose first character less '0' is the code. "*" when the list cannot
// be loaded; the buffer is left as it was when no item has the code. Cut to size - 1 characters.
void RecordPickText(const ResourceTexts& texts, std::uint32_t listId, std::uint32_t code, char* buffer,
                    std::size_t size);

// The same for a list of texts alone, chosen by position from 0; empty for a position that it does not have.
void RecordListText(const ResourceTexts& texts, std::uint32_t listId, std::uint32_t position, char* buffer,
                    std::size_t size);

}  // namespace kx
