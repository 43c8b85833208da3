#include "lib/modules/module_binder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "tests/windows/modules/spy.h"

namespace {

using kxtest::Reports;
using kxtest::Spy;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class Binding : public kx::ModuleBinder {
  public:
    explicit Binding(const char* fileName) : ModuleBinder(fileName, kx::kMinimumModuleVersion) {}
    using ModuleBinder::Call;
    using ModuleBinder::CallOrReport;
    using ModuleBinder::RecordError;
};

TEST(ModuleBinder, StartsAndStopsOnceAndUnloads) {
    {
        const Spy spy("kxsys.dll");
        {
            Binding binding("kxsys.dll");
            EXPECT_STREQ(binding.ErrorText(), "");
            EXPECT_EQ(spy.Calls(), "LIBSTART();");
        }
        EXPECT_EQ(spy.Calls(), "LIBSTART();LIBSTOP();");
        EXPECT_NE(GetModuleHandleA("kxsys.dll"), nullptr) << "the spy's own reference is left";
    }
    EXPECT_EQ(GetModuleHandleA("kxsys.dll"), nullptr) << "the binding kept the module loaded";
}

TEST(ModuleBinder, RefusesAnOldModuleWithoutTouchingIt) {
    const Spy spy("kxold.dll");
    {
        Binding binding("kxold.dll");
        EXPECT_STREQ(binding.ErrorText(), "kxold.dll V = 40005, (V40006)");
        EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 0u);
        Reports reports;
        binding.ReportError(reports);
        EXPECT_THAT(reports.texts, ElementsAre("system: kxold.dll V = 40005, (V40006)"));
        // From here on the binding has no module and no text, and still resolves nothing.
        EXPECT_EQ(binding.GetProc("LOGEXCEPTION"), nullptr);
        EXPECT_STREQ(binding.ErrorText(), "");
    }
    EXPECT_EQ(spy.Calls(), "") << "neither LIBSTART nor LIBSTOP may be called";
}

TEST(ModuleBinder, LeavesARefusedModuleMapped) {
    { const Binding binding("kxold.dll"); }
    HMODULE const module = GetModuleHandleA("kxold.dll");
    ASSERT_NE(module, nullptr);
    FreeLibrary(module);
}

TEST(ModuleBinder, CountsAMissingVersionRecordAsVersionZero) {
    const Spy spy("kxbare.dll");
    {
        Binding binding("kxbare.dll");
        EXPECT_STREQ(binding.ErrorText(), "kxbare.dll V = 0, (V40006)");
    }
    EXPECT_EQ(spy.Calls(), "");
}

TEST(ModuleBinder, NamesAMissingFile) {
    Binding binding("kxabsent.dll");
    const std::string text = binding.ErrorText();
    EXPECT_THAT(text, EndsWith(" (kxabsent.dll)"));
    EXPECT_THAT(text, Not(HasSubstr("\r")));
    EXPECT_GT(text.size(), std::string(" (kxabsent.dll)").size()) << "the system's message is missing";
    EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 0u);

    Reports reports;
    binding.ReportError(reports);
    EXPECT_THAT(reports.texts, ElementsAre("system: " + text));
    EXPECT_STREQ(binding.ErrorText(), "");
    // The next lookup fails again and says so, even for a name that the program itself exports.
    EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 0u);
    EXPECT_THAT(binding.ErrorText(), EndsWith(" (LOGEXCEPTION)"));
}

TEST(ModuleBinder, AMissingExportStopsEveryCallUntilItIsReported) {
    const Spy spy("kxsys.dll", 77);
    Binding binding("kxsys.dll");
    spy.Reset(77);
    EXPECT_EQ(binding.Call("NOSUCHEXPORT", 1u), 0u);
    const std::string text = binding.ErrorText();
    EXPECT_THAT(text, EndsWith(" (NOSUCHEXPORT)"));

    SetLastError(4711);
    EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 0u);
    EXPECT_EQ(GetLastError(), 4711u) << "there was a lookup";
    EXPECT_EQ(binding.Call("NOSUCHEITHER"), 0u);
    EXPECT_EQ(binding.ErrorText(), text) << "the first failure is the one that is kept";
    EXPECT_EQ(spy.Calls(), "");

    Reports reports;
    binding.ReportError(reports);
    EXPECT_THAT(reports.texts, ElementsAre("system: " + text));
    EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 77u);
    EXPECT_EQ(spy.Calls(), "LOGEXCEPTION(x);");
}

TEST(ModuleBinder, StopsAModuleWhoseBindingFailedLater) {
    const Spy spy("kxsys.dll");
    {
        Binding binding("kxsys.dll");
        binding.Call("NOSUCHEXPORT");
    }
    EXPECT_EQ(spy.Calls(), "LIBSTART();LIBSTOP();");
}

TEST(ModuleBinder, AModuleWithoutStartIsAFailedBindingThatCanBeUsedOnceReported) {
    const Spy spy("kxmute.dll");
    Binding binding("kxmute.dll");
    EXPECT_THAT(binding.ErrorText(), EndsWith(" (LIBSTART)"));
    Reports reports;
    binding.ReportError(reports);
    EXPECT_NE(binding.GetProc("SPYCALLS"), nullptr);
}

TEST(ModuleBinder, AFailureWithoutAnErrorCodeLeavesTheBindingUsable) {
    const Spy spy("kxsys.dll", 5);
    Binding binding("kxsys.dll");
    SetLastError(0);
    binding.RecordError("ANYTHING");
    EXPECT_STREQ(binding.ErrorText(), "");
    spy.Reset(5);
    EXPECT_EQ(binding.Call("LOGEXCEPTION", "x"), 5u);
}

TEST(ModuleBinder, AnErrorCodeTheSystemHasNoMessageForIsShownAsANumber) {
    Binding binding("kxsys.dll");
    SetLastError(0x20000001);
    binding.RecordError("ANYTHING");
    EXPECT_STREQ(binding.ErrorText(), "LE: 536870913 (ANYTHING)");
}

TEST(ModuleBinder, ReportsTheLastSystemErrorWhenNothingIsStored) {
    Binding binding("kxsys.dll");
    Reports reports;
    SetLastError(0);
    binding.ReportError(reports);
    EXPECT_THAT(reports.texts, IsEmpty());
    SetLastError(0x20000001);
    binding.ReportError(reports);
    EXPECT_THAT(reports.texts, ElementsAre("system: E = 536870913"));
}

TEST(ModuleBinder, AnExportThatReportsItsAbsenceIsReportedOnce) {
    const Spy spy("kxsys.dll", 9);
    Binding binding("kxsys.dll");
    spy.Reset(9);
    Reports reports;
    EXPECT_EQ(binding.CallOrReport(reports, "LOGEXCEPTION", "x"), 9u);
    EXPECT_THAT(reports.texts, IsEmpty());
    EXPECT_EQ(binding.CallOrReport(reports, "NOSUCHEXPORT"), 0u);
    ASSERT_THAT(reports.texts, SizeIs(1));
    EXPECT_THAT(reports.texts[0], EndsWith(" (NOSUCHEXPORT)"));
    EXPECT_STREQ(binding.ErrorText(), "");
}

}  // namespace
