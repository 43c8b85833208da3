#include <windows.h>

#include "tests/windows/interpretation/suite_hooks.h"

namespace {

kx::test::SuiteHooks g_hooks{};

}  // namespace

extern "C" {

kx::test::SuiteHooks* __stdcall SPY_HOOKS() {
    return &g_hooks;
}
void __stdcall LIBSTART() {
    ++g_hooks.starts;
}
void __stdcall LIBSTOP() {
    --g_hooks.starts;
}
std::uint32_t __stdcall TECH_LIST(void* records, std::uint32_t capacity) {
    return g_hooks.techList != nullptr ? g_hooks.techList(records, capacity) : 0;
}
std::uint32_t __stdcall PHYS_LIST(std::uint32_t first, void* records, std::uint32_t capacity) {
    return g_hooks.physList != nullptr ? g_hooks.physList(first, records, capacity) : 0;
}
std::uint32_t __stdcall INTERPRET(KxMeasurementSet* measurements, KxInterpretationResult* result,
                                  void* annotations, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    return g_hooks.interpret != nullptr ? g_hooks.interpret(measurements, result, annotations, a | b | c) : 0;
}
std::uint32_t __stdcall CREATETEXT(const char* script, char* buffer, std::uint32_t size, KxTestRecord* test,
                                   std::uint32_t a, std::uint32_t b) {
    return g_hooks.createText != nullptr ? g_hooks.createText(script, buffer, size, test, a | b) : 0;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}

}  // extern "C"
