// kxdialogs.dll as its host has it, with a window for its panes and a record with one median beat of 1200
// samples at 1000 samples a second.
#pragma once

#include <windows.h>

#include <string>

#include "include/kxdialogs.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::bench {

class LoadedLibrary {
  public:
    using PaneExport = decltype(&::TABLEDIALOG);

    LoadedLibrary();
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    // Whether library, engine and window are there.
    bool IsReady() const { return ready_; }
    HMODULE Module() const { return module_; }
    HWND Parent() const { return static_cast<HWND>(host_.handle); }
    analysis::Episode& Beat() { return beat_; }

    PaneExport Find(const char* name) const;
    // The pane's window; null when there is none.
    HWND Open(PaneExport open);
    // Destroys a pane and takes what has been posted.
    static void Close(HWND pane);

  private:
    HMODULE module_ = nullptr;
    KxHostWindow host_{};
    KxTestRecord record_{};
    analysis::Episode beat_;
    bool ready_ = false;
};

// Dispatches what is in the queue, paintings included.
void DrainQueue();

// The library's own manifest around the windows made meanwhile, so that both sides have the same controls.
class LibraryControls {
  public:
    explicit LibraryControls(HMODULE module);
    ~LibraryControls();
    LibraryControls(const LibraryControls&) = delete;
    LibraryControls& operator=(const LibraryControls&) = delete;

  private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

}  // namespace kx::bench
