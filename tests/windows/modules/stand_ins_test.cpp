// The product's own stand-ins: what they export, and that each export takes exactly the arguments it is
// called with.
#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "lib/modules/module_binder.h"
#include "lib/modules/version_info.h"
#include "suite/kxsys/kxsys.h"
#include "tests/windows/modules/export_table.h"
#include "tests/windows/modules/spy.h"

namespace {

template <class... Parameters>
constexpr int Count(std::uint32_t(__stdcall*)(Parameters...)) {
    static_assert(((sizeof(Parameters) == 4) && ...));
    return sizeof...(Parameters);
}

#define SAME_COUNT(name, count, kinds) static_assert(Count(static_cast<decltype(&name)>(nullptr)) == (count));
KX_SYS_EXPORTS(SAME_COUNT)
#undef SAME_COUNT

struct Export {
    const char* name;
    int arguments;
};
#define EXPORT_ROW(name, count, kinds) {#name, count},
const Export kSystem[] = {KX_SYS_EXPORTS(EXPORT_ROW){"SETBATCHMODE", 1}, {"SETLISTENER", 2}};
const Export kDatabase[] = {KX_DB_EXPORTS(EXPORT_ROW)};
const Export kRender[] = {KX_RENDER_EXPORTS(EXPORT_ROW)};
const Export kInterpreter[] = {KX_INTERP_EXPORTS(EXPORT_ROW)};
const Export kAnalysis[] = {KX_ANALYZE_EXPORTS(EXPORT_ROW)};

std::string ProductFile(const char* module) {
    return std::string("..\\..\\bin\\") + module;
}

// From the test program's own folder, whatever the current one is.
HMODULE LoadProduct(const char* module) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string file = path;
    file.resize(file.rfind('\\') + 1);
    return LoadLibraryExA((file + ProductFile(module)).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

template <class... Numbers>
std::uint32_t CallOften(FARPROC address, int times, Numbers... numbers) {
    const auto call =
        reinterpret_cast<std::uint32_t(__stdcall*)(Numbers...)>(reinterpret_cast<void*>(address));
    std::uint32_t answers = 0;
    for (int i = 0; i < times; ++i) {
        answers |= call(numbers...);
    }
    return answers;
}

// All arguments 0. An export that takes more or fewer moves the stack by 4 bytes a call, which no stack
// stands.
std::uint32_t CallOften(FARPROC address, int arguments) {
    constexpr int kTimes = 1000000;
    const std::uint32_t o = 0;
    switch (arguments) {
        case 0:
            return CallOften<>(address, kTimes);
        case 1:
            return CallOften(address, kTimes, o);
        case 2:
            return CallOften(address, kTimes, o, o);
        case 3:
            return CallOften(address, kTimes, o, o, o);
        case 4:
            return CallOften(address, kTimes, o, o, o, o);
        case 5:
            return CallOften(address, kTimes, o, o, o, o, o);
        default:
            return CallOften(address, kTimes, o, o, o, o, o, o);
    }
}

class StandIn {
  public:
    explicit StandIn(const char* file) : module_(LoadProduct(file)) { EXPECT_NE(module_, nullptr) << file; }
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;
    ~StandIn() { FreeLibrary(module_); }
    HMODULE Handle() const { return module_; }

  private:
    HMODULE module_;
};

TEST(StandIns, AreOfTheSuitesVersionAndCanBeStartedAndStopped) {
    for (const char* file : {"kxsys.dll", "kxdb.dll", "kxrender.dll", "kxinterp.dll", "kxanalyze.dll"}) {
        const StandIn module(file);
        const kx::VersionInfo info(module.Handle());
        EXPECT_EQ(info.PackedVersion(), 0x00040100u) << file;
        EXPECT_STREQ(info.FileVersion(), "0.4.1.0") << file;
        EXPECT_EQ(std::string(info.InternalName()) + ".dll", file);
        EXPECT_STRNE(info.FileDescription(), "") << file;
        for (const char* control : {"LIBSTART", "LIBSTOP"}) {
            const auto call = kxtest::FindExport<void(__stdcall*)()>(module.Handle(), control);
            ASSERT_NE(call, nullptr) << file << " " << control;
            call();
        }
    }
}

TEST(StandIns, ExportTheWholeSystemServices) {
    const StandIn module("kxsys.dll");
    for (const Export& row : kSystem) {
        EXPECT_NE(GetProcAddress(module.Handle(), row.name), nullptr) << row.name;
    }
}

template <std::size_t N>
void ExpectUnattached(const char* file, const Export (&exports)[N]) {
    const StandIn module(file);
    for (const Export& row : exports) {
        FARPROC const address = GetProcAddress(module.Handle(), row.name);
        ASSERT_NE(address, nullptr) << file << " " << row.name;
        EXPECT_EQ(CallOften(address, row.arguments), 0u) << file << " " << row.name;
    }
}

TEST(StandIns, TakeTheirArgumentsAndAnswerNothing) {
    ExpectUnattached("kxdb.dll", kDatabase);
    ExpectUnattached("kxrender.dll", kRender);
    ExpectUnattached("kxinterp.dll", kInterpreter);
    ExpectUnattached("kxanalyze.dll", kAnalysis);
}

}  // namespace
