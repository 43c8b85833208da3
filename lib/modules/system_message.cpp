#include "lib/modules/system_message.h"

#include <cstdio>

namespace kx {

void SystemMessage(DWORD code, const char* fallback, char (&buffer)[kSystemMessageSize]) {
    constexpr DWORD kUserDefaultLanguage = 0x400;
    // Some messages hold insertion marks, and there is nothing to insert.
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, kUserDefaultLanguage, buffer, kSystemMessageSize, nullptr);
    if (length == 0) {
        std::snprintf(buffer, sizeof buffer, fallback, static_cast<int>(code));
    }
}

}  // namespace kx
