// A module of the suite that hands every call on to the test program, which answers it (see suite.h). One binary stands for each
// of the five siblings under that one's file name: it has the exports of all of them that the library calls.
#include <windows.h>

#include <cstdint>

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

// Name, number of arguments, and what each of them is: a text (t) or a number (n).
SPY_EXPORT(LIBSTART, 0, "")
SPY_EXPORT(LIBSTOP, 0, "")
#ifdef SPY_EXPORTS
SPY_EXPORT(LOGMEMORYERROR, 2, "tn")
SPY_EXPORT(LOGEXCEPTION, 1, "t")
SPY_EXPORT(LOGINFORMATION, 1, "t")
SPY_EXPORT(SHOWINFORMATION, 2, "nt")
SPY_EXPORT(LOGSYSTEMERROR, 1, "t")
SPY_EXPORT(SHOWSYSTEMERROR, 2, "nt")
SPY_EXPORT(LOGOEMMESSAGE, 1, "t")
SPY_EXPORT(LOGOEMERROR, 3, "tnt")
SPY_EXPORT(INQUIRE, 3, "ntn")
SPY_EXPORT(LOGSERVICESTART, 1, "t")
SPY_EXPORT(LOGSERVICESTOP, 1, "t")
SPY_EXPORT(PHYS_LIST, 3, "nnn")
SPY_EXPORT(TECH_LIST, 2, "nn")
SPY_EXPORT(CREATETEXT, 6, "tnnnnn")
SPY_EXPORT(INTERPRET, 6, "nnnnnn")
SPY_EXPORT(UPDATEDETECTION, 1, "n")
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID) {
    g_self = module;
    return TRUE;
}
