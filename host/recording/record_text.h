// The alphabets of the sources (ASCII, Latin-1, Windows-1252, UTF-8), of this program (UTF-8) and of the test
// record (Windows-1252).
#pragma once

#include <string>
#include <string_view>

namespace kx::recording {

// A text field of a file as UTF-8: up to its first zero byte, without blanks at its ends, control characters
// as blanks. Bytes that are no UTF-8 are taken for Windows-1252, which has Latin-1 in it.
std::string TextOfField(std::string_view bytes);

// UTF-8 as Windows-1252. A Latin letter that it does not have loses its mark ("Č" becomes "C"), any other
// character becomes '?'.
std::string ToRecordText(std::string_view utf8);

// Windows-1252 as UTF-8; a byte without a character becomes '?'.
std::string FromRecordText(std::string_view windows1252);

}  // namespace kx::recording
