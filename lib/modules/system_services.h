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
    std::uint32_t LOGMEMORYERROR(const char* source, std::uint32_t line) override {
        return Call("LOGMEMORYERROR", source, line);
    }
    std::uint32_t LOGOEMERROR(const char* source, std::uint32_t line, const char* text) override {
        return Call("LOGOEMERROR", source, line, text);
    }
    std::uint32_t LOGEXCEPTION(const char* context) override { return Call("LOGEXCEPTION", context); }
    std::uint32_t LOGSYSTEMERROR(const char* text) override { return Call("LOGSYSTEMERROR", text); }
    std::uint32_t LOGINFORMATION(const char* text) { return Call("LOGINFORMATION", text); }
    std::uint32_t LOGOEMMESSAGE(const char* text) { return Call("LOGOEMMESSAGE", text); }

    // The start and the end of a use of the library, or of a logged dialog.
    std::uint32_t LOGSERVICESTART(const char* text) { return Call("LOGSERVICESTART", text); }
    std::uint32_t LOGSERVICESTOP(const char* text) { return Call("LOGSERVICESTOP", text); }

    // Shown to the user over the owner. INQUIRE asks; the third value and the answer are the module's own.
    std::uint32_t SHOWINFORMATION(Window* owner, const char* text) {
        return Call("SHOWINFORMATION", owner, text);
    }
    std::uint32_t SHOWSYSTEMERROR(Window* owner, const char* text) {
        return Call("SHOWSYSTEMERROR", owner, text);
    }
    std::uint32_t INQUIRE(Window* owner, const char* text, std::uint32_t value) {
        return Call("INQUIRE", owner, text, value);
    }

    // What these mean is between the module and its other callers: the values pass through.
    std::uint32_t DISPLAY(std::uint32_t first, std::uint32_t second) {
        return Call("DISPLAY", first, second);
    }
    std::uint32_t LOGTHREADSTART(std::uint32_t value) { return Call("LOGTHREADSTART", value); }
    std::uint32_t LOGTHREADSTOP(std::uint32_t value) { return Call("LOGTHREADSTOP", value); }
    std::uint32_t LOGCOMWRITE(std::uint32_t first, std::uint32_t second) {
        return Call("LOGCOMWRITE", first, second);
    }
    std::uint32_t LOGCOMREAD(std::uint32_t first, std::uint32_t second) {
        return Call("LOGCOMREAD", first, second);
    }
    std::uint32_t SENDEMAIL(std::uint32_t first, std::uint32_t second) {
        return Call("SENDEMAIL", first, second);
    }

    // The same with string resource `textId` of the library as the text, cut at 255 characters.
    std::uint32_t LOGSERVICESTART(std::uint32_t textId) {
        return LOGSERVICESTART(LoadedText(library_, textId));
    }
    std::uint32_t LOGSERVICESTOP(std::uint32_t textId) {
        return LOGSERVICESTOP(LoadedText(library_, textId));
    }
    std::uint32_t LOGINFORMATION(std::uint32_t textId) {
        return LOGINFORMATION(LoadedText(library_, textId));
    }
    std::uint32_t SHOWINFORMATION(Window* owner, std::uint32_t textId) {
        return SHOWINFORMATION(owner, LoadedText(library_, textId));
    }
    std::uint32_t LOGSYSTEMERROR(std::uint32_t textId) {
        return LOGSYSTEMERROR(LoadedText(library_, textId));
    }
    std::uint32_t SHOWSYSTEMERROR(Window* owner, std::uint32_t textId) {
        return SHOWSYSTEMERROR(owner, LoadedText(library_, textId));
    }
    std::uint32_t LOGOEMMESSAGE(std::uint32_t textId) { return LOGOEMMESSAGE(LoadedText(library_, textId)); }
    std::uint32_t INQUIRE(Window* owner, std::uint32_t textId, std::uint32_t value) {
        return INQUIRE(owner, LoadedText(library_, textId), value);
    }

  private:
    // A string resource for the length of one call.
    class LoadedText {
      public:
        LoadedText(const LibraryModule* library, std::uint32_t id) {
            if (library != nullptr) {
                library->instance.LoadText(id, text_, sizeof text_);
            }
        }
        operator const char*() const { return text_; }

      private:
        char text_[256] = {};
    };

    const LibraryModule* library_;
};

}  // namespace kx
