// What the framework's tests share: this program as the library, its log, and windows to put things in.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "lib/modules/library_module.h"
#include "lib/modules/system_services.h"
#include "lib/windows/window.h"
#include "lib/windows/window_class.h"

namespace kx::test {

inline const LibraryModule& ThisLibrary() {
    static const LibraryModule library(GetModuleHandleA(nullptr));
    return library;
}

// The binding to the kxsys.dll beside this program, and what it was told.
class LoggedServices {
  public:
    LoggedServices() : services_(&ThisLibrary()), spy_(GetModuleHandleA("kxsys.dll")) { TakeLog(); }

    operator SystemServices*() { return &services_; }

    // The calls since the last TakeLog, one line each.
    std::vector<std::string> TakeLog() {
        std::vector<std::string> lines;
        const auto log = reinterpret_cast<const char*(__stdcall*)()>(Export("SPY_LOG"));
        const auto clear = reinterpret_cast<void(__stdcall*)()>(Export("SPY_CLEAR"));
        if (log == nullptr || clear == nullptr) {
            return {"no kxsys.dll"};
        }
        std::string line;
        for (const char* at = log(); *at != '\0'; ++at) {
            if (*at == '\n') {
                lines.push_back(line);
                line.clear();
            } else {
                line += *at;
            }
        }
        clear();
        return lines;
    }

  private:
    void* Export(const char* name) const { return reinterpret_cast<void*>(GetProcAddress(spy_, name)); }

    SystemServices services_;
    HMODULE spy_;
};

// A top-level window of a class of the system, destroyed with the object. It has a border but no caption and
// is not activated: on a screen without a window manager Wine waits two seconds for the end of any other
// visible window.
class HostFrame : public Window {
  public:
    HostFrame() {
        Create("STATIC", "frame", nullptr, nullptr, WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, 0, 100, 80, 640,
               480);
        ShowWindow(Handle(), SW_SHOWNA);
    }
    ~HostFrame() { Destroy(); }
};

// Dispatches what is in the queue.
inline void PumpMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

}  // namespace kx::test
