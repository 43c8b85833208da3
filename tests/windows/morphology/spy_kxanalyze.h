// What a test says to the kxanalyze.dll that it lays, and hears from it.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"

namespace kx::test {

// Every measurement after so many calls.
constexpr std::uint16_t FigureOfCall(std::uint32_t call) {
    return static_cast<std::uint16_t>(10000 + call);
}

struct EngineSpy {
    std::uint32_t(__stdcall* calls)();
    // The measurement set as the last call found it.
    const KxMeasurementSet*(__stdcall* input)();
    // Nonzero: the following calls answer 0 and change nothing.
    void(__stdcall* fail)(std::uint32_t);
    // What the engine finds for markers without manual flag; null (at first): it leaves them.
    void(__stdcall* automatic)(const KxMeasurementSet*);
};

}  // namespace kx::test
