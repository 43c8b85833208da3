// The binding of sibling modules: every export of their table by its method, and what a binding makes of a module that is
// missing, too old or without the export. Besides, the resources and the version record of a module: here this program's.
#include <gmock/gmock.h>

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
constexpr const char* kTexts[] = {"primo", "secondo", "terzo"};

// What numbers and addresses are taken from: an owner is looked at.
std::uint32_t g_places[8];
std::uint32_t Place(std::size_t index) { return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(&g_places[index])); }

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
        return kTexts[index];
    } else {
        return Number{Place(index)};
    }
}

template <std::size_t kSize>
struct Kinds {
    char text[kSize];
    // NOLINTNEXTLINE(google-explicit-constructor): a literal becomes one
    constexpr Kinds(const char (&kinds)[kSize]) { std::copy(kinds, kinds + kSize, text); }
};

class Bindings : public testing::Test {
  protected:
    // Calls the method with the arguments that the export's kinds ask for; it is to pass them on, and the answer back.
    template <Kinds kKinds, class Binding, class Method>
    void Check(const char* name, Binding& binding, const Method& method) {
        std::string heard;
        suite_.On(name, [&heard](SpyingSuite::Arguments arguments) {
            for (std::size_t i = 0; kKinds.text[i] != '\0'; ++i) {
                heard += (kKinds.text[i] == 't' ? Address<char>(arguments[i]) : std::to_string(arguments[i])) + " ";
            }
            return kAnswer;
        });
        std::string passed;
        for (std::size_t i = 0; kKinds.text[i] != '\0'; ++i) {
            passed += (kKinds.text[i] == 't' ? kTexts[i] : std::to_string(Place(i))) + " ";
        }
        [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
            EXPECT_EQ(method(binding, Argument<kKinds.text[kIndex]>(kIndex)...), kAnswer) << name;
        }
        (std::make_index_sequence<sizeof kKinds.text - 1>());
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
#define CALL_OF(object, name, kinds)                                       \
    Check<kinds>(#name, object, [this](auto& binding, auto... arguments) { \
        if constexpr (requires { binding.name(arguments...); }) {          \
            return binding.name(arguments...);                             \
        } else {                                                           \
            return binding.name(reports_, arguments...);                   \
        }                                                                  \
    });
#define SYSTEM(name, count, kinds) CALL_OF(system, name, kinds)
#define DATABASE(name, count, kinds) CALL_OF(database, name, kinds)
#define RENDER(name, count, kinds) CALL_OF(render, name, kinds)
#define INTERPRETER(name, count, kinds) CALL_OF(interpreter, name, kinds)
#define ANALYSIS(name, count, kinds) CALL_OF(analysis, name, kinds)
    KX_SYS_EXPORTS(SYSTEM)
    KX_DB_EXPORTS(DATABASE)
    KX_RENDER_EXPORTS(RENDER)
    KX_INTERP_EXPORTS(INTERPRETER)
    KX_ANALYZE_EXPORTS(ANALYSIS)
    EXPECT_THAT(reports_.Take(), IsEmpty());
}

TEST_F(Bindings, PassATextForAStringsId) {
    constexpr std::uint32_t kText = 100, kLongText = 101, kNoText = 999;
    std::string longText;
    for (int i = 0; i < 10; ++i) {
        longText += "0123456789abcdefghijABCDEFGHIJ";
    }
    SystemServices services(&library_);
    suite_.TakeReports();
    services.LOGSERVICESTART(kText);
    services.INQUIRE(nullptr, kText, 4);
    services.LOGINFORMATION(kNoText);
    services.LOGOEMMESSAGE(kLongText);
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGSERVICESTART \"Ampiezza pi\xF9 alta\"", "INQUIRE \"\" \"Ampiezza pi\xF9 alta\" 4",
                                                  "LOGINFORMATION \"\"", "LOGOEMMESSAGE \"" + longText.substr(0, 255) + "\""));
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

TEST_F(Bindings, ReportAnExportOnceThatReportsItsAbsence) {
    Binding binding;
    suite_.On("LOGEXCEPTION", [](SpyingSuite::Arguments) { return 9u; });
    EXPECT_EQ(binding.CallOrReport(reports_, "LOGEXCEPTION", "x"), 9u);
    EXPECT_THAT(reports_.Take(), IsEmpty());
    EXPECT_EQ(binding.CallOrReport(reports_, "NOSUCHEXPORT"), 0u);
    EXPECT_THAT(reports_.Take(), ElementsAre(EndsWith(" (NOSUCHEXPORT)")));
    EXPECT_STREQ(binding.ErrorText(), "");
}

TEST_F(Bindings, GiveTextsThatAreCutAndAlwaysTerminated) {
    const struct {
        std::uint32_t id;
        std::size_t size;
        const char* expected;
    } rows[] = {{100, 64, "Ampiezza pi\xF9 alta"},
                {100, 18, "Ampiezza pi\xF9 alta"},
                {100, 17, "Ampiezza pi\xF9 alt"},
                {100, 1, ""},
                {999, 64, ""}};
    for (const auto& row : rows) {
        char buffer[65];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        EXPECT_EQ(library_.instance.LoadText(row.id, buffer, row.size), std::strlen(row.expected)) << row.id << " " << row.size;
        EXPECT_STREQ(buffer, row.expected) << row.id << " " << row.size;
        EXPECT_EQ(buffer[row.size], '#') << "written beyond " << row.size;
    }
    EXPECT_EQ(library_.instance.LoadText(100, nullptr, 10), 0u);
    char untouched = '#';
    EXPECT_EQ(library_.instance.LoadText(100, &untouched, 0), 0u);
    EXPECT_EQ(untouched, '#');
    // Without a module nothing is found in the program itself, nor of the system's own.
    const ModuleInstance none;
    SetLastError(0);
    EXPECT_EQ(none.GetProc("RIG_SUITE_CALL"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    EXPECT_EQ(none.LoadCursorById(32512), nullptr);
}

TEST_F(Bindings, ReportTheSystemsMessageOrElseTheCode) {
    SetLastError(0);
    EXPECT_EQ(ModuleInstance::LogLastSystemError(reports_), 0u);
    EXPECT_THAT(reports_.Take(), IsEmpty());
    for (const DWORD code : {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_BAD_EXE_FORMAT}, DWORD{0x20000001}}) {
        SetLastError(code);
        ModuleInstance::LogLastSystemError(reports_);
    }
    // Nothing can be inserted into the second one's message.
    EXPECT_THAT(reports_.Take(), ElementsAre(testing::Not(testing::HasSubstr("E = ")), "system E = 193", "system E = 536870913"));
}

TEST_F(Bindings, ReadTheVersionRecordOfAModuleInAnyFolder) {
    const VersionInfo info(library_.instance.Handle());
    EXPECT_EQ(info.PackedVersion(), 0x04000006u);
    const char* const fields[] = {info.ProductName(),    info.InternalName(), info.FileDescription(),
                                  info.ProductVersion(), info.FileVersion(),  info.CompanyName()};
    EXPECT_THAT(fields,
                ElementsAre(testing::StrEq("Risorse di prova"), testing::StrEq("resources"), testing::StrEq("Perch\xE9 cos\xEC \xE8"),
                            testing::StrEq("4.0.0.6 prodotto"), testing::StrEq("4.0.0.6 file"), testing::StrEq("Casa di prova")));
    // A folder that only Unicode can write.
    const std::wstring folder = L"modules-\u0141\u00F3d\u017A-\u65E5";
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring file = folder + L"\\copy.dll";
    const std::string spy = Beside("kxdb.dll");
    ASSERT_TRUE(CopyFileW(std::wstring(spy.begin(), spy.end()).c_str(), file.c_str(), FALSE));
    HMODULE const copy = LoadLibraryW(file.c_str());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(VersionInfo(copy).PackedVersion(), kMinimumModuleVersion);
    FreeLibrary(copy);
    DeleteFileW(file.c_str());
    RemoveDirectoryW(folder.c_str());
}

}  // namespace
}  // namespace kx::test
