// A module of the suite as a stranger loads it: by name at run time, refused when it is too old, started and
// stopped.
#pragma once

#include <cstdint>
#include <string>

#include "host/windows/win32_handles.h"

namespace kxhost {

// The oldest version of a sibling module that is used: major 0, minor 4, build 0, revision 6, a byte each.
inline constexpr std::uint32_t kOldestModuleVersion = 0x40006;

// Loads the module from the program's own folder and calls its LIBSTART; LIBSTOP and unloading at the end.
class SuiteModule {
  public:
    // A module without a version record counts as version 0. Nothing is thrown: see IsLoaded.
    explicit SuiteModule(const wchar_t* fileName, std::uint32_t oldestVersion = kOldestModuleVersion);
    SuiteModule(const SuiteModule&) = delete;
    SuiteModule& operator=(const SuiteModule&) = delete;
    ~SuiteModule();

    bool IsLoaded() const { return module_ != nullptr; }
    // Why it is not loaded (Italian, one line); empty when it is.
    const std::wstring& FailureText() const { return failure_; }

    // The export of that name, null when there is none or the module is not loaded.
    template <class Function>
    Function Find(const char* name) const {
        if (!module_) {
            return nullptr;
        }
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_.get(), name)));
    }

  private:
    UniqueModule module_;
    std::wstring failure_;
};

}  // namespace kxhost
