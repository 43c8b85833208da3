// kxdialogs.dll as a host sees it, with a kxsys.dll of the test's choice beside the test program.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "include/kxdialogs.h"

namespace kx::test {

// Where the test program stands, without a backslash at the end.
std::string ProgramFolder();

// The ten exports, looked up by their undecorated names.
struct Exports {
    decltype(&::LIBSTART) start;
    decltype(&::LIBSTOP) stop;
    decltype(&::TABLEDIALOG) table;
    decltype(&::GENERALMORPHDIALOG) generalMorph;
    decltype(&::PMORPHDIALOG) pMorph;
    decltype(&::QRSMORPHDIALOG) qrsMorph;
    decltype(&::TMORPHDIALOG) tMorph;
    decltype(&::HYPERTROPHYDIALOG) hypertrophy;
    decltype(&::INTERPRETATIONDIALOG) interpretation;
    decltype(&::EDITINTERPRETATION) editInterpretation;
};

enum class SystemModule {
    kCurrent,   // a kxsys.dll of version 4.06
    kOutdated,  // one of version 4.05
    kMissing,
};

// Loads the DLL and unloads it again; whatever starts the test leaves open die with it.
class LibraryUnderTest {
  public:
    // dll: its path from the folder of the test program.
    explicit LibraryUnderTest(SystemModule system, const char* dll = "\\..\\..\\bin\\kxdialogs.dll");
    ~LibraryUnderTest();
    LibraryUnderTest(const LibraryUnderTest&) = delete;
    LibraryUnderTest& operator=(const LibraryUnderTest&) = delete;

    bool IsLoaded() const { return module_ != nullptr; }
    HMODULE Module() const { return module_; }
    const Exports& operator*() const { return exports_; }
    const Exports* operator->() const { return &exports_; }

    // The calls that kxsys.dll received since the last TakeLog, one line each.
    std::vector<std::string> TakeLog();

  private:
    HMODULE module_ = nullptr;
    HMODULE spy_ = nullptr;
    Exports exports_{};
};

}  // namespace kx::test
