#include "lib/modules/system_services.h"

namespace kx {
namespace {

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

}  // namespace

std::uint32_t SystemServices::LOGMEMORYERROR(const char* source, std::uint32_t line) {
    return Call("LOGMEMORYERROR", source, line);
}

std::uint32_t SystemServices::LOGOEMERROR(const char* source, std::uint32_t line, const char* text) {
    return Call("LOGOEMERROR", source, line, text);
}

std::uint32_t SystemServices::LOGEXCEPTION(const char* context) {
    return Call("LOGEXCEPTION", context);
}

std::uint32_t SystemServices::LOGSYSTEMERROR(const char* text) {
    return Call("LOGSYSTEMERROR", text);
}

std::uint32_t SystemServices::LOGINFORMATION(const char* text) {
    return Call("LOGINFORMATION", text);
}

std::uint32_t SystemServices::LOGOEMMESSAGE(const char* text) {
    return Call("LOGOEMMESSAGE", text);
}

std::uint32_t SystemServices::LOGSERVICESTART(const char* text) {
    return Call("LOGSERVICESTART", text);
}

std::uint32_t SystemServices::LOGSERVICESTOP(const char* text) {
    return Call("LOGSERVICESTOP", text);
}

std::uint32_t SystemServices::SHOWINFORMATION(Window* owner, const char* text) {
    return Call("SHOWINFORMATION", owner, text);
}

std::uint32_t SystemServices::SHOWSYSTEMERROR(Window* owner, const char* text) {
    return Call("SHOWSYSTEMERROR", owner, text);
}

std::uint32_t SystemServices::INQUIRE(Window* owner, const char* text, std::uint32_t value) {
    return Call("INQUIRE", owner, text, value);
}

std::uint32_t SystemServices::DISPLAY(std::uint32_t first, std::uint32_t second) {
    return Call("DISPLAY", first, second);
}

std::uint32_t SystemServices::LOGTHREADSTART(std::uint32_t value) {
    return Call("LOGTHREADSTART", value);
}

std::uint32_t SystemServices::LOGTHREADSTOP(std::uint32_t value) {
    return Call("LOGTHREADSTOP", value);
}

std::uint32_t SystemServices::LOGCOMWRITE(std::uint32_t first, std::uint32_t second) {
    return Call("LOGCOMWRITE", first, second);
}

std::uint32_t SystemServices::LOGCOMREAD(std::uint32_t first, std::uint32_t second) {
    return Call("LOGCOMREAD", first, second);
}

std::uint32_t SystemServices::SENDEMAIL(std::uint32_t first, std::uint32_t second) {
    return Call("SENDEMAIL", first, second);
}

std::uint32_t SystemServices::LOGSERVICESTART(std::uint32_t textId) {
    return LOGSERVICESTART(LoadedText(library_, textId));
}

std::uint32_t SystemServices::LOGSERVICESTOP(std::uint32_t textId) {
    return LOGSERVICESTOP(LoadedText(library_, textId));
}

std::uint32_t SystemServices::LOGINFORMATION(std::uint32_t textId) {
    return LOGINFORMATION(LoadedText(library_, textId));
}

std::uint32_t SystemServices::SHOWINFORMATION(Window* owner, std::uint32_t textId) {
    return SHOWINFORMATION(owner, LoadedText(library_, textId));
}

std::uint32_t SystemServices::LOGSYSTEMERROR(std::uint32_t textId) {
    return LOGSYSTEMERROR(LoadedText(library_, textId));
}

std::uint32_t SystemServices::SHOWSYSTEMERROR(Window* owner, std::uint32_t textId) {
    return SHOWSYSTEMERROR(owner, LoadedText(library_, textId));
}

std::uint32_t SystemServices::LOGOEMMESSAGE(std::uint32_t textId) {
    return LOGOEMMESSAGE(LoadedText(library_, textId));
}

std::uint32_t SystemServices::INQUIRE(Window* owner, std::uint32_t textId, std::uint32_t value) {
    return INQUIRE(owner, LoadedText(library_, textId), value);
}

}  // namespace kx
