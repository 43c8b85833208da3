// kxanalyze.dll: the suite's ECG analysis engine, stand-in. It measures median beats; the recorder's live
// signal, which the real module also serves, it does not have.
#include <windows.h>

#include "suite/kxanalyze/delineator.h"

namespace {

// No exception leaves the module: short memory counts as "not measured".
std::uint32_t Guarded(std::uint32_t (*measure)(KxEpisodeRecord*), KxEpisodeRecord* episode) {
    try {
        return measure(episode);
    } catch (...) {
        return 0;
    }
}

}  // namespace

#define KX_EXPORT extern "C" __declspec(dllexport)

KX_EXPORT void __stdcall LIBSTART() {}
KX_EXPORT void __stdcall LIBSTOP() {}

// The three that belong to a live signal: connecting to it, forgetting its beat template, disconnecting. 0 =
// not done.
KX_EXPORT std::uint32_t __stdcall ATTACHPIPE(std::uint32_t /*pipe*/) {
    return 0;
}
KX_EXPORT std::uint32_t __stdcall TEMPLATERESET(std::uint32_t /*pipe*/) {
    return 0;
}
KX_EXPORT std::uint32_t __stdcall REMOVEPIPE() {
    return 0;
}

// See delineator.h. Both work in place, on the caller's thread, and keep nothing between calls.
KX_EXPORT std::uint32_t __stdcall MEASUREEPISODE(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::MeasureEpisode, episode);
}
KX_EXPORT std::uint32_t __stdcall UPDATEDETECTION(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::UpdateDetection, episode);
}
