#include "suite/kxsys/log_file.h"

#include <windows.h>

#include <cstring>
#include <cwchar>
#include <iterator>

#include "suite/kxsys/report_line.h"

// The module's own first bytes, whose address is its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kx::sys {
namespace {

constexpr wchar_t kExtension[] = L".log";
constexpr std::size_t kLongestPath = 1024;

// The module's own path with the extension .log.
bool LogPath(wchar_t (&path)[kLongestPath]) {
    const DWORD length = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path, kLongestPath);
    if (length == 0 || length >= kLongestPath) {
        return false;
    }
    wchar_t* const name = std::wcsrchr(path, L'\\');
    wchar_t* const dot = std::wcsrchr(name != nullptr ? name : path, L'.');
    wchar_t* const end = dot != nullptr ? dot : path + length;
    if (static_cast<std::size_t>(end - path) + std::size(kExtension) > kLongestPath) {
        return false;
    }
    std::wmemcpy(end, kExtension, std::size(kExtension));
    return true;
}

}  // namespace

bool AppendToLog(const char* line, std::size_t length) {
    wchar_t path[kLongestPath];
    if (!LogPath(path)) {
        return false;
    }
    // Opened for each line: reports are rare, and so a log on a drive that was away for a while goes on.
    HANDLE const file =
        CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    // One write, so that lines of several programs do not mix.
    char bytes[kLineSize + 2];
    std::memcpy(bytes, line, length);
    bytes[length] = '\r';
    bytes[length + 1] = '\n';
    DWORD written = 0;
    const auto size = static_cast<DWORD>(length) + 2;
    const bool done = WriteFile(file, bytes, size, &written, nullptr) && written == size;
    CloseHandle(file);
    return done;
}

}  // namespace kx::sys
