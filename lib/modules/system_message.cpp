#include "lib/modules/system_message.h"

#include <cstdio>

namespace kx {

void SystemMessage(DWORD code, const char* fallback, char (&buffer)[kSystemMessageSize]) {
    constexpr DWORD kUserDefaultLanguage = 0x400;
    // There is nothing to insert: the system refuses a message with insertion marks, and the code tells more
    // than the marks would.
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, kUserDefaultLanguage,
                                        buffer, kSystemMessageSize, nullptr);
    if (length == 0) {
        std::snprintf(buffer, sizeof buffer, fallback, static_cast<int>(code));
    }
}

}  // namespace kx
