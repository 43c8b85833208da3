// A module of the suite that hands every call on to the test program, which answers it (see suite.h). One
// binary stands for each of the five siblings under that one's file name: it has the exports of all of them.
#include <windows.h>

#include <cstdint>

#include "tests/rig/suite_exports.h"

namespace {

HMODULE g_self = nullptr;

std::uint32_t Tell(const char* name, const char* kinds, const std::uint32_t* arguments) {
    // Exported by the test program, so that the answers live longer than a binding.
    using Listener = std::uint32_t (*)(HMODULE, const char*, const char*, const std::uint32_t*);
    static const auto listener =
        reinterpret_cast<Listener>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(nullptr), "RIG_SUITE_CALL")));
    return listener == nullptr ? 0 : listener(g_self, name, kinds, arguments);
}

}  // namespace

#define PARAMETERS_0
#define PARAMETERS_1 std::uint32_t a
#define PARAMETERS_2 PARAMETERS_1, std::uint32_t b
#define PARAMETERS_3 PARAMETERS_2, std::uint32_t c
#define PARAMETERS_4 PARAMETERS_3, std::uint32_t d
#define PARAMETERS_5 PARAMETERS_4, std::uint32_t e
#define PARAMETERS_6 PARAMETERS_5, std::uint32_t f
#define VALUES_0
#define VALUES_1 , a
#define VALUES_2 VALUES_1, b
#define VALUES_3 VALUES_2, c
#define VALUES_4 VALUES_3, d
#define VALUES_5 VALUES_4, e
#define VALUES_6 VALUES_5, f
#define SPY_EXPORT(name, count, kinds)                                                  \
    extern "C" __declspec(dllexport) std::uint32_t __stdcall name(PARAMETERS_##count) { \
        const std::uint32_t arguments[] = {0 VALUES_##count};                           \
        return Tell(#name, kinds, arguments + 1);                                       \
    }

SPY_EXPORT(LIBSTART, 0, "")
SPY_EXPORT(LIBSTOP, 0, "")

#ifdef SPY_EXPORTS
KX_SYS_EXPORTS(SPY_EXPORT)
KX_DB_EXPORTS(SPY_EXPORT)
KX_RENDER_EXPORTS(SPY_EXPORT)
KX_INTERP_EXPORTS(SPY_EXPORT)
KX_ANALYZE_EXPORTS(SPY_EXPORT)
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID) {
    g_self = module;
    return TRUE;
}
