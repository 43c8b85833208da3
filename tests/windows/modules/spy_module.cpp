// A module of the suite that only takes down how it is called. Compiled once for each module, with
// SPY_EXPORTS naming the list of its exports and SPY_CONTROLS set when it has LIBSTART and LIBSTOP.
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "tests/rig/suite_exports.h"

#define SPY_EXPORT extern "C" __declspec(dllexport)

namespace {

char calls[16384];
std::uint32_t result = 0;

void Append(const char* text) {
    const std::size_t used = std::strlen(calls);
    std::snprintf(calls + used, sizeof calls - used, "%s", text);
}

[[maybe_unused]] std::uint32_t Note(const char* name, const char* kinds, const std::uint32_t* arguments) {
    Append(name);
    Append("(");
    for (std::size_t i = 0; kinds[i] != '\0'; ++i) {
        char number[16];
        std::snprintf(number, sizeof number, "%lu", static_cast<unsigned long>(arguments[i]));
        Append(i > 0 ? "," : "");
        Append(kinds[i] == 't' ? reinterpret_cast<const char*>(arguments[i]) : number);
    }
    Append(");");
    return result;
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
#define SPY_ON(name, count, kinds)                                \
    SPY_EXPORT std::uint32_t __stdcall name(PARAMETERS_##count) { \
        const std::uint32_t arguments[] = {0 VALUES_##count};     \
        return Note(#name, kinds, arguments + 1);                 \
    }

SPY_EXPORTS(SPY_ON)

#ifdef SPY_CONTROLS
SPY_EXPORT void __stdcall LIBSTART() {
    Note("LIBSTART", "", nullptr);
}
SPY_EXPORT void __stdcall LIBSTOP() {
    Note("LIBSTOP", "", nullptr);
}
#endif

// What the test asks: the calls so far, written as "NAME(ARGUMENT,ARGUMENT);", and what every call answers
// from now on.
SPY_EXPORT const char* __stdcall SPYCALLS() {
    return calls;
}
SPY_EXPORT void __stdcall SPYRESET(std::uint32_t answer) {
    calls[0] = '\0';
    result = answer;
}
