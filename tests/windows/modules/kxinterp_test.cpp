// The product's kxinterp.dll with the library's own statement texts.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "tests/unit/suite/ecg_cases.h"
#include "tests/windows/modules/spy.h"

namespace {

using InterpretCall = std::uint32_t(__stdcall*)(const KxMeasurementSet*, KxInterpretationResult*, const void*,
                                                std::uint32_t, std::uint32_t, std::uint32_t);

HMODULE LoadProduct(const wchar_t* name) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const auto file = std::filesystem::path(path).parent_path() / ".." / ".." / "bin" / name;
    return LoadLibraryW(file.lexically_normal().c_str());
}

class InterpreterModule : public testing::Test {
  protected:
    InterpreterModule()
        : module_(LoadProduct(L"kxinterp.dll")),
          interpret_(kxtest::FindExport<InterpretCall>(module_, "INTERPRET")) {}
    ~InterpreterModule() override { FreeLibrary(module_); }

    HMODULE module_;
    InterpretCall interpret_;
    KxInterpretationResult result_{};
};

TEST_F(InterpreterModule, SpeaksTheLibrarysOwnStatements) {
    ASSERT_NE(nullptr, interpret_);
    const HMODULE library = LoadProduct(L"kxdialogs.dll");
    ASSERT_NE(nullptr, library);
    KxMeasurementSet set = kx::test::EcgWith("");
    const auto beats = kx::test::SteadyBeats();
    EXPECT_EQ(1u, interpret_(&set, &result_, &beats, 0, 0, 0));
    EXPECT_STREQ("Sinus rhythm.\r\nECG Nomale", result_.text);

    set.prInterval = 214;
    kx::test::SetQrs(set, KX_LEAD_II, 300, 800, 0);
    kx::test::SetQrs(set, KX_LEAD_AVF, 300, 800, 0);
    EXPECT_EQ(1u, interpret_(&set, &result_, nullptr, 0, 0, 0));
    EXPECT_STREQ(
        "Sinus rhythm.\r\nBlocco AV di primo grado (PR 214 ms).\r\n"
        "Infarto miocardico inferiore, et\xE0 indeterminata.\r\nECG non nomale",
        result_.text);
    EXPECT_EQ(0u, interpret_(nullptr, &result_, nullptr, 0, 0, 0));
    FreeLibrary(library);
}

}  // namespace
