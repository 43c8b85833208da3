#include "host/batch/standard_output.h"

#include <windows.h>

#include <algorithm>

namespace kxhost {
namespace {

// A program of the windows subsystem has no console of its own, but a shell's handles and pipes reach it all
// the same.
HANDLE StandardHandle(DWORD which) {
    HANDLE handle = GetStdHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
        AttachConsole(ATTACH_PARENT_PROCESS);
        handle = GetStdHandle(which);
    }
    return handle;
}

void WriteAll(DWORD which, std::string_view text) {
    const HANDLE handle = StandardHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
        return;
    }
    while (!text.empty()) {
        DWORD written = 0;
        if (!WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ||
            written == 0) {
            return;
        }
        text.remove_prefix(std::min<std::size_t>(written, text.size()));
    }
}

}  // namespace

void WriteOutput(std::string_view text) {
    WriteAll(STD_OUTPUT_HANDLE, text);
}

void WriteError(std::string_view text) {
    WriteAll(STD_ERROR_HANDLE, text);
}

}  // namespace kxhost
