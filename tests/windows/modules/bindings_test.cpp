// The binding of sibling modules: every export of their table by its method, and what a binding makes of a module that is
// missing, too old or without the export. Besides, the resources and the version record of a module: here this program's.
#include <gmock/gmock.h>

#include <filesystem>
#include <functional>

#include "lib/modules/analysis_engine.h"
#include "lib/modules/database_services.h"
#include "lib/modules/interpretation_engine.h"
#include "lib/modules/render_services.h"
#include "lib/modules/system_services.h"
#include "lib/modules/version_info.h"
#include "tests/rig/recorded_reports.h"
#include "tests/rig/suite.h"
#include "tests/rig/suite_exports.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

// Wider than 31 bits, so that a result is seen to pass whole.
constexpr std::uint32_t kAnswer = 0xFEDC1234;

// Where the arguments point: a text is read, an owner is looked at.
std::uint32_t g_places[8];

// A number that stands for itself and for an address.
struct Number {
    std::uint32_t value;
    template <class T>
    operator T*() const {
        return Address<T>(value);
    }
    operator std::uint32_t() const { return value; }
};

template <char kKind>
auto Argument(std::size_t index) {
    if constexpr (kKind == 't') {
        return reinterpret_cast<const char*>(&g_places[index]);
    } else {
        return Number{static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&g_places[index]))};
    }
}

class Bindings : public testing::Test {
  protected:
    // The call is to pass on the addresses of the places, and the answer back.
    void Check(const char* name, ModuleBinder& binding, std::size_t count, const std::function<std::uint32_t()>& call) {
        std::vector<const void*> heard, passed;
        suite_.On(name, [&](SpyingSuite::Arguments arguments) {
            for (std::size_t i = 0; i < count; ++i) {
                heard.push_back(Address<void>(arguments[i]));
                passed.push_back(&g_places[i]);
            }
            return kAnswer;
        });
        EXPECT_EQ(call(), kAnswer) << name;
        EXPECT_EQ(heard, passed) << name;
        EXPECT_EQ(suite_.Calls(name), 1) << name;
        EXPECT_STREQ(binding.ErrorText(), "") << name;
    }

    SpyingSuite suite_;
    LibraryModule library_{GetModuleHandleA(nullptr)};
    RecordedReports reports_;
};

TEST_F(Bindings, PassEveryExportOfTheTableItsArguments) {
    SystemServices system(nullptr);
    DatabaseServices database;
    RenderServices render;
    InterpretationEngine interpreter;
    AnalysisEngine analysis;
#define CALL_OF(object, name, count, kinds)                                                 \
    Check(#name, object, count, [&] {                                                       \
        return [&]<std::size_t... kIndex>(auto& binding, std::index_sequence<kIndex...>) {  \
            if constexpr (requires { binding.name(Argument<kinds[kIndex]>(kIndex)...); }) { \
                return binding.name(Argument<kinds[kIndex]>(kIndex)...);                    \
            } else {                                                                        \
                return binding.name(reports_, Argument<kinds[kIndex]>(kIndex)...);          \
            }                                                                               \
        }                                                                                   \
        (object, std::make_index_sequence<count>());                                        \
    });
#define SYSTEM(name, count, kinds) CALL_OF(system, name, count, kinds)
#define DATABASE(name, count, kinds) CALL_OF(database, name, count, kinds)
#define RENDER(name, count, kinds) CALL_OF(render, name, count, kinds)
#define INTERPRETER(name, count, kinds) CALL_OF(interpreter, name, count, kinds)
#define ANALYSIS(name, count, kinds) CALL_OF(analysis, name, count, kinds)
    KX_SYS_EXPORTS(SYSTEM)
    KX_DB_EXPORTS(DATABASE)
    KX_RENDER_EXPORTS(RENDER)
    KX_INTERP_EXPORTS(INTERPRETER)
    KX_ANALYZE_EXPORTS(ANALYSIS)
    EXPECT_THAT(reports_.Take(), IsEmpty());
}

TEST_F(Bindings, PassATextForAStringsId) {
    std::string longText;
    for (int i = 0; i < 10; ++i) {
        longText += "0123456789abcdefghijABCDEFGHIJ";
    }
    SystemServices services(&library_);
    suite_.TakeReports();
    services.INQUIRE(nullptr, 100, 4);
    services.LOGINFORMATION(999);
    services.LOGOEMMESSAGE(101);
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("INQUIRE \"\" \"Ampiezza pi\xF9 alta\" 4", "LOGINFORMATION \"\"",
                                                  "LOGOEMMESSAGE \"" + longText.substr(0, 255) + "\""));
}

class Binding : public ModuleBinder {
  public:
    Binding() : ModuleBinder("kxsys.dll", kMinimumModuleVersion) {}
    using ModuleBinder::Call;
    using ModuleBinder::CallOrReport;
};

TEST_F(Bindings, KeepTheirFirstFailureUntilItIsReportedAndCallNothingMeanwhile) {
    const char* const kOld = "kxsys.dll V = 40005, (V40006)";
    const struct {
        const char* name;
        Sibling kind;
        const char* atStart;  // how the failure's text ends
        int starts;
        const char* export_;
        std::uint32_t answer;
        const char* failure;  // after the call
        std::uint32_t again;  // the answer after the report
    } rows[] = {
        {"current", Sibling::kSpying, "", 1, "LOGEXCEPTION", 77, "", 77},
        {"no such export", Sibling::kSpying, "", 1, "NOSUCHEXPORT", 0, " (NOSUCHEXPORT)", 77},
        {"without exports", Sibling::kWithoutExports, "", 1, "LOGEXCEPTION", 0, " (LOGEXCEPTION)", 0},
        {"too old", Sibling::kOutdated, kOld, 0, "LOGEXCEPTION", 0, kOld, 0},
        {"missing", Sibling::kMissing, " (kxsys.dll)", 0, "LOGEXCEPTION", 0, " (kxsys.dll)", 0},
    };
    suite_.On("LOGEXCEPTION", [](SpyingSuite::Arguments) { return 77u; });
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        suite_.Lay("kxsys.dll", row.kind);
        const int starts = suite_.Calls("LIBSTART");
        const int stops = suite_.Calls("LIBSTOP");
        {
            Binding binding;
            EXPECT_EQ(suite_.Calls("LIBSTART") - starts, row.starts);
            EXPECT_THAT(binding.ErrorText(), EndsWith(row.atStart));
            EXPECT_EQ(*row.atStart == '\0', *binding.ErrorText() == '\0');
            EXPECT_EQ(binding.Call(row.export_, "x"), row.answer);
            const std::string text = binding.ErrorText();
            EXPECT_THAT(text, EndsWith(row.failure));
            EXPECT_EQ(text.find('\r'), std::string::npos);
            EXPECT_TRUE(*row.failure != ' ' || text.size() > std::strlen(row.failure)) << "the system's message is missing";
            if (!text.empty()) {
                SetLastError(4711);
                EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 0u);
                EXPECT_EQ(GetLastError(), 4711u) << "there was a lookup";
                EXPECT_EQ(binding.ErrorText(), text) << "the first failure is the one that is kept";
                binding.ReportError(reports_);
                EXPECT_THAT(reports_.Take(), ElementsAre("system " + text));
                EXPECT_STREQ(binding.ErrorText(), "");
            }
            EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), row.again);
        }
        EXPECT_EQ(suite_.Calls("LIBSTOP") - stops, row.starts);
        EXPECT_EQ(GetModuleHandleA("kxsys.dll") != nullptr, row.kind == Sibling::kOutdated) << "a refused module stays mapped";
    }
}

TEST_F(Bindings, ReportAnExportOnceThatReportsItsAbsenceAndTheSystemsMessageOrCode) {
    Binding binding;
    suite_.On("LOGEXCEPTION", [](SpyingSuite::Arguments) { return 9u; });
    EXPECT_EQ(binding.CallOrReport(reports_, "LOGEXCEPTION", "x"), 9u);
    EXPECT_THAT(reports_.Take(), IsEmpty());
    EXPECT_EQ(binding.CallOrReport(reports_, "NOSUCHEXPORT"), 0u);
    EXPECT_THAT(reports_.Take(), ElementsAre(EndsWith(" (NOSUCHEXPORT)")));
    EXPECT_STREQ(binding.ErrorText(), "");
    for (const DWORD code : {DWORD{0}, DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_BAD_EXE_FORMAT}, DWORD{0x20000001}}) {
        SetLastError(code);
        ModuleInstance::LogLastSystemError(reports_);
    }
    // Nothing can be inserted into the second one's message.
    EXPECT_THAT(reports_.Take(), ElementsAre(testing::Not(testing::HasSubstr("E = ")), "system E = 193", "system E = 536870913"));
}

TEST_F(Bindings, GiveTextsThatAreCutAndAlwaysTerminated) {
    const std::string text = "Ampiezza pi\xF9 alta";
    for (std::size_t size = 0; size < 64; ++size) {
        char buffer[65];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        const std::string expected = text.substr(0, size - 1);
        EXPECT_EQ(library_.instance.LoadText(100, buffer, size), size == 0 ? 0 : expected.size());
        EXPECT_TRUE(size == 0 || buffer == expected) << size;
        EXPECT_EQ(buffer[size], '#') << "written beyond " << size;
    }
    EXPECT_EQ(library_.instance.LoadText(100, nullptr, 10), 0u);
    // Without a module nothing is found in the program itself, nor of the system's own.
    const ModuleInstance none;
    EXPECT_TRUE(none.GetProc("RIG_SUITE_CALL") == nullptr && none.LoadCursorById(32512) == nullptr);
}

TEST_F(Bindings, ReadTheVersionRecordOfAModuleInAnyFolder) {
    const VersionInfo info(library_.instance.Handle());
    EXPECT_EQ(info.PackedVersion(), 0x04000006u);
    const std::string fields[] = {info.ProductName(),    info.InternalName(), info.FileDescription(),
                                  info.ProductVersion(), info.FileVersion(),  info.CompanyName()};
    EXPECT_THAT(fields, ElementsAre("Risorse di prova", "resources", "Perch\xE9 cos\xEC \xE8", "4.0.0.6 prodotto", "4.0.0.6 file",
                                    "Casa di prova"));
    // A folder that only Unicode can write.
    const std::filesystem::path folder = L"modules-\u0141\u00F3d\u017A-\u65E5";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(Beside("kxdb.dll"), folder / "copy.dll");
    HMODULE const copy = LoadLibraryW((folder / "copy.dll").c_str());
    EXPECT_EQ(VersionInfo(copy).PackedVersion(), kMinimumModuleVersion);
    FreeLibrary(copy);
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace kx::test
