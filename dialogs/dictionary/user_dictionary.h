// The user dictionary of a test type, opened from the interpretation pane and the like.
#pragma once

#include <cstdint>

namespace kx {

class DialogLibrary;
class Window;

// Lets the user edit the statement file of a test type (KX_TEST_...), which stands beside the library's
// module, in a modal dialog over the owner. True: it ended with OK and the file was written, so whoever shows
// the file reads it again. False as well, reported, when the module's folder is not known or the type has no
// statement file; nothing is opened then. May throw when memory is short.
bool EditUserDictionary(const DialogLibrary& library, Window* owner, std::uint32_t testType);

}  // namespace kx
