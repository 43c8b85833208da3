// What a test has the modules of the suite answer. One spy module stands for each of kxdb.dll, kxinterp.dll
// and kxrender.dll; its exports call the functions that the test has put here, and answer 0 without one.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx::test {

struct SuiteHooks {
    std::uint32_t (*techList)(void* records, std::uint32_t capacity);
    std::uint32_t (*physList)(std::uint32_t first, void* records, std::uint32_t capacity);
    std::uint32_t (*interpret)(KxMeasurementSet* measurements, KxInterpretationResult* result,
                               void* annotations, std::uint32_t zeros);
    std::uint32_t (*createText)(const char* script, char* buffer, std::uint32_t size, KxTestRecord* test,
                                std::uint32_t zeros);
    int starts;  // LIBSTART less LIBSTOP
};

}  // namespace kx::test
