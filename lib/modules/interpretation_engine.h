// The binding to the suite's interpretation engine, which words the automatic interpretation of a resting
// ECG.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/modules/module_binder.h"

namespace kx {

class InterpretationEngine final : public ModuleBinder {
  public:
    InterpretationEngine() noexcept : ModuleBinder("kxinterp.dll", kMinimumModuleVersion) {}

    // Interprets the measurements of an episode with the test's first annotation store; the last three values
    // are 0. Nonzero: result->text holds the interpretation. 0: it failed, or the export is missing
    // (ErrorText says so).
    std::uint32_t INTERPRET(KxMeasurementSet* measurements, KxInterpretationResult* result, void* annotations,
                            std::uint32_t fourth, std::uint32_t fifth, std::uint32_t sixth) {
        return Call("INTERPRET", measurements, result, annotations, fourth, fifth, sixth);
    }
};

}  // namespace kx
