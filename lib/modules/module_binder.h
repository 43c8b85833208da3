// The binding of a sibling module of the suite: found at run time by its file name, refused when it is too
// old, started and stopped, and called export by export.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <type_traits>

#include "lib/modules/module_instance.h"
#include "lib/packed_version.h"
#include "lib/reporter.h"

namespace kx {

// A binding that failed keeps the first failure as a text and turns every later call into one that does
// nothing and returns 0, until the failure has been reported: a missing or outdated module never stops a
// dialog. Nothing throws. A binding belongs to the user-interface thread; it is not guarded.
class ModuleBinder {
  public:
    // Loads the module by its file name (no path, standard search order), reads its version record and calls
    // its LIBSTART. A module below the minimum version (see PackVersion; no record counts as 0) is refused:
    // it stays mapped and is never called, not even its LIBSTOP. Failures are in ErrorText.
    ModuleBinder(const char* fileName, std::uint32_t minimumVersion);
    // Calls LIBSTOP and unloads the module, when one is loaded and was not refused.
    ~ModuleBinder();
    ModuleBinder(const ModuleBinder&) = delete;
    ModuleBinder& operator=(const ModuleBinder&) = delete;

    // The address of an export, looked up anew on every call. Null while a failure is stored (no lookup is
    // made) and when there is none of that name, which stores a failure.
    FARPROC GetProc(const char* exportName);

    // The stored failure, empty when there is none. Lives until the next operation of the binding.
    const char* ErrorText() const { return errorText_ ? errorText_.get() : ""; }

    // Passes the stored failure to LOGSYSTEMERROR and forgets it, so that the next call tries again. Without
    // a stored failure it reports the thread's last system error, if there is one.
    void ReportError(Reporter& services);

  protected:
    // The one way in which an export is called: by name, stdcall, each argument and the result 32 bits wide.
    // 0 when the export cannot be resolved.
    template <class... Arguments>
    std::uint32_t Call(const char* exportName, Arguments... arguments) {
        return Invoke(GetProc(exportName), arguments...);
    }

    // The same for an export that reports its own absence.
    template <class... Arguments>
    std::uint32_t CallOrReport(Reporter& services, const char* exportName, Arguments... arguments) {
        const FARPROC address = GetProc(exportName);
        if (address == nullptr) {
            ReportError(services);
        }
        return Invoke(address, arguments...);
    }

    // Stores the system's message for the thread's last error with the name in parentheses. Nothing is stored
    // when the last error is 0 or when there is no module object.
    void RecordError(const char* name);

  private:
    template <class... Arguments>
    static std::uint32_t Invoke(FARPROC address, Arguments... arguments) {
        static_assert(((sizeof(Arguments) == 4) && ...), "every argument of an export is 32 bits wide");
        static_assert(((std::is_integral_v<Arguments> || std::is_pointer_v<Arguments>)&&...),
                      "an export takes numbers and addresses");
        using Export = std::uint32_t(__stdcall*)(Arguments...);
        return address != nullptr ? reinterpret_cast<Export>(reinterpret_cast<void*>(address))(arguments...)
                                  : 0;
    }

    void CallControl(const char* exportName);
    void RecordOldVersion(const char* fileName, std::uint32_t version, std::uint32_t minimumVersion);

    std::unique_ptr<ModuleInstance> module_;  // null: could not be allocated, or refused
    std::unique_ptr<char[]> errorText_;       // null: no failure
};

}  // namespace kx
