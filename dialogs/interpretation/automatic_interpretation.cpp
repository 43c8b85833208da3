#include "dialogs/interpretation/automatic_interpretation.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <new>

#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_files.h"
#include "lib/fileutil.h"
#include "lib/modules/interpretation_engine.h"
#include "lib/modules/render_services.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoBeatLine = 1643;
constexpr std::uint32_t kNoSignalLine = 1644;
constexpr std::uint32_t kNoFolderLine = 1660;
constexpr std::uint32_t kNotRenderedLine = 1669;
constexpr std::uint32_t kNoBufferLine = 1671;
constexpr std::uint32_t kNoScriptLine = 1672;

constexpr char kScriptName[] = "\\stress.scr";
constexpr std::size_t kEngineTextSize = 4096;
// What a rendered text may have more than its script.
constexpr std::uint32_t kRenderedSurplus = 4096;

// As much of a text as is shown. An edit lays a line out anew for every piece that it breaks off, and a line
// of ten times as much takes a hundred times as long: minutes.
constexpr std::size_t kMostShown = 20000;

std::string Shown(const char* text) {
    const std::size_t length = std::strlen(text);
    if (length <= kMostShown) {
        return text;
    }
    return std::string(text, kMostShown) + "\r\n\r\n[Testo troncato: mostrati i primi " +
           std::to_string(kMostShown) + " caratteri di " + std::to_string(length) + ".]";
}

bool IsLeftOut(const void* hostOptions) {
    std::uint32_t first = 0;
    std::memcpy(&first, hostOptions, sizeof first);
    return first == kWithoutAutomatic;
}

std::string Interpreted(const Dialog& pane, TestRecord& test) {
    Reporter& log = pane.Reports();
    if (test.Ecg() == nullptr) {
        log.LOGOEMERROR(kInterpSource, kNoSignalLine, "no ECG");
        return {};
    }
    EpisodeRecord* const episode = test.Episode(0);
    if (episode == nullptr || episode->DurationSeconds() == 0) {
        log.LOGOEMERROR(kInterpSource, kNoBeatLine, "no cpx");
        return {};
    }
    InterpretationEngine engine;
    if (pane.HasEnded() || test.Annotations() == nullptr) {
        return {};
    }
    const bool interpreted =
        engine.INTERPRET(&episode->measurements, &episode->interpretation, test.annotations, 0, 0, 0) != 0;
    if (pane.HasEnded()) {
        return {};
    }
    if (!interpreted) {
        log.LOGSYSTEMERROR(engine.ErrorText());
        return {};
    }
    char text[kEngineTextSize] = {};
    episode->Interpretation().Text(text, sizeof text);
    return text;
}

std::string Rendered(const Dialog& pane, TestRecord& test) {
    Reporter& log = pane.Reports();
    char path[MAX_PATH];
    if (!PathBesideLibrary(pane.Module(), kScriptName, kNoFolderLine, log, path)) {
        return {};
    }
    DataFile script;
    if (!script.SetName(path) || !script.LoadAll(nullptr)) {
        log.LOGOEMERROR(kInterpSource, kNoScriptLine, path);
        return {};
    }
    const std::uint32_t size = script.Length() + kRenderedSurplus;
    const std::unique_ptr<char[]> text(size >= kRenderedSurplus ? new (std::nothrow) char[size]() : nullptr);
    if (text == nullptr) {
        log.LOGMEMORYERROR(kInterpSource, kNoBufferLine);
        return {};
    }
    RenderServices renderer;
    if (pane.HasEnded()) {
        return {};
    }
    if (renderer.CREATETEXT(script.Content(), text.get(), size, &test, 0, 0) == 0) {
        log.LOGOEMERROR(kInterpSource, kNotRenderedLine, "interp");
        return {};
    }
    text[size - 1] = '\0';
    return Shown(text.get());
}

}  // namespace

std::string ProduceAutomaticInterpretation(const Dialog& pane, TestRecord& test, const void* hostOptions) {
    switch (test.TestType()) {
        case KX_TEST_RESTING:
            return IsLeftOut(hostOptions) ? std::string() : Interpreted(pane, test);
        case KX_TEST_STRESS:
            return Rendered(pane, test);
        default:
            return {};
    }
}

}  // namespace kx
