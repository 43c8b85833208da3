// The stand-in of the suite's log: the log beside the module, and the listener that a host sets.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>

#include "suite/kxsys/kxsys.h"
#include "tests/rig/suite.h"
#include "tests/windows/modules/temp_folder.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

// A copy of the module in a folder of the test's.
class SystemLog : public testing::Test {
  protected:
    SystemLog() {
        const std::string copy = folder_.Named("sistema.dll");
        EXPECT_TRUE(CopyFileA(Beside("..\\..\\bin\\kxsys.dll").c_str(), copy.c_str(), FALSE));
        module_ = LoadLibraryA(copy.c_str());
        Call<decltype(&SETLISTENER)>("SETLISTENER", &SystemLog::Hear, this);
    }
    ~SystemLog() override { FreeLibrary(module_); }

    // An export with the type that kxsys.h gives it.
    template <class Function, class... Arguments>
    std::uint32_t Call(const char* name, Arguments... arguments) {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)))(arguments...);
    }
    // What the listener heard since the last call, without time stamps.
    std::vector<std::string> Heard() {
        std::vector<std::string> reports;
        for (const std::string& line : std::exchange(heard_, {})) {
            reports.push_back(line.substr(line.find('\t') + 1));
        }
        return reports;
    }

    TempFolder folder_;

  private:
    static void KXSYS_CALL Hear(void* context, const char* line) { static_cast<SystemLog*>(context)->heard_.emplace_back(line); }

    HMODULE module_;
    std::vector<std::string> heard_;
};

TEST_F(SystemLog, TakesBadTextsAsFarAsTheyCanBeReadAndNeedsNoFile) {
    // No file can be made in the log's place.
    CreateDirectoryA(folder_.Named("sistema.log").c_str(), nullptr);
    // A page without a terminator before one that cannot be read.
    constexpr std::size_t kPage = 4096;
    auto* const pages = static_cast<char*>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
    ASSERT_NE(VirtualAlloc(pages, kPage, MEM_COMMIT, PAGE_READWRITE), nullptr);
    std::fill(pages, pages + kPage, 'x');
    const std::string longText(5000, 'y');
    const struct {
        const char* text;
        std::string expected;
    } rows[] = {{nullptr, ""},
                {reinterpret_cast<const char*>(1), ""},
                {reinterpret_cast<const char*>(0xFFFFFFFF), ""},
                {pages + kPage - 3, "xxx"},
                {pages + kPage, ""},
                {longText.c_str(), std::string(KXSYS_LONGEST_TEXT, 'y')}};
    for (const auto& row : rows) {
        Call<decltype(&LOGOEMERROR)>("LOGOEMERROR", row.text, 7u, row.text);
        EXPECT_THAT(Heard(), ElementsAre("Programma\t" + row.expected + " (" + row.expected + ", riga 7)"));
    }
    VirtualFree(pages, 0, MEM_RELEASE);
    Call<decltype(&SETLISTENER)>("SETLISTENER", nullptr, nullptr);
    EXPECT_EQ(Call<decltype(&LOGINFORMATION)>("LOGINFORMATION", "lost"), 0u);
    EXPECT_THAT(Heard(), testing::IsEmpty());
}

}  // namespace
}  // namespace kx::test
