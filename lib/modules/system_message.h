// The system's own words for an error code.
#pragma once

#include <windows.h>

namespace kx {

inline constexpr DWORD kSystemMessageSize = 256;

// Writes the system's message for the code (system table, user default language) into buffer, terminated.
// When the system has none of less than kSystemMessageSize characters, or one with inserts, which nobody can
// fill, writes `fallback` instead, a format with one %d for the code. The message keeps the line end that the
// system gives it. The thread's last error is not kept.
void SystemMessage(DWORD code, const char* fallback, char (&buffer)[kSystemMessageSize]);

}  // namespace kx
