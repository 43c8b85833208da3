#include "suite/suite_log.h"

#include <windows.h>

namespace kx::suite {

namespace {

// The export's answer, 0 when nobody has loaded the system services.
template <class... Arguments>
std::uint32_t Report(const char* name, Arguments... arguments) {
    const HMODULE services = GetModuleHandleW(L"kxsys.dll");
    using Export = std::uint32_t(__stdcall*)(Arguments...);
    auto* address = services != nullptr ? reinterpret_cast<void*>(GetProcAddress(services, name)) : nullptr;
    return address != nullptr ? reinterpret_cast<Export>(address)(arguments...) : 0;
}

}  // namespace

std::uint32_t SuiteLog::LOGMEMORYERROR(const char* source, std::uint32_t line) {
    return Report("LOGMEMORYERROR", source, line);
}

std::uint32_t SuiteLog::LOGOEMERROR(const char* source, std::uint32_t line, const char* text) {
    return Report("LOGOEMERROR", source, line, text);
}

std::uint32_t SuiteLog::LOGEXCEPTION(const char* context) {
    return Report("LOGEXCEPTION", context);
}

std::uint32_t SuiteLog::LOGSYSTEMERROR(const char* text) {
    return Report("LOGSYSTEMERROR", text);
}

}  // namespace kx::suite
