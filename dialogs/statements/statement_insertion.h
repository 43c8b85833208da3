// How a chosen statement gets into the text that is being edited.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kx {

// What inserting an item of the comment library puts into the text: the item's text and a blank, up to the
// first "[", with which the item shows its code.
std::string LibraryInsertion(std::string_view itemText);

// Puts `chosen` in place of the `length` characters at `start` of text, a zero-terminated text in a buffer of
// `size` bytes, and returns the position behind it, where the caret belongs. A replacement that would not fit
// the buffer is left out as a whole: half a statement, or the end of the user's text cut off, would change
// what the report says. Then, and when the range leaves the text, nothing changes and the result is
// kNoInsertion.
inline constexpr std::size_t kNoInsertion = static_cast<std::size_t>(-1);
std::size_t InsertCompletion(char* text, std::size_t size, std::size_t start, std::size_t length,
                             std::string_view chosen);

}  // namespace kx
