// A kxsys.dll for tests that keeps every call as one line: the export's name and its arguments. Texts are
// quoted. Not part of the contract: SPY_LOG gives the lines so far, SPY_CLEAR forgets them. The test holds a
// reference to the module so that the lines outlive the library's own.
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

char g_log[65536];

void Append(const char* line) {
    const std::size_t used = std::strlen(g_log);
    if (used + std::strlen(line) + 2 < sizeof g_log) {
        std::strcat(g_log, line);
        std::strcat(g_log, "\n");
    }
}

template <class... Arguments>
std::uint32_t Note(const char* format, Arguments... arguments) {
    char line[1024];
    std::snprintf(line, sizeof line, format, arguments...);
    Append(line);
    return 1;
}

const char* Text(const char* text) {
    return text == nullptr ? "(null)" : text;
}
unsigned Number(std::uint32_t value) {
    return static_cast<unsigned>(value);
}

}  // namespace

extern "C" {

const char* __stdcall SPY_LOG() {
    return g_log;
}
void __stdcall SPY_CLEAR() {
    g_log[0] = 0;
}

void __stdcall LIBSTART() {
    Note("LIBSTART");
}
void __stdcall LIBSTOP() {
    Note("LIBSTOP");
}
std::uint32_t __stdcall LOGMEMORYERROR(const char* source, std::uint32_t line) {
    return Note("LOGMEMORYERROR \"%s\" %u", Text(source), Number(line));
}
std::uint32_t __stdcall LOGOEMERROR(const char* source, std::uint32_t line, const char* text) {
    return Note("LOGOEMERROR \"%s\" %u \"%s\"", Text(source), Number(line), Text(text));
}
std::uint32_t __stdcall LOGEXCEPTION(const char* context) {
    return Note("LOGEXCEPTION \"%s\"", Text(context));
}
std::uint32_t __stdcall LOGSYSTEMERROR(const char* text) {
    return Note("LOGSYSTEMERROR \"%s\"", Text(text));
}
std::uint32_t __stdcall LOGOEMMESSAGE(const char* text) {
    return Note("LOGOEMMESSAGE \"%s\"", Text(text));
}
std::uint32_t __stdcall LOGSERVICESTART(const char* text) {
    return Note("LOGSERVICESTART \"%s\"", Text(text));
}
std::uint32_t __stdcall LOGSERVICESTOP(const char* text) {
    return Note("LOGSERVICESTOP \"%s\"", Text(text));
}

// The owner is told by its caption.
std::uint32_t __stdcall SHOWSYSTEMERROR(const HWND* owner, const char* text) {
    char caption[128] = {};
    if (owner != nullptr) {
        GetWindowTextA(owner[1], caption, sizeof caption);
    }
    return Note("SHOWSYSTEMERROR \"%s\" \"%s\"", caption, Text(text));
}

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}

}  // extern "C"
