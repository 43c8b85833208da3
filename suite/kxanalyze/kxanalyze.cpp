// kxanalyze.dll: the suite's ECG analysis engine, stand-in. It measures median beats; the recorder's live
// signal, which the real module also serves, it does not have.
#include <windows.h>

#include <atomic>
#include <memory>
#include <string>

#include "lib/leads.h"
#include "suite/kxanalyze/delineator.h"
#include "suite/suite_log.h"
#include "suite/unattached.h"

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

// The report's source and the places in it.
constexpr char kSource[] = "kxanalyze";
constexpr std::uint32_t kBeatLine = 1;
constexpr std::uint32_t kLeadLine = 2;

// Why a beat or a lead of it is not measured, once for the same samples.
void Report(const Workspace& workspace) {
    kx::suite::SuiteLog log;
    if (workspace.Refusal() != nullptr) {
        log.LOGOEMERROR(kSource, kBeatLine, workspace.Refusal());
        return;
    }
    for (unsigned code = 0; workspace.IsFresh() && code < KX_MEASURED_LEADS; ++code) {
        if (const char* refusal = workspace.LeadRefusal(code)) {
            log.LOGOEMERROR(
                kSource, kLeadLine,
                (std::string(kx::StandardLeadName(code)) + " is not measured: " + refusal).c_str());
        }
    }
}

std::uint32_t MeasureAndReport(Measure measure, KxEpisodeRecord* episode, Workspace& workspace) {
    const std::uint32_t measured = measure(episode, workspace);
    Report(workspace);
    return measured;
}

// No exception leaves the module: short memory counts as "not measured".
std::uint32_t Guarded(Measure measure, KxEpisodeRecord* episode) {
    try {
        if (keptInUse.test_and_set(std::memory_order_acquire)) {
            Workspace own;
            return MeasureAndReport(measure, episode, own);
        }
        const Release release;
        if (!kept) {
            kept = std::make_unique<Workspace>();
        }
        return MeasureAndReport(measure, episode, *kept);
    } catch (...) {
        return 0;
    }
}

}  // namespace

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

// The three that belong to a live signal: connecting to it, forgetting its beat template, disconnecting. 0 =
// not done.
KX_UNATTACHED_1(ATTACHPIPE)
KX_UNATTACHED_1(TEMPLATERESET)
KX_UNATTACHED_0(REMOVEPIPE)

// See delineator.h. Both work in place, on the caller's thread.
extern "C" std::uint32_t __stdcall MEASUREEPISODE(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::MeasureEpisode, episode);
}
extern "C" std::uint32_t __stdcall UPDATEDETECTION(KxEpisodeRecord* episode) {
    return Guarded(kx::analysis::UpdateDetection, episode);
}
