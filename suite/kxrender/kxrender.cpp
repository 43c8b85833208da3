// kxrender.dll: the suite's report renderer, stand-in. It writes texts by report scripts (script.h says how
// they are written); pictures and printed reports it does not make: those exports answer 0, not done.
#include <cstdint>

#include "include/kxdialogs.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxrender/test_values.h"
#include "suite/library_texts.h"
#include "suite/suite_log.h"
#include "suite/unattached.h"

extern "C" void __stdcall LIBSTART() {}
extern "C" void __stdcall LIBSTOP() {}

// Runs a script (zero-terminated) over a test and writes the report, terminated, into buffer of `size` bytes.
// The last two arguments are 0 and not read. 1: done, also when lines were left out and reported; 0: nothing
// done.
extern "C" std::uint32_t __stdcall CREATETEXT(const char* script, char* buffer, std::uint32_t size,
                                              KxTestRecord* test, std::uint32_t, std::uint32_t) {
    if (script == nullptr || buffer == nullptr || size == 0 || test == nullptr) {
        return 0;
    }
    kx::suite::SuiteLog log;
    try {
        const kx::suite::LibraryTexts texts;
        kx::SummaryRequest request(texts, kx::UserLocale());
        request.gradeName = "pendenza";
        request.revolutionsPerMinute = "giri/min";
        const kx::render::TestValues values(*kx::TestRecord::Of(test), request);
        return kx::render::RunScript(script, values, buffer, size, log) ? 1 : 0;
    } catch (...) {
        log.LOGEXCEPTION("CREATETEXT");
        return 0;
    }
}

KX_UNATTACHED_5(RENDEROUTPUT)
KX_UNATTACHED_6(CREATEIMAGE)
KX_UNATTACHED_4(CREATEIMAGEEX)
