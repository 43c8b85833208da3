// The binding of sibling modules: what a binding makes of a module that is missing, too old or without the export. Besides,
// the texts of a module, here this program's, and the version record of one in any folder.
#include <gmock/gmock.h>

#include <filesystem>

#include "lib/modules/library_module.h"
#include "lib/modules/module_binder.h"
#include "lib/modules/version_info.h"
#include "tests/rig/recorded_reports.h"
#include "tests/rig/suite.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class Bindings : public testing::Test {
  protected:
    SpyingSuite suite_;
    LibraryModule library_{GetModuleHandleA(nullptr)};
    RecordedReports reports_;
};

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

TEST_F(Bindings, ReadTheVersionOfAModuleInAnyFolder) {
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
