// The binding to the suite's ECG analysis engine, which measures median beats.
#pragma once

#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/modules/module_binder.h"

namespace kx {

// Each method is the export of kxanalyze.dll of the same name and returns its result, or 0 when the module or
// the export is missing (ErrorText says which). Calls are synchronous and keep no address.
class AnalysisEngine final : public ModuleBinder {
  public:
    AnalysisEngine() noexcept : ModuleBinder("kxanalyze.dll", kMinimumModuleVersion) {}

    // Measures the beat in place from its samples alone. Nonzero: it was measured.
    std::uint32_t MEASUREEPISODE(KxEpisodeRecord* episode) { return Call("MEASUREEPISODE", episode); }

    // Measures the beat again in place: markers whose manual flag is set keep their values, every other
    // marker and every derived measurement is computed anew. Nonzero: it was measured.
    std::uint32_t UPDATEDETECTION(KxEpisodeRecord* episode) { return Call("UPDATEDETECTION", episode); }

    // These serve the recorder's live signal, which is not this library's: the pipe is the module's own
    // value.
    std::uint32_t ATTACHPIPE(std::uint32_t pipe) { return Call("ATTACHPIPE", pipe); }
    std::uint32_t TEMPLATERESET(std::uint32_t pipe) { return Call("TEMPLATERESET", pipe); }
    // Reports the binding's failure itself when the export cannot be resolved.
    std::uint32_t REMOVEPIPE(Reporter& services) { return CallOrReport(services, "REMOVEPIPE"); }
};

}  // namespace kx
