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
