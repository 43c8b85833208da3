// The binding to the suite's system services: its common log and its message boxes.
#pragma once

#include <cstdint>

#include "lib/modules/library_module.h"
#include "lib/modules/module_binder.h"
#include "lib/reporter.h"

namespace kx {

class Window;

// Each method is the export of kxsys.dll of the same name and returns its result, or 0 when the module or the
// export is missing; nobody needs to test it. Texts are zero-terminated Windows-1252 and are not kept. An
// owner is a window object, whose second 32-bit word is the window handle; null: no owner.
class SystemServices final : public ModuleBinder, public Reporter {
  public:
    // library: whose string resources the string-id variants load; kept as long as the binding lives. With
    // null, or for an id that is no string, they pass an empty text.
    explicit SystemServices(const LibraryModule* library) noexcept
        : ModuleBinder("kxsys.dll", kMinimumModuleVersion), library_(library) {}

    // Reports; see Reporter for the four that every part of the library uses.
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) override;
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t line, const char* text) override;
    std::uint32_t LOGEXCEPTION(const char* context) override;
    std::uint32_t LOGSYSTEMERROR(const char* text) override;
    std::uint32_t LOGINFORMATION(const char* text);
    std::uint32_t LOGOEMMESSAGE(const char* text);

    // The start and the end of a use of the library, or of a logged dialog.
    std::uint32_t LOGSERVICESTART(const char* text);
    std::uint32_t LOGSERVICESTOP(const char* text);

    // Shown to the user over the owner. INQUIRE asks; the third value and the answer are the module's own.
    std::uint32_t SHOWINFORMATION(Window* owner, const char* text);
    std::uint32_t SHOWSYSTEMERROR(Window* owner, const char* text);
    std::uint32_t INQUIRE(Window* owner, const char* text, std::uint32_t value);

    // What these mean is between the module and its other callers: the values pass through.
    std::uint32_t DISPLAY(std::uint32_t first, std::uint32_t second);
    std::uint32_t LOGTHREADSTART(std::uint32_t value);
    std::uint32_t LOGTHREADSTOP(std::uint32_t value);
    std::uint32_t LOGCOMWRITE(std::uint32_t first, std::uint32_t second);
    std::uint32_t LOGCOMREAD(std::uint32_t first, std::uint32_t second);
    std::uint32_t SENDEMAIL(std::uint32_t first, std::uint32_t second);

    // The same with string resource `textId` of the library as the text, cut at 255 characters.
    std::uint32_t LOGSERVICESTART(std::uint32_t textId);
    std::uint32_t LOGSERVICESTOP(std::uint32_t textId);
    std::uint32_t LOGINFORMATION(std::uint32_t textId);
    std::uint32_t SHOWINFORMATION(Window* owner, std::uint32_t textId);
    std::uint32_t LOGSYSTEMERROR(std::uint32_t textId);
    std::uint32_t SHOWSYSTEMERROR(Window* owner, std::uint32_t textId);
    std::uint32_t LOGOEMMESSAGE(std::uint32_t textId);
    std::uint32_t INQUIRE(Window* owner, std::uint32_t textId, std::uint32_t value);

  private:
    const LibraryModule* library_;
};

}  // namespace kx
