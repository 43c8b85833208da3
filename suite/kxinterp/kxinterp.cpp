// kxinterp.dll: the suite's interpretation engine, stand-in: published criteria, worded in the library's own
// statements.
#include <windows.h>

#include <iterator>

#include "suite/kxinterp/interpreter.h"
#include "suite/suite_log.h"

namespace {

constexpr char kContext[] = "INTERPRET";

// The string table of the library, which has the statement texts and is loaded by whoever shows them.
class LibraryTexts final : public kx::ResourceTexts {
  public:
    explicit LibraryTexts(HMODULE library) : library_(library) {}

    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override {
        if (buffer == nullptr || size == 0) {
            return 0;
        }
        wchar_t text[256];
        const int length = LoadStringW(library_, id, text, static_cast<int>(std::size(text)));
        const int bytes = WideCharToMultiByte(kWindows1252, 0, text, length, buffer,
                                              static_cast<int>(size) - 1, nullptr, nullptr);
        buffer[bytes] = '\0';
        return static_cast<std::size_t>(bytes);
    }

  private:
    static constexpr UINT kWindows1252 = 1252;
    HMODULE library_;
};

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
        const HMODULE library = GetModuleHandleW(L"kxdialogs.dll");
        if (library == nullptr) {
            log.LOGSYSTEMERROR("kxinterp: kxdialogs.dll is not loaded, no statement texts");
            return 0;
        }
        return kx::interp::Interpret(set, annotations, LibraryTexts(library), result, log) ? 1 : 0;
    } catch (...) {
        log.LOGEXCEPTION(kContext);
        return 0;
    }
}
