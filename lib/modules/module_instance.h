// One module: its handle, its exports and its resources.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "lib/reporter.h"
#include "lib/resource_text.h"

namespace kx {

// Holds a module handle, 0 when nothing is loaded. It frees nothing by itself: the handle may be the
// library's own, and a module that was refused stays mapped. Who called Load calls Free. Copies share the
// handle. Every resource load is a direct call of the Win32 function on the handle and fails as that does
// (null, last error set). With handle 0 every operation fails: the system would take 0 for the program's own
// module.
class ModuleInstance final : public ResourceTexts {
  public:
    explicit ModuleInstance(HMODULE handle = nullptr) noexcept : handle_(handle) {}

    HMODULE Handle() const { return handle_; }

    // Loads a module by its name with the standard search order. False: the handle is 0 and the last error
    // says why. A module loaded before is not freed by this.
    bool Load(const char* fileName, DWORD flags = 0);
    // Unloads the module and sets the handle to 0; nothing when it is 0.
    void Free();
    // The address of an export, null (last error set) when there is none of that name.
    FARPROC GetProc(const char* exportName) const;

    // String `id` in Windows-1252, cut at size - 1 characters, always terminated; see ResourceTexts.
    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override;
    // type: IMAGE_BITMAP, IMAGE_ICON or IMAGE_CURSOR; width and height 0: the resource's own (or
    // LR_DEFAULTSIZE's). The caller destroys what it gets, unless flags hold LR_SHARED.
    HANDLE LoadImageById(std::uint32_t id, UINT type, int width, int height, UINT flags) const;
    // Shared, in the system's standard size; nobody destroys it.
    HICON LoadIconById(std::uint32_t id) const;

    // Passes the system's message for the thread's last error ("E = " and the code when there is none) to
    // LOGSYSTEMERROR and returns its result. 0 without a report when the last error is 0.
    static std::uint32_t LogLastSystemError(Reporter& log);

    // ---- what the suite's other programs do, and no pane of this library

    // As LoadIconById.
    HCURSOR LoadCursorById(std::uint32_t id) const;
    // The caller destroys the menu, unless a window has taken it.
    HMENU LoadMenuById(std::uint32_t id) const;
    // Freed by the system with the module.
    HACCEL LoadAcceleratorsById(std::uint32_t id) const;
    // The bytes of a resource, and in `size` how many; they live as long as the module is loaded. Null and 0
    // when there is none. type: a name or MAKEINTRESOURCEA of a number (RT_RCDATA).
    const void* LoadRaw(std::uint32_t id, const char* type, std::size_t& size) const;

  private:
    bool HasModule() const;

    HMODULE handle_;
};

}  // namespace kx
