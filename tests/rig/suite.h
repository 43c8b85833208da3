// The five sibling modules as a test wants them: what stands beside the program, and what each export
// answers.
//
//     SpyingSuite suite;                                      // five spies, with plausible answers
//     suite.On("UPDATEDETECTION", [&](auto) { DestroyWindow(pane); return 1u; });
//     suite.Lay("kxdb.dll", Sibling::kMissing);
//     EXPECT_THAT(suite.TakeReports(), ElementsAre("LOGMEMORYERROR \"interp\" 1235"));
//
// An answer is a function of the test's: it may succeed, fail, fill in garbage, pump messages, destroy
// windows.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "lib/modules/database_records.h"

namespace kx::test {

enum class Sibling {
    kSpying,          // answers what the test says
    kOutdated,        // the same, of a version that is refused
    kWithoutExports,  // has LIBSTART and LIBSTOP only
    kMissing,
};

inline const char* const kSiblings[] = {"kxsys.dll", "kxdb.dll", "kxrender.dll", "kxanalyze.dll", "kxinterp.dll"};

// Where the test program stands, without a backslash at the end; a file of that folder.
std::string ProgramFolder();
std::string Beside(const std::string& name);

// An argument that is an address.
template <class T>
T* Address(std::uint32_t argument) {
    return reinterpret_cast<T*>(static_cast<std::uintptr_t>(argument));
}

// One at a time. Files are changed only where a test differs from the one before.
class SpyingSuite {
  public:
    using Arguments = const std::uint32_t*;
    using Answer = std::function<std::uint32_t(Arguments)>;

    SpyingSuite();
    ~SpyingSuite();
    SpyingSuite(const SpyingSuite&) = delete;
    SpyingSuite& operator=(const SpyingSuite&) = delete;

    // Before the library binds it: kxsys.dll at LIBSTART, kxanalyze.dll when a morphology pane is opened, the
    // others for each call.
    void Lay(const std::string& fileName, Sibling kind);

    // What an export answers from now on. Until then kxsys.dll answers 1; TECH_LIST and PHYS_LIST two persons
    // each; INTERPRET and CREATETEXT a text; UPDATEDETECTION 1, changing nothing; every other export 0.
    void On(const char* exportName, Answer answer);
    // 0, and every byte that it may write is 0xFF; a list then claims to have written 0xFFFFFFFF records.
    void AnswerGarbage();
    // Called before every answer with the export's name; null: not.
    std::function<void(const std::string& exportName)> onCall;
    // How often an export was called since the suite was made.
    int Calls(const std::string& exportName) const;
    // LIBSTART less LIBSTOP of a module.
    int Uses(const std::string& fileName) const;
    // What kxsys.dll was told since the last call, one line each: the export and its arguments, texts quoted;
    // of an owner its caption.
    std::vector<std::string> TakeReports();

    // The door for the spies.
    std::uint32_t Take(const std::string& module, const std::string& name, const char* kinds, Arguments arguments);

  private:
    std::map<std::string, Answer> answers_;
    std::map<std::string, int> calls_;
    std::map<std::string, int> uses_;
    std::vector<std::string> reports_;
};

TechnicianRecord Technician(const char* first, const char* initial, const char* last);
PhysicianRecord Physician(const char* first, const char* initial, const char* last, const char* title);

}  // namespace kx::test
