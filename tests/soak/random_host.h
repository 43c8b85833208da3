// A host that does anything at any time: one episode of it, the same for the same seed.
//
// It opens panes on good, foreign and absurd records between pages that cannot be read, uses them, ends them at any
// moment (inside a notice, inside a call of a sibling module, inside a modal dialog, by their parents, twice), lets the
// siblings answer well, badly, not at all, and takes away memory, modules and statement files.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/rig/pane.h"
#include "tests/rig/records.h"
#include "tests/rig/suite.h"
#include "tests/soak/random_messages.h"

namespace kx::test {

// What has been done so far.
struct SoakCounts {
    long steps = 0;
    long panes = 0;
    long modalDialogs = 0;
    long endsInside = 0;  // of a notice or a call
    long statements = 0;  // shown at the end of a pane and found in its record
};

class RandomHost {
  public:
    RandomHost(unsigned seed, SpyingSuite& suite, SoakCounts& counts);
    ~RandomHost();
    RandomHost(const RandomHost&) = delete;
    RandomHost& operator=(const RandomHost&) = delete;

    // So many steps, then the end of everything that is open.
    void Run(int steps);

  private:
    // A record and the panes on it; one interpretation pane at a time.
    struct Subject {
        std::unique_ptr<TestRecord> model;
        std::unique_ptr<ForeignRecord> record;
        bool isAbsurd = false;
        HWND interpretation = nullptr;
        // What the interpretation pane must have left in the record; nothing: it need not.
        std::optional<std::string> shown;
    };

    void Step();
    void OpenPane();
    void EditModally();
    void UseLibraryWindow();
    void ActAsHost();
    void ChangeSuite();
    void ChangeStatementFile();
    // Ends a pane or what it stands in, and holds its record to what it showed.
    void EndSomething();
    // The same from within a notice or a module's call, seldom.
    void MayEndInside();
    void OnModalTick();

    HWND AnyPane();
    HWND AnyLibraryWindow();
    void RememberShown();
    void CheckStored();
    void Note(const char* what);

    static void CALLBACK Tick(HWND window, UINT message, UINT_PTR timer, DWORD time);

    Random random_;
    SpyingSuite& suite_;
    SoakCounts& counts_;
    LibraryUse library_;
    std::unique_ptr<HostWindow> grandparent_;
    std::unique_ptr<HostWindow> parent_;
    std::vector<Subject> subjects_;
    std::vector<HWND> panes_;
    std::uint32_t options_[4] = {};
    UINT_PTR timer_ = 0;
    int inside_ = 0;      // calls of modules and notices that are being answered
    int endings_ = 0;     // that are on their way
    int modalTicks_ = 0;  // since a modal dialog came up
};

}  // namespace kx::test
