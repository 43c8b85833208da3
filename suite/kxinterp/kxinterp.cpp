// kxinterp.dll: the suite's interpretation engine, stand-in: published criteria, worded in the library's own
// statements.
#include <cstdint>

#include "suite/kxinterp/interpreter.h"
#include "suite/library_texts.h"
#include "suite/suite_log.h"

namespace {

constexpr char kContext[] = "INTERPRET";

}  // namespace

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

// See interpreter.h. The last three arguments are 0 and not read. 1: the result is filled; 0: it is as it
// was.
extern "C" std::uint32_t __stdcall INTERPRET(const KxMeasurementSet* set, KxInterpretationResult* result,
                                             const KxAnnotationStore* annotations, std::uint32_t,
                                             std::uint32_t, std::uint32_t) {
    if (set == nullptr || result == nullptr) {
        return 0;  // nothing asked, nothing to report
    }
    kx::suite::SuiteLog log;
    try {
        const kx::suite::LibraryTexts texts;
        if (!texts.IsLoaded()) {
            log.LOGSYSTEMERROR("kxinterp: kxdialogs.dll is not loaded, no statement texts");
            return 0;
        }
        return kx::interp::Interpret(set, annotations, texts, result, log) ? 1 : 0;
    } catch (...) {
        log.LOGEXCEPTION(kContext);
        return 0;
    }
}
