// The product's own stand-ins: what they export, and their version.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/kxdialogs.h"
#include "lib/modules/version_info.h"
#include "suite/kxsys/kxsys.h"
#include "tests/rig/suite_exports.h"
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

#define EXPORT_NAME(name, count, kinds) #name,

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
        EXPECT_EQ(info.PackedVersion(), unsigned{KX_VERSION_MAJOR << 24 | KX_VERSION_MINOR << 16 | KX_VERSION_PATCH << 8}) << file;
        EXPECT_STREQ(info.FileVersion(), KX_VERSION_TEXT) << file;
        EXPECT_EQ(std::string(info.InternalName()) + ".dll", file);
        EXPECT_STRNE(info.FileDescription(), "") << file;
        for (const char* control : {"LIBSTART", "LIBSTOP"}) {
            const auto call = kxtest::FindExport<void(__stdcall*)()>(module.Handle(), control);
            ASSERT_NE(call, nullptr) << file << " " << control;
            call();
        }
    }
}

TEST(StandIns, ExportWhatTheProductCalls) {
    const struct {
        const char* file;
        std::vector<const char*> exports;
    } rows[] = {
        {"kxsys.dll", {KX_SYS_EXPORTS(EXPORT_NAME) "SETBATCHMODE", "SETLISTENER"}},
        {"kxdb.dll", {KX_DB_EXPORTS(EXPORT_NAME)}},
        {"kxrender.dll", {KX_RENDER_EXPORTS(EXPORT_NAME)}},
        {"kxinterp.dll", {KX_INTERP_EXPORTS(EXPORT_NAME)}},
        {"kxanalyze.dll", {KX_ANALYZE_EXPORTS(EXPORT_NAME)}},
    };
    for (const auto& row : rows) {
        const StandIn module(row.file);
        for (const char* name : row.exports) {
            EXPECT_NE(GetProcAddress(module.Handle(), name), nullptr) << row.file << " " << name;
        }
    }
}

}  // namespace
