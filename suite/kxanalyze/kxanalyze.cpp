// kxanalyze.dll: the suite's ECG analysis engine, stand-in. It measures median beats; the recorder's live
// signal, which the real module also serves, it does not have.
#include <windows.h>

#include <atomic>
#include <memory>

#include "suite/kxanalyze/delineator.h"

namespace {

using kx::analysis::Workspace;
using Measure = std::uint32_t (*)(KxEpisodeRecord*, Workspace&);

// The working memory that the module keeps, so that the steps of a drag allocate none of it; a second thread
// that comes meanwhile takes its own.
std::unique_ptr<Workspace> kept;
std::atomic_flag keptInUse = ATOMIC_FLAG_INIT;

struct Release {
    ~Release() { keptInUse.clear(std::memory_order_release); }
};

// No exception leaves the module: short memory counts as "not measured".
std::uint32_t Guarded(Measure measure, KxEpisodeRecord* episode) {
    try {
        if (keptInUse.test_and_set(std::memory_order_acquire)) {
            Workspace own;
            return measure(episode, own);
        }
        const Release release;
        if (!kept) {
            kept = std::make_unique<Workspace>();
        }
        return measure(episode, *kept);
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

// See delineator.h. Both work in place, on the caller's thread, and keep nothing of a beat between calls.
KX_EXPORT std::uint32_t __stdcall MEASUREEPISODE(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::MeasureEpisode, episode);
}
KX_EXPORT std::uint32_t __stdcall UPDATEDETECTION(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::UpdateDetection, episode);
}
